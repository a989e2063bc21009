// A dialog's controls, while the user sizes it.
#pragma once

#include <vector>

#include "dialog/layout/boxes.h"
#include "toolbox/dialogs.h"

namespace toolbox::dialog {

/// Moves the controls of a dialog as its layout says. It gives the dialog a size grip.
class Sizer {
  public:
    /// For a dialog whose controls have the places of its template.
    Sizer(HWND dialog, const TvDialogLayout& layout);
    ~Sizer();
    Sizer(const Sizer&) = delete;
    Sizer& operator=(const Sizer&) = delete;

    /// The dialog has another size.
    void follow();
    /// The smallest size is that of the template, and the only one in a direction in which no
    /// control follows.
    void limit(MINMAXINFO& limits) const;
    /// Leaves out the controls that paint all of their area when the background is erased.
    void excludeControls(HDC context) const;

  private:
    struct Item {
        HWND control;
        HWND parent;
        Box box;  // in the parent, at first
        EdgeShares shares;
    };
    struct Size {
        HWND window;
        int width, height;  // of the inside, at first
    };
    void add(HWND control, const EdgeShares& shares);
    void makeGrip();
    void moveChildrenOf(const Size& parent);

    HWND dialog_;
    HWND grip_ = nullptr;
    Box outside_;  // of the dialog, at first
    bool growsWider_ = false, growsHigher_ = false;
    std::vector<Item> items_;
    std::vector<Size> parents_;  // outer ones first
};

}  // namespace toolbox::dialog
