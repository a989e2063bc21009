// Projects in files: back as they were, and what is left of damaged ones.
#include "project/project_store.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

#include "project/crc32.h"
#include "support/temp_folder.h"
#include "toolbox/block_files.h"
#include "toolbox/text.h"

namespace {

constexpr std::size_t kHeaderSize = 160;
constexpr std::size_t kCounts = kHeaderSize + 136;  // where the first record starts
constexpr std::size_t kBareBeam = 72;               // bytes of a beam without loads
constexpr std::size_t kIndex = 43 * 8 + 148;

std::string zeroed(std::string bytes, std::size_t start, std::size_t size) {
    return bytes.replace(start, size, size, '\0');
}

/// The record that describes the project.
std::string counts(int beams, int labels) {
    VarRecord record;
    record << beams << labels;
    return {record.getPData(), record.getLen()};
}

class ProjectStore : public ::testing::Test {
  protected:
    ProjectStore() {
        GMSG::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportNothing);
        project = sampleProject(40, {"IPE 300", "IPE 80"});
        for (std::uint32_t beam : {1u, 7u}) project.put(Label{.beam = beam, .tag = oldTag()});
        EXPECT_EQ(saveProject(project, file.c_str(), created, {}), 0);
    }
    ~ProjectStore() override { GMSG::destroyStaticVars(); }

    [[nodiscard]] std::string bytes() const { return folder.read("frame.tbf"); }
    void setBytes(const std::string& content) const { folder.write("frame.tbf", content); }
    /// The file with data in place of a record of the same size, with its checksum.
    [[nodiscard]] std::string withRecord(std::size_t start, const std::string& data) const {
        VarRecord record;
        record.setData(static_cast<unsigned>(data.size()), data.data());
        record << static_cast<int>(crc32(data));
        return bytes().replace(start, record.getLen(), record.getPData(), record.getLen());
    }
    /// As version 1 had them.
    static TvTag oldTag() {
        TvTag tag = labelTag("$NAME$ : f = $F$ mm", 1.5, -2);
        tag.align = TvAlign::right;
        setFramed(tag, false);
        return tag;
    }
    /// Where the record of a beam starts: its name is the second field.
    [[nodiscard]] std::size_t recordOf(const char* beam) const {
        return bytes().find(std::string(beam) + '\0') - 4;
    }
    [[nodiscard]] LoadedProject load() const { return loadProject(file.c_str(), {}); }

    GMSG service;
    TempFolder folder;
    std::string file = folder / "frame.tbf";
    TarvDate created{2026, 8, 14};
    Project project;
};

TEST_F(ProjectStore, GivesBackWhatWasSaved) {
    std::optional<Beam> none;
    project.exchange(3, none);  // identifiers with a gap
    ASSERT_EQ(saveProject(project, file.c_str(), created, {}), 0);
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, 0);
    EXPECT_TRUE(loaded.project == project);
    EXPECT_EQ(loaded.loaded, 41u);
    EXPECT_TRUE(loaded.created == created);
}

TEST_F(ProjectStore, MakesTagsOfTheLabelsOfVersion1) {
    const std::string beam = bytes().substr(recordOf("P1"), kBareBeam);
    VarRecord old;
    old << 5 << 1 << 1.5 << -2.0 << 2 << 0;
    std::string text(oldTag().text);
    text.resize(128);
    TarvFileWrite writer;
    ASSERT_TRUE(writer.open(file.c_str()));
    TarvFileHeader header = *writer.getHeader();
    header.setDescription("Beam project");
    header.setVersion(1);
    writer.setHeader(header);
    for (const auto& [id, data] :
         {std::pair{kProjectBlock, counts(1, 1)},
          {kFirstBeamBlock, beam},
          {kFirstLabelBlock, std::string(old.getPData(), old.getLen()) + text}}) {
        TarvBlocFile block;
        block.setID(id);
        block.writeString(data.data(), static_cast<unsigned>(data.size()));
        block << static_cast<int>(crc32(data));
        ASSERT_TRUE(writer.writeBloc(block));
    }
    ASSERT_TRUE(writer.commit() && writer.close());
    LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, 0);
    ASSERT_EQ(loaded.project.labels().size(), 1u);
    EXPECT_TRUE(loaded.project.labels()[0] ==
                (Label{.id = 5, .beam = 1, .rank = 1, .tag = oldTag()}));
    ASSERT_EQ(saveProject(loaded.project, file.c_str(), created, {}), 0);
    EXPECT_TRUE(load().project == loaded.project);
}

