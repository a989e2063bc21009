// The rules of a gesture: messages, buttons, keys.
#include "graphics/mouse_gesture.h"

namespace toolbox::graphics {
namespace {

// Messages and key-state bits of Windows; these rules are compiled where it is not.
constexpr std::uint32_t kCancelMode = 0x1F;
constexpr std::uint32_t kCaptureChanged = 0x215;
constexpr std::uint32_t kCommand = 0x111;
constexpr std::uintptr_t kCancelCommand = 2;
constexpr std::uint32_t kMouseMove = 0x200;
constexpr std::uintptr_t kShiftKey = 4;

constexpr ParametricButton kButtons[] = {
    {0, 0x201, 0x201, 0x202, 0x203, 0x204, 0x205, 0x206, 1, 2},
    {1, 0x204, 0x204, 0x205, 0x206, 0x201, 0x202, 0x203, 2, 1}};

constexpr unsigned int kAlways = 1;
constexpr unsigned int kWithShift = 2;

std::int32_t signed16(std::uintptr_t bits) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits & 0xFFFF));
}

}  // namespace

bool describeButton(int button, bool startsWithDoubleClick, ParametricButton& out) {
    if (button != 0 && button != 1) return false;
    out = kButtons[button];
    if (startsWithDoubleClick) out.anchorMessage = out.doubleClick;
    return true;
}

GestureStep gestureStep(const ParametricButton& button, bool dragging, std::uint32_t message,
                        std::uintptr_t wParam) {
    if (message == kCommand && wParam == kCancelCommand) return GestureStep::cancel;
    if (dragging && message == button.otherDown) return GestureStep::cancel;
    if (dragging && (message == kCancelMode || message == kCaptureChanged))
        return GestureStep::lose;
    if (dragging && message == kMouseMove) return GestureStep::move;
    if (message == button.anchorMessage && (wParam & button.otherKeyFlag) == 0)
        return GestureStep::anchor;
    if (dragging && message == button.up) return GestureStep::finish;
    return GestureStep::none;
}

bool isOrthogonal(unsigned int dragMode, std::uintptr_t wParam) {
    return (dragMode & kAlways) != 0 || ((dragMode & kWithShift) != 0 && (wParam & kShiftKey) != 0);
}

Pixel pointOf(std::intptr_t lParam) {
    const auto bits = static_cast<std::uintptr_t>(lParam);
    return {signed16(bits), signed16(bits >> 16)};
}

}  // namespace toolbox::graphics
