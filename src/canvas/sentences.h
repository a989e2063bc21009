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
    device = 1410,
    clipboard = 1379,  ///< in use; the list of keys has it too
};

/// The system's sentence for an error.
[[nodiscard]] inline CString reasonOf(unsigned long error) {
    char reason[1024] = "";
    GMSG::getLastErrorMsg(error, reason);
    return reason;
}

}  // namespace toolbox::canvas
