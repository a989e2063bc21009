// Projects in files: back as they were, and what is left of damaged ones.
#include "project/project_store.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <tuple>
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

    [[nodiscard]] std::string bytes() const { return folder.read("frame.tbf"); }
    void setBytes(const std::string& content) const { folder.write("frame.tbf", content); }
    /// Puts data in place of a record of the same size, with its checksum.
    void putRecord(std::size_t start, const std::string& data) const {
        VarRecord record;
        record.setData(static_cast<unsigned>(data.size()), data.data());
        record << static_cast<int>(crc32(data));
        setBytes(bytes().replace(start, record.getLen(), record.getPData(), record.getLen()));
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
    const APIFile other(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    ASSERT_TRUE(other.isValid());
    EXPECT_EQ(load().error, kNotRead) << "another program keeps it to itself";
}

TEST_F(ProjectStore, LoadsWhatADamagedFileStillHolds) {
    const std::string whole = bytes();
    struct Damage {
        const char* what;
        std::string bytes;
        std::size_t lost;
    };
    std::string headless = whole, holed = whole, indexless = whole;
    std::memset(headless.data(), '?', kHeaderSize - 8);
    // With the start of its block.
    std::memset(holed.data() + recordOf("P7") - 132, '?', 152);
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

TEST_F(ProjectStore, MissesWhatTheCountsDoNotTell) {
    const auto expectAll = [&](const char* what) {
        SCOPED_TRACE(what);
        const LoadedProject loaded = load();
        EXPECT_EQ(loaded.error, kDamaged);
        EXPECT_EQ(loaded.expected, 42u);
        EXPECT_EQ(loaded.loaded, 42u);
        EXPECT_TRUE(loaded.project == project);
    };
    std::string empty = bytes();
    std::memset(empty.data() + kCounts - 4, 0, 4);
    setBytes(empty);
    expectAll("the counts have the length 0");

    for (const auto& [beams, labels] : {std::pair{1, 0}, {40, 1}, {39, 2}, {0, 0}}) {
        ASSERT_EQ(saveProject(project, file.c_str(), created, {}), 0);
        putRecord(kCounts, counts(beams, labels));
        expectAll("the counts are too small");
    }
    putRecord(kCounts, counts(41, 2));
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, kDamaged);
    EXPECT_EQ(loaded.expected, 43u);
    EXPECT_EQ(loaded.loaded, 42u);
}

TEST_F(ProjectStore, TellsHowManyThereAreWithoutTheCounts) {
    std::string content = bytes();
    std::memset(content.data() + kHeaderSize, 0, 136);
    setBytes(content);
    EXPECT_EQ(load().error, kDamaged);
    EXPECT_EQ(load().expected, 42u) << "the index knows";

    content.resize(content.size() - 42 * 8 - 148);
    setBytes(content);
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, kDamaged);
    EXPECT_EQ(loaded.expected, 0u);
    EXPECT_EQ(loaded.loaded, 42u);
}

TEST_F(ProjectStore, MissesABeamWhoseIdentifierComesTwice) {
    putRecord(recordOf("P5"), bytes().substr(recordOf("P1"), kBareBeam));
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, kDamaged);
    EXPECT_EQ(loaded.expected, 42u);
    EXPECT_EQ(loaded.loaded, 41u);
    EXPECT_EQ(loaded.project.beams().size(), 39u);
}

TEST_F(ProjectStore, TakesRecordsOfTheirSizeOnly) {
    // The number of loads is the last field before them: P5 has none, P6 one.
    for (const auto& [beam, loads, size] :
         {std::tuple{"P5", '\1', kBareBeam}, {"P6", '\0', kBareBeam + 16}}) {
        ASSERT_EQ(saveProject(project, file.c_str(), created, {}), 0);
        std::string data = bytes().substr(recordOf(beam), size);
        data[kBareBeam - 4] = loads;
        putRecord(recordOf(beam), data);
        EXPECT_EQ(load().error, kDamaged) << beam;
        EXPECT_EQ(load().loaded, 41u) << beam;
    }
}

TEST_F(ProjectStore, LoadsAnyBytesInLinearTime) {
    // The start of a block wherever one may begin: quadratic work would take minutes.
    VarRecord pattern;
    pattern << -1 << static_cast<int>(kFirstBeamBlock) << 500000 << 0;
    std::string content = bytes().substr(0, kHeaderSize);
    while (content.size() < 512 * 1024) content.append(pattern.getPData(), pattern.getLen());
    setBytes(content);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(load().error, kNotAProject);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(ProjectStore, LoadsBeamsWhoseIdentifiersDescend) {
    constexpr int kCount = 20000;
    ASSERT_EQ(saveProject(sampleProject(kCount, {"IPE 300"}), file.c_str(), created, {}), 0);
    std::string content = bytes();
    std::size_t at = 0;
    for (int i = 1; i <= kCount; ++i) {
        at = content.find("P" + std::to_string(i) + '\0', at) - 4;
        std::int32_t length = 0;  // with the checksum
        std::memcpy(&length, content.data() + at - 4, 4);
        VarRecord record;
        record << kCount + 1 - i;
        const std::string data(std::string(record.getPData(), 4) +
                               content.substr(at + 4, static_cast<std::size_t>(length) - 8));
        VarRecord sum;
        sum << static_cast<int>(crc32(data));
        content.replace(at, data.size() + 4, data + std::string(sum.getPData(), 4));
        at += data.size();
    }
    setBytes(content);
    const auto start = std::chrono::steady_clock::now();
    const LoadedProject loaded = load();
    // Quadratic work would take a minute without the optimizer.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(loaded.error, 0);
    ASSERT_EQ(loaded.loaded, static_cast<std::size_t>(kCount));
    EXPECT_EQ(loaded.project.beams().front().id, 1u);
}

TEST_F(ProjectStore, NoticesEveryBitThatFlips) {
    const std::string whole = bytes();
    struct Record {
        const char* what;
        std::size_t start, size, lost;
    };
    const Record records[] = {
        {"counts", kCounts, 12, 0},
        {"beam", recordOf("P5"), 76, 1},
        {"label", whole.find("$NAME$ : f") - 32, 164, 1},
    };
    for (const Record& record : records) {
        for (std::size_t i = 0; i < record.size; ++i) {
            SCOPED_TRACE(record.what + std::to_string(i));
            std::string content = whole;
            content[record.start + i] ^= static_cast<char>(1 << i % 8);
            setBytes(content);
            const LoadedProject loaded = load();
            ASSERT_EQ(loaded.error, kDamaged);
            ASSERT_EQ(loaded.expected, 42u);
            ASSERT_EQ(loaded.loaded, 42 - record.lost);
        }
    }
}

TEST(Crc32, IsThatOfTheStandard) {
    EXPECT_EQ(crc32("123456789"), 0xCBF43926u);
    EXPECT_EQ(crc32(""), 0u);
}

TEST_F(ProjectStore, RefusesAProjectOfALaterVersion) {
    std::string content = bytes();
    content[0] = 2;
    setBytes(content);
    EXPECT_EQ(load().error, kTooNew);
}

}  // namespace
