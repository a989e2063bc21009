// A set of characters in words, in the language of the message service.
#include <string>

#include "text/text_resources.h"
#include "toolbox/char_sets.h"

namespace {

using namespace toolbox;

CString quoted(char c) {
    return "'" + TvCharSet::getVisibleChar(c) + "'";
}

}  // namespace

CString TvCharSet::getFriendlyCharsSet(bool useAlternative) const {
    constexpr unsigned int kAnd = 1095;
    constexpr unsigned int kOr = 1096;
    constexpr unsigned int kTo = 1097;
    std::string words;
    const std::string to = text::loadText(kTo);
    CString piece;
    for (int index = 0; index >= 0;) {
        getNextCharOrInterval(index, piece);
        if (piece.IsEmpty()) continue;
        if (!words.empty()) words += ", ";
        words += quoted(piece[0]).view();
        if (piece.GetLength() > 1)
            words += " " + to + " " + quoted(piece[piece.GetLength() - 1]).str();
    }
    if (const std::size_t comma = words.rfind(','); comma != std::string::npos)
        words.replace(comma, 1, " " + text::loadText(useAlternative ? kOr : kAnd));
    return words;
}
