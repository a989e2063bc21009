// Projects in files: back as they were, and what is left of damaged ones.
#include "project_store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <sstream>

#include "support/temp_folder.h"
#include "toolbox/block_files.h"
#include "toolbox/text.h"

namespace {

constexpr std::size_t kHeaderSize = 160;

class ProjectStore : public ::testing::Test {
  protected:
    ProjectStore() {
        GMSG::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportNothing);
        project = sampleProject(40, {"IPE 300", "IPE 80"});
        for (std::uint32_t beam : {1u, 7u})
            project.put(Label{.beam = beam,
                              .x = 1.5,
                              .y = -2,
                              .alignment = Label::Right,
                              .border = true,
                              .text = "$NAME$ : f = $F$ mm"});
        EXPECT_EQ(saveProject(project, file.c_str(), created, {}), 0);
    }
    ~ProjectStore() override { GMSG::destroyStaticVars(); }

    [[nodiscard]] std::string bytes() const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void setBytes(const std::string& content) const {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
    }
    [[nodiscard]] LoadedProject load() const { return loadProject(file.c_str(), {}); }

    GMSG service;
    TempFolder folder;
    std::string file = folder / "frame.tbf";
    TarvDate created{2026, 8, 14};
    Project project;
};

TEST_F(ProjectStore, GivesBackWhatWasSaved) {
    project.removeBeam(3);  // identifiers with a gap
    ASSERT_EQ(saveProject(project, file.c_str(), created, {}), 0);
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, 0);
    EXPECT_TRUE(loaded.project == project);
    EXPECT_EQ(loaded.loaded, 41u);
    EXPECT_TRUE(loaded.created == created);
}

TEST_F(ProjectStore, KeepsAnotherFileWhole) {
    EXPECT_EQ(load().error, 0);
    const std::string before = bytes();
    EXPECT_EQ(saveProject(project, (folder / "none/frame.tbf").c_str(), created, {}), kNotWritten);
    EXPECT_EQ(bytes(), before);

    EXPECT_EQ(loadProject((folder / "absent.tbf").c_str(), {}).error, kNotRead);
    setBytes("Dear Sir or Madam, the bridge holds.");
    EXPECT_EQ(load().error, kNotAProject);
}

TEST_F(ProjectStore, CannotReadWhatAnotherProgramKeepsToItself) {
    const APIFile other(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    ASSERT_TRUE(other.isValid());
    EXPECT_EQ(load().error, kNotRead);
}

TEST_F(ProjectStore, LoadsWhatADamagedFileStillHolds) {
    const std::string whole = bytes();
    const std::size_t seventh = whole.find(std::string_view("P7\0", 3));
    ASSERT_NE(seventh, std::string::npos);

    struct Damage {
        const char* what;
        std::string bytes;
        std::size_t lost;
    };
    std::string headless = whole, holed = whole, indexless = whole;
    std::memset(headless.data(), '?', kHeaderSize - 8);
    // The name is the second field of a block's data, 140 bytes behind the block's start.
    for (std::size_t i = seventh - 136; i < seventh + 16; ++i) holed[i] = '\xEE';
    indexless.resize(whole.size() - 41 * 8 - 148);
    const Damage damages[] = {
        {"its header is gone", headless, 0},
        {"its index is gone", indexless, 0},
        // With its label.
        {"a beam is gone", holed, 2},
        {"only half of it is left", whole.substr(0, whole.size() / 2), 21},
    };
    for (const Damage& damage : damages) {
        SCOPED_TRACE(damage.what);
        setBytes(damage.bytes);
        const LoadedProject loaded = load();
        EXPECT_EQ(loaded.error, kDamaged);
        EXPECT_EQ(loaded.expected, 42u);
        EXPECT_EQ(loaded.loaded, 42 - damage.lost);
        for (const Beam& beam : loaded.project.beams()) EXPECT_TRUE(beam == *project.beam(beam.id));
        for (const Label& label : loaded.project.labels())
            EXPECT_TRUE(label == *project.label(label.id));
    }
}

TEST_F(ProjectStore, RefusesAProjectOfALaterVersion) {
    std::string content = bytes();
    content[0] = 2;
    setBytes(content);
    EXPECT_EQ(load().error, kTooNew);
}

}  // namespace
