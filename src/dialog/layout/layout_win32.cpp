// What a dialog says of its controls.
#include <algorithm>

#include "toolbox/dialogs.h"

void TvDialogLayout::follow(int control, int edges) {
    constexpr int kWhole = 100;
    const bool right = (edges & Right) != 0;
    const bool bottom = (edges & Bottom) != 0;
    share(control, right && !(edges & Left) ? kWhole : 0, bottom && !(edges & Top) ? kWhole : 0,
          right ? kWhole : 0, bottom ? kWhole : 0);
}

void TvDialogLayout::share(int control, int left, int top, int right, int bottom) {
    const Shares said{control, left, top, right, bottom};
    const auto known = std::find_if(controls_.begin(), controls_.end(),
                                    [=](const Shares& each) { return each.control == control; });
    if (known == controls_.end())
        controls_.push_back(said);
    else
        *known = said;
}
