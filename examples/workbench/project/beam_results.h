// What a beam does under its loads, computed by formulas over a grid of cells.
#pragma once

#include "project/project.h"
#include "section.h"
#include "toolbox/parser.h"

/// HUGE_VAL stands for what has no value.
struct BeamResults {
    double weight = 0;         ///< kg, of the beam
    double leftReaction = 0;   ///< kN, upwards
    double rightReaction = 0;  ///< kN
    double moment = 0;      ///< kNm, the largest in size; positive where the lower side is pulled
    double momentAt = 0;    ///< m from the left support
    double stress = 0;      ///< N/mm2, in bending where the moment is largest
    double use = 0;         ///< of the elastic limit of S235, 235 N/mm2, in percent
    double deflection = 0;  ///< mm, at midspan, downwards

    bool operator==(const BeamResults&) const = default;
};

class BeamComputer {
  public:
    BeamComputer();
    [[nodiscard]] BeamResults compute(const Beam& beam, const Section& section);

  private:
    void setLoads(const Beam& beam);
    void findLargestMoment(const Beam& beam, BeamResults& results);
    double momentAt(double x);

    Parser grid_;
    int rows_ = static_cast<int>(kLoadsMax);  // of point loads that may not be zero; all unset yet
};
