// What a gesture of the mouse makes of a project: lengths in steps of kLengthStep, forces in steps
// of kForceStep. What is returned is not yet known to be sound.
#pragma once

#include "drawing/drawing_layout.h"

/// A beam between two pixels, on the height of the first.
[[nodiscard]] Beam beamBetween(const DrawingPlane& plane, Pixel start, Pixel end);
/// "P7": a name that no beam has.
[[nodiscard]] CString freeBeamName(const Project& project);

/// The force of an arrow whose tail is at that height: downwards when it is above the beam, 0
/// between its flanges.
[[nodiscard]] double forceFrom(const DrawingLayout& layout, const Beam& beam, int y);
/// The uniform load that reaches as far as a rectangle on the side where it reaches farther.
[[nodiscard]] double uniformFrom(const DrawingLayout& layout, const Beam& beam,
                                 const PixelRect& rect);
/// The beam that a rectangle covers most of; null when it meets none.
[[nodiscard]] const Beam* beamUnder(const Project& project, const DrawingLayout& layout,
                                    const PixelRect& rect);

/// The position on a beam at a pixel's x, from 0 to its span.
[[nodiscard]] double positionOn(const DrawingLayout& layout, const Beam& beam, int x);
/// Where something comes to lie when it is dragged from pixel to pixel.
[[nodiscard]] Place dragged(const DrawingPlane& plane, const Place& from, Pixel start, Pixel end);

/// True when the mouse was moved farther than a click moves it.
[[nodiscard]] bool isDrag(Pixel start, Pixel end);
