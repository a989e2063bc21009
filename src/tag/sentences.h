// What is said about tags, in the language of GMSG.
#pragma once

#include "text/printed_text.h"
#include "toolbox/strings.h"

namespace toolbox::tag {

using text::printed;

/// Numbers of the texts, with what is put into them.
enum class Sentence : unsigned short {
    coordinate = 1430,
    side = 1431,  ///< the largest one
    style = 1432,
    scales = 1433,
    enumerator = 1434,
    noTags = 1435,
    cutShort = 1436,
    newer = 1437,
    altered = 1438,
    impossible = 1439,   ///< offset of the byte
    unknown = 1440,      ///< word, place
    notMatching = 1441,  ///< word, place
    unclosed = 1442,     ///< word, place
    keyInText = 1443,    ///< word, place
    noNumber = 1444,
};

/// 0, with the sentence in `why` unless null.
template <class... Args>
int refuse(CString* why, Sentence sentence, const Args&... args) {
    if (why) *why = printed(sentence, args...);
    return 0;
}

}  // namespace toolbox::tag
