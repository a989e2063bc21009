// Projects as documents: back as they were, from files of every version, and what is left of
// damaged ones.
#include "project/project_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "support/temp_folder.h"
#include "toolbox/text.h"

namespace {

struct Stored : ProjectContent {
    Project held;

  protected:
    [[nodiscard]] const Project& project() const override { return held; }
    void setProject(Project project) override { held = std::move(project); }
};

/// Opens what is left.
struct Rescuing : TvDocumentDecisions {
    int openRescued(const RWCString&, const std::vector<TvDocumentLoss>&) override { return 1; }
};

std::string oldSum(const std::string& bytes) {
    unsigned sum = 0xFFFFFFFF;
    for (const char byte : bytes)
        for (int bit = 0; bit < 8; ++bit) {
            const bool one = ((static_cast<unsigned>(byte) >> bit) ^ sum) & 1;
            sum = (sum >> 1) ^ (one ? 0xEDB88320 : 0);
        }
    VarRecord record;
    record << static_cast<int>(~sum);
    return {record.getPData(), record.getLen()};
}

/// Of version 1, with the label's fields that it had.
std::string oldLabel(std::uint32_t id, std::uint32_t beam, const TvTag& tag) {
    VarRecord record;
    record << static_cast<int>(id) << static_cast<int>(beam) << tag.anchor.x << tag.anchor.y << 2
           << 0;
    std::string text(tag.text);
    text.resize(128);
    return std::string(record.getPData(), record.getLen()) + text;
}

class ProjectStore : public ::testing::Test {
  protected:
    ProjectStore() {
        GMSG::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportNothing);
        TvDocumentFile::setRecoveryFolder(RWCString(folder / "recovery"));
        TvTag tag = labelTag("$NAME$ : f = $F$ mm", 1.5, -2);
        tag.align = TvAlign::right;
        setFramed(tag, false);
        saved.held = sampleProject(40, {"IPE 300", "IPE 80"});
        for (std::uint32_t beam : {1u, 7u}) saved.held.put(Label{.beam = beam, .tag = tag});
        TvDocumentFile document(saved);
        EXPECT_TRUE(document.saveAs(RWCString(file)));
    }
    ~ProjectStore() override {
        TvDocumentFile::setRecoveryFolder({});
        GMSG::destroyStaticVars();
    }

    using Change = std::function<void(unsigned long id, std::string& data)>;
    /// Writes the file anew as a program of that version did, its records changed.
    void makeOld(unsigned version, const Change& change) const {
        TarvFileRead reader;
        ASSERT_TRUE(reader.open(file.c_str()));
        TarvFileWrite writer;
        ASSERT_TRUE(writer.open(old.c_str()));
        TarvFileHeader header = *reader.getHeader();
        header.setVersion(version);
        writer.setHeader(header);
        std::vector<unsigned long> ids{kProjectBlock};
        for (unsigned i = 0; i < 40; ++i) ids.push_back(kFirstBeamBlock + i);
        for (unsigned i = 0; i < 2; ++i) ids.push_back(kFirstLabelBlock + i);
        for (const unsigned long id : ids) {
            TarvBlocFile block, copy;
            ASSERT_TRUE(reader.getBloc(id, block));
            std::string data(block.getPData(), block.getLen());
            if (version == 1 && id >= kFirstLabelBlock) {
                const Label& label = saved.held.labels()[id - kFirstLabelBlock];
                data = oldLabel(label.id, label.beam, label.tag);
            }
            if (version < kProjectVersion) data += oldSum(data);
            change(id, data);
            copy.setID(id);
            copy.writeString(data.data(), static_cast<unsigned>(data.size()));
            ASSERT_TRUE(writer.writeBloc(copy));
        }
        ASSERT_TRUE(writer.commit() && writer.close());
    }
    TvDocumentResult open(const std::string& name) {
        TvDocumentFile document(loaded, &rescuing);
        TvDocumentResult result = document.open(RWCString(name));
        document.close();
        return result;
    }
    void expectParts(std::size_t beams, std::size_t labels) const {
        EXPECT_EQ(loaded.held.beams().size(), beams);
        EXPECT_EQ(loaded.held.labels().size(), labels);
        EXPECT_EQ(loaded.loaded(), beams + labels);
        for (const Beam& beam : loaded.held.beams()) EXPECT_TRUE(beam == *saved.held.beam(beam.id));
        for (const Label& label : loaded.held.labels())
            EXPECT_TRUE(label == *saved.held.label(label.id));
    }

    GMSG service;
    TempFolder folder;
    std::string file = folder / "frame.tbf", old = folder / "old.tbf";
    Stored saved, loaded;
    Rescuing rescuing;
};

TEST_F(ProjectStore, GivesBackWhatWasSavedByAnyVersion) {
    EXPECT_TRUE(open(file));
    EXPECT_TRUE(loaded.held == saved.held);
    TarvFileRead reader;
    ASSERT_TRUE(reader.open(file.c_str()));
    EXPECT_EQ(reader.getChecksumState(), TarvFileRead::ChecksumsCurrent);
    for (const unsigned version : {1u, 2u}) {
        loaded.held = {};
        makeOld(version, [](unsigned long, std::string&) {});
        EXPECT_TRUE(open(old)) << version;
        EXPECT_TRUE(loaded.held == saved.held) << version;
        EXPECT_TRUE(loaded.created() == saved.created());
    }
}

TEST_F(ProjectStore, RefusesWhatIsNoProjectOfItsVersions) {
    makeOld(kProjectVersion + 1, [](unsigned long, std::string&) {});
    EXPECT_EQ(open(old).reason, TvDocumentResult::newerVersion);
    makeOld(kProjectVersion, [](unsigned long id, std::string& data) {
        if (id == kProjectBlock) data[0] = 39;
    });
    EXPECT_EQ(open(old).reason, TvDocumentResult::notADocument);
    TarvFileWrite writer;
    ASSERT_TRUE(writer.open(old.c_str()) && writer.commit() && writer.close());
    EXPECT_EQ(open(old).reason, TvDocumentResult::notADocument);
    EXPECT_TRUE(loaded.held == Project()) << "it is as it was";
}

TEST_F(ProjectStore, TakesWhatIsIntactOutOfADamagedFile) {
    const std::string whole = folder.read("frame.tbf");
    std::string bytes = whole;
    bytes[bytes.find(std::string("P7\0", 3))] ^= 1;
    folder.write("frame.tbf", bytes);
    const TvDocumentResult result = open(file);
    EXPECT_TRUE(result);
    EXPECT_EQ(result.missing.size(), 1u);
    expectParts(39, 1);  // with its label
    EXPECT_EQ(loaded.expected(), 42u);

    folder.write("frame.tbf", whole);
    // Older files tell nothing of it but in their items.
    const Change changes[] = {[](unsigned long id, std::string& data) {
                                  if (id == kFirstBeamBlock + 4) data[40] ^= 1;
                              },
                              [](unsigned long id, std::string& data) {
                                  if (id != kFirstBeamBlock + 5) return;
                                  data[68] = 9;  // loads that there are not
                                  data.replace(data.size() - 4, 4,
                                               oldSum(data.substr(0, data.size() - 4)));
                              }};
    for (const Change& change : changes) {
        makeOld(2, change);
        EXPECT_EQ(open(old).reason, TvDocumentResult::notADocument);
        EXPECT_TRUE(loaded.isDamaged());
        loaded.allowDamage(true);
        EXPECT_TRUE(open(old));
        loaded.allowDamage(false);
        expectParts(39, 2);
    }
}

}  // namespace
