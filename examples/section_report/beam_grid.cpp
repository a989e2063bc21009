// One formula per figure; the section goes into the cells, and the results come out of them.
#include "beam_grid.h"

#include <array>

namespace {

/// Column A holds the beam, column B the section, column C what follows from them. Steel: 7850
/// kg/m3, that is 0.785 kg/m for each cm2, and E = 210000 N/mm2.
struct Figure {
    const char* cell;
    const char* formula;
    double BeamFigures::*value;
};
constexpr std::array<Figure, 5> kFigures = {{
    {"C1", "0.785*B2", &BeamFigures::mass},
    {"C2", "20*B3/B1", &BeamFigures::modulus},
    {"C3", "C1*A1", &BeamFigures::weight},
    {"C4", "1000*A2*A1^2/8/C2", &BeamFigures::stress},
    {"C5", "5E8*A2*A1^4/(384*210000*B3)", &BeamFigures::deflection},
}};

}  // namespace

BeamGrid::BeamGrid(const Beam& beam) {
    grid_.setCell("A1", beam.span);
    grid_.setCell("A2", beam.load);
    for (const Figure& figure : kFigures) grid_.setCell(figure.cell, figure.formula);
}

BeamFigures BeamGrid::compute(const Section& section) {
    grid_.setCell("B1", section.h);
    grid_.setCell("B2", section.area);
    grid_.setCell("B3", section.iY);
    grid_.recalculate();
    BeamFigures figures;
    for (const Figure& figure : kFigures) figures.*figure.value = grid_.getCell(figure.cell);
    return figures;
}
