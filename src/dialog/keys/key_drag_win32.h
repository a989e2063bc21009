// Dragging the selected keys of the list to another place.
#pragma once

#include <optional>

#include "dialog/keys/key_list_view_win32.h"

namespace toolbox::keys {

/// One gesture, from begin() until its button is released or something takes the mouse away. The
/// dialog hands it its messages.
class KeyDrag {
  public:
    KeyDrag(KeyListView& list, const KeyListModel& model) : list_(list), model_(model) {}
    ~KeyDrag() { end(); }
    KeyDrag(const KeyDrag&) = delete;
    KeyDrag& operator=(const KeyDrag&) = delete;

    /// Nothing for a list without order: where no selected key could go anywhere.
    void begin(HWND dialog);
    [[nodiscard]] bool isOn() const { return dialog_ != nullptr; }
    /// Without moving anything.
    void end();

    /// True when the message was one of the gesture's.
    bool take(UINT message, WPARAM wParam);
    /// The order that the gesture made, once it has ended.
    [[nodiscard]] std::optional<Ids> takeOrder() { return std::exchange(order_, std::nullopt); }

  private:
    void follow();
    void scroll();
    void showMark(bool shown);
    [[nodiscard]] POINT pointer() const;

    KeyListView& list_;
    const KeyListModel& model_;
    HWND dialog_ = nullptr;
    HWND mark_ = nullptr;  ///< a child of the list
    std::size_t row_ = 0;
    std::optional<Ids> order_;
};

}  // namespace toolbox::keys
