// The table of texts, and how arguments and plurals are put into them.
#include "terminal/texts.h"

#include <array>
#include <string_view>

#include "toolbox/utf8.h"

namespace tbfile {
namespace {

struct Entry {
    std::string_view french;
    std::string_view english;
};

constexpr auto kTexts = std::to_array<Entry>({
#define TBFILE_TEXT(name, french, english) {french, english},
#include "texts.inc"
#undef TBFILE_TEXT
});

Language spoken = Language::english;

bool isSingular(const std::string& number) {
    return number == "1" || (number == "0" && spoken == Language::french);
}

/// Fills in a model from left to right.
class Filling {
  public:
    Filling(std::string_view model, Arguments arguments) : model_(model), arguments_(arguments) {}

    std::string all() {
        while (at_ < model_.size()) {
            const bool marked = at_ + 1 < model_.size() && isNumber(model_[at_ + 1]);
            if (marked && model_[at_] == '%')
                argument();
            else if (marked && model_[at_] == '{')
                form();
            else
                said_ += model_[at_++];
        }
        return said_;
    }

  private:
    static bool isNumber(char c) { return c >= '1' && c <= '9'; }

    [[nodiscard]] std::string numbered(char number) const {
        const auto i = static_cast<std::size_t>(number - '1');
        return i < arguments_.size() ? arguments_.begin()[i] : std::string();
    }
    void argument() {
        said_ += visible(numbered(model_[at_ + 1]));
        at_ += 2;
    }
    /// {1:block|blocks}
    void form() {
        const std::size_t first = at_ + 3;
        const std::size_t bar = model_.find('|', first);
        const std::size_t end = model_.find('}', bar);
        said_ += isSingular(numbered(model_[at_ + 1])) ? model_.substr(first, bar - first)
                                                       : model_.substr(bar + 1, end - bar - 1);
        at_ = end + 1;
    }

    std::string_view model_;
    Arguments arguments_;
    std::size_t at_ = 0;
    std::string said_;
};

}  // namespace

void speak(Language language) {
    spoken = language;
}

Language spokenLanguage() {
    return spoken;
}

std::string say(Text text, Arguments arguments) {
    const Entry& entry = kTexts[static_cast<std::size_t>(text)];
    const std::string model =
        toolbox::toUtf8(spoken == Language::french ? entry.french : entry.english);
    return Filling(model, arguments).all();
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    // A narrow no-break space would be right in French; not every terminal shows one.
    const char separator = spoken == Language::french ? ' ' : ',';
    for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, separator);
    return digits;
}

}  // namespace tbfile
