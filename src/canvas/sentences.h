// What is said about drawings, in the language of GMSG.
#pragma once

#include "text/printed_text.h"

namespace toolbox::canvas {

using text::printed;

/// Numbers of the texts, with what is put into them.
enum class Sentence : unsigned short {
    noCharacter = 1400,  ///< text, place, code
    notUtf8 = 1401,      ///< text, place
    coordinate = 1402,
    style = 1403,
    unmatched = 1404,
    noDrawing = 1405,
    cutShort = 1406,
    newer = 1407,
    altered = 1408,
    impossible = 1409,  ///< offset of the byte
};

}  // namespace toolbox::canvas
