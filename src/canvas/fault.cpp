// The sentences of faults.
#include <cstdio>
#include <iterator>

#include "canvas/sentences.h"
#include "toolbox/canvas.h"

using namespace toolbox::canvas;

namespace {

/// People count characters from 1.
CString characterSentence(const std::string& text, const TvTextFault& character) {
    const auto place = static_cast<int>(character.place) + 1;
    if (character.code == TvTextFault::kNotUtf8)
        return printed(Sentence::notUtf8, text.c_str(), place);
    char code[16];
    std::snprintf(code, std::size(code), "U+%04lX", static_cast<unsigned long>(character.code));
    return printed(Sentence::noCharacter, text.c_str(), place, static_cast<const char*>(code));
}

}  // namespace

CString TvCanvasFault::sentence() const {
    switch (kind) {
        case Character:
            return characterSentence(text, character);
        case Coordinate:
            return printed(Sentence::coordinate);
        case Style:
            return printed(Sentence::style);
        case Unmatched:
            return printed(Sentence::unmatched);
        case Device:
            return printed(Sentence::device);
    }
    return {};
}
