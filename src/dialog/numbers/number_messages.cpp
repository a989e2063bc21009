// Sentences with their arguments, and what each fault of an entry says.
#include "dialog/numbers/number_messages.h"

#include "base/trimmed.h"
#include "text/text_resources.h"
#include "toolbox/char_sets.h"

namespace toolbox::numbers {
namespace {

std::string shownCharacter(char c) {
    constexpr char kNoBreakSpace = '\240';
    if (c == kNoBreakSpace) return sentence(Sentence::noBreakSpace).str();
    return TvCharSet::getVisibleChar(c).str();
}

/// Both readings of a number with a comma.
CString bothReadings(std::string_view text, std::size_t comma) {
    const std::string_view number = base::trimmed(text);
    comma -= static_cast<std::size_t>(number.data() - text.data());
    std::string decimal(number);
    decimal[comma] = '.';
    std::string whole(number);
    whole.erase(comma, 1);
    return sentence(Sentence::twoReadings, {shownText(text), shownText(decimal), shownText(whole)});
}

}  // namespace

CString sentence(Sentence id, std::initializer_list<std::string_view> arguments) {
    const std::string words = text::loadText(static_cast<unsigned int>(id));
    std::string all;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::size_t number = words[i] == '%' && i + 1 < words.size()
                                       ? static_cast<std::size_t>(words[i + 1] - '1')
                                       : arguments.size();
        if (number < arguments.size()) {
            all += arguments.begin()[number];
            ++i;
        } else {
            all += words[i];
        }
    }
    if (!words.empty()) return all;
    for (const std::string_view argument : arguments) all.append(argument).append(" ");
    return all.empty() ? CString("?") : CString(base::trimmed(std::string_view(all)));
}

std::string shownText(std::string_view text) {
    constexpr std::size_t kMost = 40;
    text = base::trimmed(text);
    std::string shown(text.substr(0, kMost));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < ' ' || c == '\177') c = '?';
    return text.size() > kMost ? shown + "..." : shown;
}

CString entryMessage(const base::EntryCheck& check, std::string_view text, std::string_view least,
                     std::string_view most) {
    using base::EntryFault;
    const std::string shown = shownText(text);
    const std::string place = std::to_string(check.position + 1);
    switch (check.fault) {
        case EntryFault::none:
            break;
        case EntryFault::empty:
            return sentence(Sentence::empty);
        case EntryFault::incomplete:
            return sentence(Sentence::incomplete, {shown});
        case EntryFault::badCharacter:
            return sentence(Sentence::badCharacter,
                            {shown, place, shownCharacter(text[check.position])});
        case EntryFault::grouping:
            return sentence(Sentence::grouping, {shown, place});
        case EntryFault::notWhole:
            return sentence(Sentence::notWhole, {shown});
        case EntryFault::twoReadings:
            return bothReadings(text, check.position);
        case EntryFault::tooLarge:
            return sentence(Sentence::tooLarge, {shown, most});
        case EntryFault::tooSmall:
            return sentence(Sentence::tooSmall, {shown, least});
        case EntryFault::nearZero:
            return sentence(Sentence::nearZero, {shown});
    }
    return {};
}

}  // namespace toolbox::numbers
