// What a window message means to a gesture with the mouse, apart from any window.
#pragma once

#include <cstdint>

#include "graphics/drag_geometry.h"
#include "toolbox/detail/mouse_button.h"

namespace toolbox::graphics {

/// The messages of a button, 0 left or 1 right, whose gesture starts with its double click or with
/// its going down. False for another button; `out` is untouched then.
[[nodiscard]] bool describeButton(int button, bool startsWithDoubleClick, ParametricButton& out);

enum class GestureStep { none, cancel, lose, move, anchor, finish };

/// What a message does to a gesture that is under way (`dragging`) or not. `lose`: the mouse is
/// taken from it, when the message is one of the gesture's own window.
[[nodiscard]] GestureStep gestureStep(const ParametricButton& button, bool dragging,
                                      std::uint32_t message, std::uintptr_t wParam);

/// Whether a gesture that starts with this message is orthogonal, by the bits of the drag mode: 1
/// always, 2 while the Shift key is held.
[[nodiscard]] bool isOrthogonal(unsigned int dragMode, std::uintptr_t wParam);

/// The point in the long parameter of a mouse message: two signed numbers of 16 bits.
[[nodiscard]] Pixel pointOf(std::intptr_t lParam);

}  // namespace toolbox::graphics
