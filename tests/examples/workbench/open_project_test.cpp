// What the user does to a project, and takes back, against copies of it.
#include "project/open_project.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "resources/workbench_texts.h"
#include "toolbox/text.h"

namespace {

const Section kSection = [] {
    Section section;
    section.designation = "IPE 300";
    section.iY = 8356.11;
    section.welY = 557.07;
    section.mass = 42.2;
    return section;
}();

class Work : public ::testing::Test {
  protected:
    Work() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        registerWorkbenchTexts();
    }
    ~Work() override { GMSG::destroyStaticVars(); }

    std::uint32_t addBeam(double span) {
        return work.put(Beam{.name = "P", .section = "IPE 300", .span = span, .loads = {{1, 5}}});
    }
    /// Its identifier; 0 when it was refused.
    std::uint32_t addLabel(std::uint32_t beam, double x) {
        const bool done = work.put(
            std::vector{Label{.beam = beam, .tag = labelTag("$NAME$", x, 0)}}, kStepArrangeLabels);
        return done ? work.project().labels().back().id : 0;
    }
    /// The results are those of the beams that are there.
    void expectResults() {
        BeamComputer computer;
        for (std::size_t i = 0; i < work.project().beams().size(); ++i) {
            ASSERT_NE(work.results(i), nullptr);
            ASSERT_TRUE(*work.results(i) == computer.compute(work.project().beams()[i], kSection));
        }
    }

    GMSG service;
    OpenProject work{[](const CString& name) { return name == "IPE 300" ? &kSection : nullptr; }};
};

TEST_F(Work, IsAsItWasAfterAnyStepsAreTakenBack) {
    std::mt19937 random(1);
    const auto below = [&](std::size_t count) { return count ? random() % count : 0; };
    std::vector<Project> states{work.project()};  // by the number of steps done
    Project saved = work.project();
    const auto anyBeam = [&] {
        const auto& beams = work.project().beams();
        return beams.empty() ? Beam{} : beams[below(beams.size())];
    };
    const auto anyLabel = [&] {
        const auto& labels = work.project().labels();
        return labels.empty() ? Label{} : labels[below(labels.size())];
    };
    for (int i = 0; i < 1500; ++i) {
        const std::size_t done = work.steps().undoCount();
        Beam beam = anyBeam();
        switch (below(9)) {
            case 0:
                addBeam(1 + static_cast<double>(below(9)));
                break;
            case 1:
                beam.uniform = static_cast<double>(below(3));
                if (beam.id) work.put(beam);
                break;
            case 2:
                if (below(3) == 0) work.remove({Selection::OneBeam, beam.id});
                break;
            case 3:
                addLabel(beam.id, i % 7);
                break;
            case 4:
                work.moveBeam(beam.id, static_cast<double>(below(3)), 1);
                break;
            case 5:
                work.remove({Selection::OneLabel, anyLabel().id});
                break;
            case 6:
                work.remove({Selection::OneLoad, beam.id, below(2)});
                break;
            case 7:
                work.steps().undo();
                break;
            default:
                if (below(2)) work.steps().redo();
                if (below(8) == 0) saved = work.project(), work.steps().setClean();
        }
        const std::size_t now = work.steps().undoCount();
        if (now == done + 1 && work.steps().redoCount() == 0) {
            states.resize(now);
            states.push_back(work.project());
        }
        ASSERT_TRUE(work.project() == states.at(now)) << i;
        ASSERT_TRUE(!work.steps().isClean() || work.project() == saved) << i;
        if (i % 100 == 0) expectResults();
    }
    EXPECT_GT(states.size(), 50u);
    while (work.steps().undo()) {
    }
    EXPECT_TRUE(work.project() == Project());
}

TEST_F(Work, RefusesWholeWhatItCannotHold) {
    const std::uint32_t beam = addBeam(6);
    const std::uint32_t label = addLabel(beam, 9e5);
    const Project before = work.project();
    const std::size_t steps = work.steps().undoCount();
    EXPECT_FALSE(work.moveBeam(beam, 2e5, 0)) << "its label would lie outside the plane";
    Beam tooLong = work.project().beams()[0];
    tooLong.span = kSpanMax + 1;
    EXPECT_EQ(work.put(tooLong), 0u);
    EXPECT_EQ(addLabel(beam + 1, 0), 0u);
    EXPECT_FALSE(work.remove({Selection::OneLoad, beam, 1}));
    EXPECT_TRUE(work.put({*work.project().label(label)}, kStepArrangeLabels))
        << "as it is: no step";
    EXPECT_TRUE(work.project() == before);
    EXPECT_EQ(work.steps().undoCount(), steps);
}

TEST_F(Work, SaysAndSelectsWhatAStepIsAbout) {
    const std::uint32_t beam = addBeam(6);
    const std::uint32_t label = addLabel(beam, 0);
    EXPECT_TRUE(work.settled({}) == Selection()) << "the user chooses";
    work.steps().undo();
    work.steps().redo();
    EXPECT_TRUE(work.settled({}) == (Selection{Selection::OneLabel, label}));
    const Selection load{Selection::OneLoad, beam, 0};
    ASSERT_TRUE(work.moveBeam(beam, 1, 1));
    EXPECT_TRUE(work.settled(load) == load) << "is still there";
    ASSERT_TRUE(work.remove(load));
    EXPECT_TRUE(work.settled(load) == (Selection{Selection::OneBeam, beam}));
    work.steps().undo();
    ASSERT_TRUE(work.remove({Selection::OneBeam, beam}));
    EXPECT_EQ(work.steps().undoText(), "Undo Delete beam");
    EXPECT_TRUE(work.settled(load) == Selection());
    EXPECT_TRUE(work.settled({}) == Selection());
    work.steps().undo();
    EXPECT_TRUE(work.settled({}) == (Selection{Selection::OneBeam, beam})) << "with its label";
    EXPECT_EQ(work.steps().redoText(), "Redo Delete beam");
    EXPECT_EQ(work.steps().undoText(), "Undo Move beam");
}

}  // namespace