TEST_F(ProjectStore, RefusesWhatIsNoProjectAndKeepsWhatItCannotReplace) {
    const std::string before = bytes();
    EXPECT_EQ(saveProject(project, (folder / "none/frame.tbf").c_str(), created, {}), kNotWritten);
    EXPECT_EQ(bytes(), before);
    setBytes('\3' + before.substr(1));
    EXPECT_EQ(load().error, kTooNew);
    setBytes("Dear Sir or Madam, the bridge holds.");
    EXPECT_EQ(load().error, kNotAProject);
    EXPECT_EQ(loadProject((folder / "absent.tbf").c_str(), {}).error, kNotRead);
    const APIFile other(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    ASSERT_TRUE(other.isValid());
    EXPECT_EQ(load().error, kNotRead) << "another program keeps it to itself";
}

TEST_F(ProjectStore, LoadsWhatADamagedFileStillHolds) {
    const std::string whole = bytes(), indexless = whole.substr(0, whole.size() - kIndex);
    const std::size_t beam1 = recordOf("P1"), beam5 = recordOf("P5"), beam6 = recordOf("P6");
    // The number of loads is the last field before them: P5 has none, P6 one.
    std::string tooShort = whole.substr(beam5, kBareBeam);
    std::string tooLong = whole.substr(beam6, kBareBeam + 16);
    tooShort[kBareBeam - 4] = 1;
    tooLong[kBareBeam - 4] = 0;
    const struct {
        const char* what;
        std::string bytes;
        std::size_t expected, loaded;
    } cases[] = {
        {"its header is gone", zeroed(whole, 0, kHeaderSize - 8), 42, 42},
        {"its index is gone", indexless, 42, 42},
        {"a beam is gone with the start of its block, and so is its label",
         zeroed(whole, recordOf("P7") - 132, 152), 42, 40},
        {"only half of it is left", whole.substr(0, whole.size() / 2), 42, 21},
        {"the counts have the length 0", zeroed(whole, kCounts - 4, 4), 42, 42},
        {"the counts tell of too few beams", withRecord(kCounts, counts(39, 2)), 42, 42},
        {"the counts tell of too few labels", withRecord(kCounts, counts(40, 1)), 42, 42},
        {"the counts tell of nothing", withRecord(kCounts, counts(0, 0)), 42, 42},
        {"the counts tell of too many", withRecord(kCounts, counts(41, 2)), 43, 42},
        {"only the index tells", zeroed(whole, kHeaderSize, 136), 42, 42},
        {"nothing tells", zeroed(indexless, kHeaderSize, 136), 0, 42},
        {"one identifier comes twice", withRecord(beam5, whole.substr(beam1, kBareBeam)), 42, 41},
        {"a beam without its load", withRecord(beam5, tooShort), 42, 41},
        {"a load without a beam", withRecord(beam6, tooLong), 42, 41},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        setBytes(test.bytes);
        const LoadedProject loaded = load();
        EXPECT_EQ(loaded.error, kDamaged);
        EXPECT_EQ(loaded.expected, test.expected);
        EXPECT_EQ(loaded.loaded, test.loaded);
        EXPECT_EQ(loaded.project.beams().size() + loaded.project.labels().size(), test.loaded);
        for (const Beam& beam : loaded.project.beams()) EXPECT_TRUE(beam == *project.beam(beam.id));
        for (const Label& label : loaded.project.labels())
            EXPECT_TRUE(label == *project.label(label.id));
    }
}

}  // namespace
