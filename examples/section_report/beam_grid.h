// What a section carries as a beam on two supports under a uniform load, computed by formulas over
// a grid of cells.
#pragma once

#include "section.h"
#include "toolbox/parser.h"

struct Beam {
    double span = 6;   ///< m
    double load = 10;  ///< kN/m
};

/// What the grid computes for one section. An impossible one, of a beam too long for a double, is
/// HUGE_VAL.
struct BeamFigures {
    double mass = 0;        ///< kg/m, from the area
    double modulus = 0;     ///< cm3, about the strong axis
    double weight = 0;      ///< kg, of the whole beam
    double stress = 0;      ///< N/mm2, the largest in bending
    double deflection = 0;  ///< mm, at midspan

    bool operator==(const BeamFigures&) const = default;
};

class BeamGrid {
  public:
    explicit BeamGrid(const Beam& beam);
    [[nodiscard]] BeamFigures compute(const Section& section);

  private:
    Parser grid_;
};
