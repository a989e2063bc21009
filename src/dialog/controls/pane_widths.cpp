// Fixed panes get what they need, the others equal shares of what is left.
#include "dialog/controls/pane_widths.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace toolbox::controls {

std::vector<int> paneEdges(std::span<const int> characters, const PaneMeasures& measures) {
    std::vector<std::int64_t> widths;
    std::int64_t left = measures.width;
    int sharing = 0;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const bool isLast = i + 1 == characters.size();
        const std::int64_t fixed =
            std::int64_t{characters[i]} * measures.character + measures.around;
        widths.push_back(characters[i] > 0 ? fixed + (isLast ? measures.grip : 0) : 0);
        left -= widths.back();
        if (characters[i] <= 0) ++sharing;
    }
    left = std::max<std::int64_t>(left, 0);
    std::vector<int> edges;
    std::int64_t edge = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (characters[i] <= 0) {
            // Divided again each time: what does not come out even is spread over the shares.
            const std::int64_t share = left / std::max(sharing--, 1);
            left -= share;
            widths[i] = share;
        }
        edge += widths[i];
        edges.push_back(static_cast<int>(std::min<std::int64_t>(edge, measures.width)));
    }
    return edges;
}

}  // namespace toolbox::controls
