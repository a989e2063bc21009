// What the buttons of the editor of labels show.
#pragma once

#include "tag/editor/picture_button_win32.h"
#include "toolbox/canvas_text.h"

namespace toolbox::tag {

/// A box with lines of text, and the tag's point where it lies on it; `place` counts in rows.
[[nodiscard]] PictureButton::Draw alignmentPicture(int place);
/// Lines of text in a border, in the order of TvTagBorder.
[[nodiscard]] PictureButton::Draw borderPicture(int border);
/// A colour.
[[nodiscard]] PictureButton::Draw colorPicture(TvColor color);

}  // namespace toolbox::tag
