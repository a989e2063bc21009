// Buttons with a picture that is drawn at their size, in the system's colours.
#pragma once

#include <windows.h>

#include <functional>

#include "toolbox/attached_control.h"

namespace toolbox::tag {

/// A button of a template (BS_ICON) that shows a picture instead of its text, which screen readers
/// still say. The picture follows the size of the button, and stands out when it is chosen.
class PictureButton : public TvControl {
  public:
    /// Draws the picture into an area that begins at (0, 0), with the pen and the text colour that
    /// are selected. It is called twice, the first time for the shape alone, all of it in black.
    using Draw = std::function<void(HDC context, SIZE area, bool isShape)>;

    PictureButton() = default;
    ~PictureButton() override;

    /// What it shows, as soon as it has a button.
    void setPicture(Draw draw);
    /// Draws the picture anew, as when the colours of the system have changed.
    void refresh();

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void attached() override { refresh(); }
    void detaching() override;

  private:
    [[nodiscard]] HICON make() const;
    void show(HICON icon);

    Draw draw_;
    HICON icon_ = nullptr;
};

/// A radio button with a picture in a table of them, in rows: the arrow keys go through it as it
/// is seen, instead of from number to number.
class PictureRadioButton : public PictureButton {
  public:
    /// The button is number `index` of the table, which begins with the control `first`.
    void setTable(int first, int index, int count, int columns);

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    [[nodiscard]] int neighbour(WPARAM key) const;

    int first_ = 0;
    int index_ = 0;
    int count_ = 0;
    int columns_ = 1;
};

}  // namespace toolbox::tag
