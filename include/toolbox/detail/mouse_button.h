// What MouseDragger knows of the button that makes its gesture. Applications use graphics.h.
#pragma once

#include <cstdint>

namespace toolbox {

/// The messages of a button and of the other one, and the bits that tell in a mouse message's word
/// parameter that they are held.
struct ParametricButton {
    std::int32_t button = 0;          ///< 0 left, 1 right
    std::uint16_t anchorMessage = 0;  ///< starts the gesture: `down` or `doubleClick`
    std::uint16_t down = 0;
    std::uint16_t up = 0;
    std::uint16_t doubleClick = 0;
    std::uint16_t otherDown = 0;
    std::uint16_t otherUp = 0;
    std::uint16_t otherDoubleClick = 0;
    std::uint16_t keyFlag = 0;
    std::uint16_t otherKeyFlag = 0;
};

}  // namespace toolbox
