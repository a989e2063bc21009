// What expansion would not replace in a template: its "$"s taken in pairs, from left to right.
#include "udkey/shared.h"
#include "udkey/template_words.h"

namespace {

using toolbox::TemplateProblem;
using toolbox::udkey::TemplateWords;

class Checker {
  public:
    Checker(const TokenizerUDManager& manager, std::string_view text)
        : manager_(manager), words_(text) {}

    std::vector<TemplateProblem> run() {
        checkText(0);
        // Each turn looks at one token, which stands after an opening "$".
        for (std::size_t i = 1; i < words_.count(); i += checkToken(i)) {
        }
        return std::move(problems_);
    }

  private:
    using Kind = TemplateProblem::Kind;

    /// Expansion skips empty words, though an empty key string may be declared.
    [[nodiscard]] bool isToken(std::size_t i) const {
        return !words_[i].empty() && manager_.isValidToken(RWCString(words_[i]));
    }

    [[nodiscard]] bool isKey(std::size_t i) const {
        return !words_[i].empty() && manager_.getId(RWCString(words_[i])) != toolbox::udkey::kNoId;
    }

    void report(Kind kind, std::size_t i, std::size_t position) {
        problems_.push_back({kind, position, RWCString(words_[i])});
    }

    void checkText(std::size_t i) {
        if (i < words_.count() && isToken(i)) report(Kind::keyInText, i, words_.start(i));
    }

    /// The words to go on by: the token and the text after it, or the token alone.
    std::size_t checkToken(std::size_t i) {
        const std::size_t dollar = words_.start(i) - 1;
        if (!words_.isEnclosed(i)) {
            report(Kind::unclosed, i, dollar);
            return 1;
        }
        if (!isToken(i)) {
            report(isKey(i) ? Kind::notMatching : Kind::unknown, i, dollar);
            // A "$" that stands alone in the text, as in "5$ or $VOLT$": the next one opens a
            // token.
            if (words_.isEnclosed(i + 1) && isToken(i + 1)) return 1;
        }
        checkText(i + 1);
        return 2;
    }

    const TokenizerUDManager& manager_;
    TemplateWords words_;
    std::vector<TemplateProblem> problems_;
};

}  // namespace

std::vector<TemplateProblem> TokenizerUDManager::checkTemplate(const RWCString& text) const {
    return Checker(*this, text.view()).run();
}
