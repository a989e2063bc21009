// What the editor of labels shows of a tag, and the tag that is made of it.
#pragma once

#include <windows.h>

#include <string_view>

#include "toolbox/exchange.h"
#include "toolbox/strings.h"
#include "toolbox/tags.h"

namespace toolbox::tag {

/// Values of the controls.
struct TagEntries {
    CString text;          ///< with the line ends of an edit field
    int place = 0;         ///< of the nine, in rows
    int border = 0;        ///< in the order of TvTagBorder
    int family = 0;        ///< in the order of TvFont::Family
    double size = 0;       ///< points
    double width = 0;      ///< millimetres
    double minScale = 0;   ///< points a unit
    double maxScale = 0;   ///< points a unit
    bool bold = false;     ///< of the font
    bool italic = false;   ///< of the font
    bool filled = false;   ///< the box
    bool wrapped = false;  ///< lines are broken at the width
    bool leader = false;   ///< there is one
    bool locked = false;   ///< it stays

    /// Those of a tag.
    explicit TagEntries(const TvTag& tag);

    /// The fields and their limits, to be filled and read.
    void exchange(TvExchange& fields);
    /// What stands in the controls now; a number that is wrong there stays as it was here.
    void look(HWND dialog);
    /// Gives a tag what is entered; what is shown as it was stays to the last bit.
    void give(TvTag& tag) const;
};

}  // namespace toolbox::tag
