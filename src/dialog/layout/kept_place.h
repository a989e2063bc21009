// The place of a window as it is kept from run to run.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dialog/layout/boxes.h"

namespace toolbox::dialog {

/// Where a window stands while it is neither minimized nor maximized.
struct KeptPlace {
    Box box;
    int dpi = 96;  ///< dots per inch of the screen when it was kept
    bool isMaximized = false;

    friend bool operator==(const KeptPlace&, const KeptPlace&) = default;
};

/// The whole number that a text begins with, which is taken off together with the blank after it.
/// Nothing for other words and for numbers beyond any screen.
[[nodiscard]] std::optional<int> takeNumber(std::string_view& text);

/// One line: left, top, width, height, dots per inch, and "max" for a maximized window.
[[nodiscard]] std::string printPlace(const KeptPlace& place);

/// Nothing for a text that is no place of a window: other words, a size of nothing, numbers beyond
/// any screen.
[[nodiscard]] std::optional<KeptPlace> scanPlace(std::string_view text);

/// Where a window goes whose place was kept: the size is that of a screen of `dpi`, or, without
/// `withSize`, that of `present`.
[[nodiscard]] Box placeAgain(const KeptPlace& kept, const Box& present, bool withSize, int dpi,
                             std::span<const Box> screens);

}  // namespace toolbox::dialog
