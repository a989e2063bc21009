// A template is cut at its wrong tokens, and what lies between is expanded piece by piece: in one
// piece an unknown "$VOLTS$" would be taken for a later "$VOLT$".
#include "tag/template_text.h"

#include <vector>

#include "tag/sentences.h"

namespace toolbox::tag {

TemplateText::TemplateText(TokenizerUDManager* keys) : keys_(keys) {
    if (keys) life_.emplace(*keys);
}

void TemplateText::append(std::string_view part, std::string& out) {
    const std::size_t first = part.find('$');
    const bool isTemplate =
        first != std::string_view::npos && part.find('$', first + 1) != std::string_view::npos;
    if (isTemplate && canExpand())
        out += keys_->getParseString(RWCString(part), 1).view();
    else
        out += part;
}

std::string TemplateText::expand(std::string text) {
    if (text.find('$') == std::string::npos || !canExpand()) return text;
    const std::vector<TemplateProblem> problems = keys_->checkTemplate(RWCString(text));
    std::string out;
    std::size_t from = 0;
    for (const TemplateProblem& problem : problems) {
        append(std::string_view(text).substr(from, problem.position - from), out);
        const std::size_t dollar = problem.kind == TemplateProblem::Kind::keyInText ? 0 : 1;
        const std::size_t length = problem.word.view().size() + dollar;
        out += std::string_view(text).substr(problem.position, length);
        from = problem.position + length;
    }
    append(std::string_view(text).substr(from), out);
    return out;
}

TvTagKeys keysOfAll(TokenizerUDManager* keys) {
    if (!keys) return {};
    return [keys, life = udkey::ManagerLife(*keys)](TvTagId, const TvTag&) {
        return life.isOver() ? nullptr : keys;
    };
}

}  // namespace toolbox::tag

std::string tvTagText(const TvTag& tag, TokenizerUDManager* keys) {
    return toolbox::tag::TemplateText(keys).expand(tag.text);
}

CString tvTagSentence(const toolbox::TemplateProblem& problem) {
    using Kind = toolbox::TemplateProblem::Kind;
    using toolbox::tag::Sentence;
    const auto of = [&problem](Sentence sentence) {
        return toolbox::tag::printed(sentence, problem.word.data(),
                                     static_cast<unsigned>(problem.position) + 1);
    };
    switch (problem.kind) {
        case Kind::unknown:
            return of(Sentence::unknown);
        case Kind::notMatching:
            return of(Sentence::notMatching);
        case Kind::unclosed:
            return of(Sentence::unclosed);
        case Kind::keyInText:
            break;
    }
    return of(Sentence::keyInText);
}
