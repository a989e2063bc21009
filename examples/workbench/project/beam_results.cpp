// The closed formulas of a beam on two supports, one grid for all beams: loads go into its cells,
// and the largest moment is searched between them.
#include "project/beam_results.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace {

// Column A is the beam: A1 span m, A2 own load kN/m, A3 second moment cm4, A4 elastic modulus cm3,
// A5 mass kg/m, A6 where the moment is asked for, m, A7 the largest moment kNm. A row of B to F is
// a point load: force kN, position m, its moment at A6, its deflection at midspan, its left
// reaction. Column G is what the user sees. Steel: E = 210000 N/mm2; 1 kg weighs 0.00981 kN.
struct Figure {
    const char* cell;
    const char* formula;
};
constexpr std::array<Figure, 8> kFigures = {{
    {"G1", "A2+0.00981*A5"},
    {"G2", "G1*A1/2+F1:F10"},
    {"G3", "G1*A6*(A1-A6)/2+D1:D10"},
    {"G4", "5E8*G1*A1^4/(384*210000*A3)+E1:E10"},
    {"G5", "A5*A1"},
    {"G6", "G1*A1+B1:B10-G2"},
    {"G7", "1000*ABS(A7)/A4"},
    {"G8", "100*G7/235"},  // the elastic limit
}};

enum Column { kA, kB, kC, kD, kE, kF };
enum Row { kSpan, kOwnLoad, kSecondMoment, kModulus, kMass, kPlace, kLargest };

/// Formulas know no choice: the smaller of two is half of their sum less their difference, the
/// larger half of their sum with it.
void setLoadFormulas(Parser& grid, int row) {
    const std::string n = std::to_string(row + 1);
    const std::string force = "B" + n;
    const std::string at = "C" + n;
    const std::string apart = "ABS(A6-" + at + ")";
    const std::string moment =
        force + "*(A6+" + at + "-" + apart + ")/2*(A1-(A6+" + at + "+" + apart + ")/2)/A1";
    const std::string nearer = "((A1-ABS(A1-2*" + at + "))/2)";
    const std::string deflection =
        "1E8*" + force + "*" + nearer + "*(3*A1^2-4*" + nearer + "^2)/(48*210000*A3)";
    grid.setCell(row, kD, moment.c_str());
    grid.setCell(row, kE, deflection.c_str());
    grid.setCell(row, kF, (force + "*(A1-" + at + ")/A1").c_str());
}

}  // namespace

BeamComputer::BeamComputer() {
    for (int row = 0; row < static_cast<int>(kLoadsMax); ++row) setLoadFormulas(grid_, row);
    for (const Figure& figure : kFigures) grid_.setCell(figure.cell, figure.formula);
}

BeamResults BeamComputer::compute(const Beam& beam, const Section& section) {
    const double figures[] = {beam.span, beam.uniform, section.iY, section.welY, section.mass, 0,
                              0};
    for (int row = 0; const double figure : figures) grid_.setCell(row++, kA, figure);
    setLoads(beam);
    // Each formula after those that it names; the rows below are zero.
    grid_.getCell("G1");
    for (int row = 0; row < rows_; ++row)
        for (const int column : {kE, kF}) grid_.getCell(row, column);
    BeamResults results;
    results.leftReaction = grid_.getCell("G2");
    results.deflection = grid_.getCell("G4");
    results.weight = grid_.getCell("G5");
    results.rightReaction = grid_.getCell("G6");
    findLargestMoment(beam, results);
    rows_ = static_cast<int>(beam.loads.size());
    grid_.setCell(kLargest, kA, results.moment);
    results.stress = grid_.getCell("G7");
    results.use = grid_.getCell("G8");
    return results;
}

/// Also clears the rows of the beam before.
void BeamComputer::setLoads(const Beam& beam) {
    const int loads = static_cast<int>(beam.loads.size());
    rows_ = std::max(rows_, loads);
    for (int row = 0; row < rows_; ++row) {
        const PointLoad load =
            row < loads ? beam.loads[static_cast<std::size_t>(row)] : PointLoad{};
        grid_.setCell(row, kB, load.force);
        grid_.setCell(row, kC, load.position);
    }
}

/// The moment is largest under a load or where the shear force vanishes between two.
void BeamComputer::findLargestMoment(const Beam& beam, BeamResults& results) {
    std::vector<PointLoad> loads = beam.loads;
    std::ranges::sort(loads, {}, &PointLoad::position);
    loads.push_back({beam.span, 0});
    const double uniform = grid_.getCell("G1");
    const auto consider = [&](double x) {
        const double moment = momentAt(x);
        if (std::fabs(moment) <= std::fabs(results.moment)) return;
        results.moment = moment;
        results.momentAt = x;
    };
    double from = 0;
    double shear = results.leftReaction;  // after `from`
    for (const PointLoad& load : loads) {
        const double zero = uniform == 0 ? load.position : from + shear / uniform;
        if (zero > from && zero < load.position) consider(zero);
        consider(load.position);
        shear -= uniform * (load.position - from) + load.force;
        from = load.position;
    }
}

double BeamComputer::momentAt(double x) {
    grid_.setCell(kPlace, kA, x);
    for (int row = 0; row < rows_; ++row) grid_.getCell(row, kD);
    return grid_.getCell("G3");
}
