// How the panes of a status bar share its width.
#pragma once

#include <span>
#include <vector>

namespace toolbox::controls {

/// Measures of a bar, in pixels.
struct PaneMeasures {
    int width = 0;      ///< of the bar
    int character = 0;  ///< of one digit
    int around = 0;     ///< what a pane needs besides its characters
    int grip = 0;       ///< what the last pane loses at the bar's end
};

/// The right edge of each pane. `characters` has one count for each, 0 for a share of the rest. In
/// a bar that is too small the panes that share get nothing, and the last ones are cut.
[[nodiscard]] std::vector<int> paneEdges(std::span<const int> characters,
                                         const PaneMeasures& measures);

}  // namespace toolbox::controls
