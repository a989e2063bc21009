// The values of a beam as the program shows them, and what the user changes about them.
#include "project/project_keys.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "project/label_keys.h"
#include "project/open_project.h"
#include "resources/workbench_texts.h"
#include "support/temp_folder.h"
#include "toolbox/text.h"

namespace {

Section sectionOf(double h, double mass, double iY, double welY) {
    Section section;
    section.h = h;
    section.mass = mass;
    section.iY = iY;
    section.welY = welY;
    return section;
}

class Keys : public ::testing::Test {
  protected:
    Keys() {
        GMSG::initStaticVars();
        UDManager::initStaticVars();
        registerWorkbenchTexts();
        GMSG::language = GMSG::English;
        start();
        beam.name = "P1";
        beam.section = "IPE 80";
    }
    ~Keys() override {
        keys.reset();
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
    }
    /// As the program does, with what is in the profile.
    void start() {
        keys.reset();
        keys.emplace(profile);
    }
    void compute() {
        results = BeamComputer().compute(beam, section);
        keys->setCurrent(beam, section, results);
    }
    [[nodiscard]] std::string shown(const char* key) { return keys->shown(keys->getId(key)).str(); }
    void setFormat(const char* key, int width, int precision) {
        RealFormat format;
        ASSERT_TRUE(format.setFormat(width, precision, Right));
        ASSERT_TRUE(keys->setKeyFormat(keys->getId(key), format));
    }

    GMSG service;
    TempFolder folder;
    std::string profile = folder / "workbench.ini";
    std::optional<ProjectKeys> keys;
    Beam beam;
    Section section = sectionOf(80, 6.0, 80.14, 20.03);
    BeamResults results;
};

TEST_F(Keys, ShowWhatABeamOfAnySizeGives) {
    beam.span = 60;
    beam.uniform = 100;
    compute();
    EXPECT_GT(results.stress, 2e6);
    EXPECT_NEAR(std::stod(shown("S")), results.stress, 0.1);
    for (const Section& other : {section, sectionOf(600, 122, 92080, 3069)}) {
        section = other;
        for (const double load : {-kLoadMax, 0.0, kLoadMax}) {
            beam.uniform = load;
            beam.loads.assign(kLoadsMax, {30, load});
            ASSERT_TRUE(isSound(beam));
            compute();
            for (const UINT key : ProjectKeys::all()) {
                EXPECT_NE(keys->shown(key), kTooNarrow) << keys->getKey(key) << " of " << load;
                EXPECT_FALSE(keys->shown(key).empty());
            }
        }
    }
}

TEST_F(Keys, ShowNoNumberThatIsCut) {
    beam.span = 60;
    beam.uniform = -100;
    beam.loads.assign(10, {1, 1});
    compute();
    ASSERT_LT(results.moment, -44000);
    setFormat("M", 5, 2);
    setFormat("F", 7, 2);
    EXPECT_EQ(shown("F"), "-1e+008") << "rounded, but whole";
    beam.span = 59.96;
    setFormat("L", 3, 1);
    EXPECT_EQ(shown("L"), "60") << "a point alone is none";
    setFormat("L", 2, 0);
    beam.span = 60;
    EXPECT_EQ(shown("L"), kTooNarrow) << "6e";
    setFormat("F", 6, 2);
    setFormat("L", 3, 1);
    EXPECT_EQ(shown("L"), "60") << "fewer decimals are right";
    EXPECT_EQ(shown("M"), kTooNarrow);
    setFormat("M", 9, 2);
    EXPECT_NEAR(std::stod(shown("M")), results.moment, 0.01);

    NumberFormat narrow;
    EXPECT_EQ(shown("N"), "10");
    narrow.setFormat(1, Right);
    keys->setKeyFormat(keys->getId("N"), narrow);
    EXPECT_EQ(shown("N"), kTooNarrow);
}

TEST_F(Keys, AreWholeInLabelsAndThoseOfTheirBeam) {
    OpenProject work([this](const CString& name) { return name == "IPE 80" ? &section : nullptr; });
    beam.span = 60;
    const std::uint32_t first = work.put(beam);
    beam.name = "P2";
    const std::uint32_t second = work.put(beam);
    beam.section = "none";
    const std::uint32_t unknown = work.put(beam);
    setFormat("L", 2, 0);
    setFormat("M", 5, 2);
    NumberFormat narrow;
    narrow.setFormat(1, Right);
    keys->setKeyFormat(keys->getId("N"), narrow);
    Beam loaded = *work.project().beam(first);
    loaded.uniform = -100;
    loaded.loads.assign(10, {1, 1});
    work.put(loaded);

    LabelKeys labels(work);
    const auto read = [&](std::uint32_t id) {
        return labels.of(id)->getParseString("$NAME$ $L$ $M$ $N$", 1);
    };
    EXPECT_EQ(read(first).str().substr(0, 10), "P1 60 -449");
    EXPECT_TRUE(read(first).str().ends_with(" 10")) << read(first).str();
    EXPECT_EQ(read(second).str().substr(0, 5), "P2 60");
    EXPECT_EQ(labels.of(unknown), nullptr) << "no results: tokens stand";
    TokenizerUDManager* const kept = labels.of(second);
    work.remove({Selection::OneBeam, second});
    EXPECT_EQ(kept->getParseString("$NAME$", 1), "");
    EXPECT_EQ(labels.of(second), nullptr);
}

TEST_F(Keys, KeepADescriptionOnlyWhenTheUserWroteIt) {
    GMSG::language = GMSG::French;
    start();
    const UINT moment = keys->getId("M"), stress = keys->getId("S");
    setFormat("M", 5, 2);
    EXPECT_TRUE(keys->save(moment));
    EXPECT_EQ(keys->getKeyDesc(moment), "Moment maximal");
    keys->setKeyDesc(stress, "Sigma");
    EXPECT_TRUE(keys->save(stress));

    GMSG::language = GMSG::English;
    start();
    EXPECT_EQ(keys->getKeyDesc(moment), "Maximum moment");
    EXPECT_EQ(keys->getKeyData(moment).getFormat()->getWidth(), 5);
    EXPECT_EQ(keys->getKeyDesc(stress), "Sigma");
    keys->setKeyDesc(stress, "");
    EXPECT_TRUE(keys->save(stress));

    GMSG::language = GMSG::French;
    start();
    EXPECT_EQ(keys->getKeyDesc(stress), "Contrainte maximale de flexion");
}

}  // namespace
