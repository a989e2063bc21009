// What the formulas compute, held to the closed forms of handbooks and to a fine sum over the beam.
#include "project/beam_results.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

Section ipe300() {
    Section section;
    section.iY = 8356.11;
    section.welY = 557.07;
    section.mass = 42.2;
    return section;
}

Beam beamWith(double uniform, std::vector<PointLoad> loads) {
    return {.name = {}, .section = {}, .span = 6, .uniform = uniform, .loads = std::move(loads)};
}

/// Largest moment by size and the deflection at midspan, by sums over a thousand slices: the
/// deflection as the work of the moment on that of a unit force there.
std::pair<double, double> sum(const Beam& beam, const Section& section) {
    const double q = beam.uniform + 0.00981 * section.mass, span = beam.span;
    double largest = 0, deflection = 0;
    constexpr int kSlices = 6000;
    for (int i = 0; i < kSlices; ++i) {
        const double x = span * (i + 0.5) / kSlices;
        double moment = q * x * (span - x) / 2;
        for (const PointLoad& load : beam.loads)
            moment +=
                load.force *
                (x < load.position ? (span - load.position) * x : load.position * (span - x)) /
                span;
        if (std::fabs(moment) > std::fabs(largest)) largest = moment;
        const double unit = std::min(x, span - x) / 2;
        deflection += moment * unit * span / kSlices;
    }
    return {largest, deflection * 1e8 / (210000 * section.iY)};
}

TEST(BeamComputer, AgreesWithASumOverTheBeam) {
    BeamComputer computer;
    const Section section = ipe300();
    const Beam beams[] = {
        beamWith(10, {}),
        beamWith(0, {{3, 50}}),
        beamWith(4, {{5, 20}, {1, 30}}),
        beamWith(2, {{0, 100}, {6, 100}}),  // straight into the supports
        beamWith(0, {{2, -80}, {4, 10}}),   // lifted
        beamWith(-0.00981 * section.mass, {{1, 10}, {2, 10}, {3, 10}, {4, 10}, {5, 10}}),
    };
    for (const Beam& beam : beams) {
        const BeamResults results = computer.compute(beam, section);
        const auto [moment, deflection] = sum(beam, section);
        EXPECT_NEAR(results.moment, moment, std::fabs(moment) * 1e-3);
        EXPECT_NEAR(results.deflection, deflection, 1e-4 * std::fabs(deflection) + 1e-6);
        double load = (beam.uniform + 0.00981 * section.mass) * beam.span;
        for (const PointLoad& point : beam.loads) load += point.force;
        EXPECT_NEAR(results.leftReaction + results.rightReaction, load, 1e-5);
        EXPECT_NEAR(results.stress, 1000 * std::fabs(results.moment) / section.welY, 1e-4);
        EXPECT_NEAR(results.use, results.stress / 2.35, 1e-4);
    }
}

}  // namespace
