// Projects in files: back as they were, and what is left of damaged ones.
#include "project/project_store.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <utility>
#include <vector>

#include "project/crc32.h"
#include "support/temp_folder.h"
#include "toolbox/block_files.h"
#include "toolbox/text.h"

namespace {

constexpr std::size_t kHeaderSize = 160;

/// The data of the block that describes the project.
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

    [[nodiscard]] std::string bytes() const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void setBytes(const std::string& content) const {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
    }
    /// Writes the file anew with its blocks changed.
    void change(const std::function<void(TarvBlocFile&)>& changeBlock) const {
        std::vector<TarvBlocFile> blocks;
        TarvFileHeader header;
        {
            TarvFileRead in;
            ASSERT_TRUE(in.open(file.c_str()));
            header = *in.getHeader();
            unsigned long id = 0;
            ASSERT_TRUE(in.getIndex()->getFirstID(id));
            do ASSERT_TRUE(in.getBloc(id, blocks.emplace_back()));
            while (in.getIndex()->getNextID(id));
        }
        TarvFileWrite out;
        out.setSafeSave(1);
        ASSERT_TRUE(out.open(file.c_str()));
        TarvFileHeader newHeader = *out.getHeader();
        newHeader.setDescription(header.getDescription());
        newHeader.setVersion(header.getVersion());
        out.setHeader(newHeader);
        for (TarvBlocFile& block : blocks) {
            changeBlock(block);
            ASSERT_TRUE(out.writeBloc(block));
        }
        ASSERT_TRUE(out.commit() && out.close());
    }
    /// Puts the right checksum behind the data.
    static void setData(TarvBlocFile& block, const std::string& data) {
        block.setData(static_cast<unsigned long>(data.size()), data.data());
        block << static_cast<int>(crc32(data));
    }
    /// Without the checksum.
    static std::string dataOf(const TarvBlocFile& block) {
        return {block.getPData(), block.getLen() - 4};
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

TEST_F(ProjectStore, MissesWhatTheCountsDoNotTell) {
    const auto expectAll = [&](const char* what) {
        SCOPED_TRACE(what);
        const LoadedProject loaded = load();
        EXPECT_EQ(loaded.error, kDamaged);
        EXPECT_EQ(loaded.expected, 42u);
        EXPECT_EQ(loaded.loaded, 42u);
        EXPECT_TRUE(loaded.project == project);
    };
    const std::string whole = bytes();
    std::string empty = whole;
    std::memset(empty.data() + kHeaderSize + 132, 0, 4);
    setBytes(empty);
    expectAll("the counts have the length 0");

    for (const auto& [beams, labels] : {std::pair{1, 0}, {40, 1}, {39, 2}, {0, 0}}) {
        setBytes(whole);
        change([&, beams = beams, labels = labels](TarvBlocFile& block) {
            if (block.getID() == kProjectBlock) setData(block, counts(beams, labels));
        });
        expectAll("the counts are too small");
    }
    change([&](TarvBlocFile& block) {
        if (block.getID() == kProjectBlock) setData(block, counts(41, 2));
    });
    EXPECT_EQ(load().error, kDamaged);
    EXPECT_EQ(load().expected, 43u);
    EXPECT_EQ(load().loaded, 42u);
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
    std::string first;
    change([&](TarvBlocFile& block) {
        if (block.getID() == kFirstBeamBlock) first = dataOf(block);
        if (block.getID() == kFirstBeamBlock + 2) setData(block, first);
    });
    const LoadedProject loaded = load();
    EXPECT_EQ(loaded.error, kDamaged);
    EXPECT_EQ(loaded.expected, 42u);
    EXPECT_EQ(loaded.loaded, 41u);
    EXPECT_EQ(loaded.project.beams().size(), 39u);
}

TEST_F(ProjectStore, TakesRecordsOfTheirSizeOnly) {
    const std::string whole = bytes();
    for (const unsigned long id : {kProjectBlock, kFirstBeamBlock + 5, kFirstLabelBlock}) {
        for (const int more : {-4, 4}) {
            SCOPED_TRACE(std::to_string(id) + (more < 0 ? " shorter" : " longer"));
            setBytes(whole);
            change([&](TarvBlocFile& block) {
                if (block.getID() != id) return;
                std::string data = dataOf(block);
                data.resize(data.size() + static_cast<std::size_t>(more));
                setData(block, data);
            });
            const LoadedProject loaded = load();
            EXPECT_EQ(loaded.error, kDamaged);
            EXPECT_EQ(loaded.loaded, id == kProjectBlock ? 42u : 41u);
        }
    }
}

TEST_F(ProjectStore, FindsEverythingBehindALargeHole) {
    project = sampleProject(10000, {"IPE 300"});
    ASSERT_EQ(saveProject(project, file.c_str(), created, {}), 0);
    std::string content = bytes();
    const std::size_t hole = content.find(std::string_view("P3000\0", 6));
    ASSERT_NE(hole, std::string::npos);
    std::memset(content.data() + hole, 0, 8192);
    for (const bool indexed : {true, false}) {
        if (!indexed) content.resize(content.size() - 10001 * 8 - 148);
        setBytes(content);
        const LoadedProject loaded = load();
        EXPECT_EQ(loaded.error, kDamaged);
        EXPECT_EQ(loaded.expected, 10000u);
        EXPECT_GT(loaded.loaded, 9950u) << indexed;
        EXPECT_LT(loaded.loaded, 10000u);
        for (const Beam& beam : loaded.project.beams())
            ASSERT_TRUE(beam == *project.beam(beam.id)) << beam.name;
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
    constexpr std::uint32_t kCount = 20000;
    ASSERT_EQ(saveProject(sampleProject(kCount, {"IPE 300"}), file.c_str(), created, {}), 0);
    change([](TarvBlocFile& block) {
        if (block.getID() == kProjectBlock) return;
        std::string data = dataOf(block);
        VarRecord id;
        id << static_cast<int>(kCount - (block.getID() - kFirstBeamBlock));
        setData(block, data.replace(0, 4, id.getPData(), 4));
    });
    const auto start = std::chrono::steady_clock::now();
    const LoadedProject loaded = load();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(loaded.error, 0);
    ASSERT_EQ(loaded.loaded, kCount);
    EXPECT_EQ(loaded.project.beams().front().id, 1u);
}

TEST_F(ProjectStore, NoticesEveryBitThatFlips) {
    const std::string whole = bytes();
    struct Record {
        const char* what;
        std::size_t start, size, lost;
    };
    const Record records[] = {
        {"counts", kHeaderSize + 136, 12, 0},
        {"beam", whole.find(std::string_view("P5\0", 3)) - 4, 76, 1},
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
