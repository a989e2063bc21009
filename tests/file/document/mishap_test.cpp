// Disks that fill up, folders that vanish, clocks that are set back, and other programs that write
// the document: at every step.
#include <gtest/gtest.h>

#include "file/document/proof_kit.h"
#include "support/fake_system.h"
#include "support/faulty_files.h"

using namespace proof_kit;
using Result = TvDocumentResult;

namespace {

class Mishap : public testing::Test {
  protected:
    TempFolder folder;
    TempFolder recovery;
    const std::string name = folder / "plan.dat";

    void SetUp() override { TvDocumentFile::setRecoveryFolder(RWCString(recovery.path())); }
    void TearDown() override { TvDocumentFile::setRecoveryFolder({}); }

    void start(const std::string& file, int version) const {
        Plan plan(versionText(version));
        TvDocumentFile document(plan);
        ASSERT_TRUE(document.copyTo(RWCString(file)));
    }
};

constexpr unsigned kStep = kThorough ? 1 : 97;

TEST_F(Mishap, OfADiskThatIsFullLeavesTheOldOrTheNew) {
    start(name, 1);
    bool wasSaved = false;
    unsigned room = 0;
    for (; !wasSaved; room += kStep) {
        SCOPED_TRACE(room);
        {
            FaultyFiles files;
            files.room = room;
            Desk desk;
            ASSERT_TRUE(desk->open(RWCString(name))) << "reading takes no room";
            desk.edit(versionText(2));
            const Result kept = desk->autosave();
            const Result saved = desk->save();
            wasSaved = saved.ok && saved.backup == 0;
            for (const Result& each : {kept, saved})
                EXPECT_EQ(each.reason, each ? Result::done : Result::diskFull);
            EXPECT_EQ(desk->isChanged(), saved ? 0 : 1);
            EXPECT_EQ(versionOf(textIn(name)), saved ? 2 : 1);
            desk->close();
        }
        if (versionOf(textIn(name)) == 2) start(name, 1);
        auto names = folder.names();
        std::erase(names, "plan.bak");
        ASSERT_EQ(names, std::vector<std::string>{"plan.dat"});
        ASSERT_EQ(recovery.names(), std::vector<std::string>{});
        if (HasFailure()) break;
    }
    RecordProperty("bytes", static_cast<int>(room));
}

#if !defined(_WIN32)  // which moves no folder of open files
TEST_F(Mishap, OfAFolderThatVanishesIsToldAndLeavesTheOldOrTheNew) {
    const std::string away = folder / "away", here = folder / "here", file = here + "/plan.dat";
    bool wasMade = true;
    for (int step = 1; wasMade; ++step) {
        SCOPED_TRACE(step);
        std::filesystem::create_directory(here);
        start(file, 1);
        wasMade = false;
        Result saved;
        {
            FaultyFiles files;
            int left = step;
            files.before = [&](FileCall, int) {
                if (--left != 0) return;
                std::filesystem::rename(here, away);
                wasMade = true;
            };
            Desk desk;
            if (desk->open(RWCString(file))) {
                desk.edit(versionText(2));
                (void)desk->autosave();
                saved = desk->save();
                EXPECT_EQ(desk->isChanged(), saved ? 0 : 1);
            }
        }
        if (wasMade) std::filesystem::rename(away, here);
        const int version = versionOf(textIn(file));
        EXPECT_TRUE(version == 1 || version == 2);
        EXPECT_TRUE(version == 2 || !saved || saved.name.isNull());
        Desk desk;
        EXPECT_TRUE(desk->open(RWCString(file)));
        EXPECT_EQ(desk->hasLock(), 1);
        desk->close();
        std::filesystem::remove_all(here);
        for (const TvRecoverable& item : TvDocumentFile::recoverable())
            TvDocumentFile::discard(item);
        if (HasFailure()) break;
    }
}
#endif

TEST_F(Mishap, OfAClockThatIsSetBackHidesNoWork) {
    start(name, 1);
    FakeSystem system;
    system.seconds = 2'000'000'000;
    {
        Desk desk;
        ASSERT_TRUE(desk->open(RWCString(name)));
        system.seconds = 5;
        desk.edit(versionText(2));
        ASSERT_TRUE(desk->autosave());
    }
    std::filesystem::last_write_time(
        name, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1000));
    const auto found = TvDocumentFile::recoverable({RWCString(name)});
    ASSERT_EQ(found.size(), 1u);
    Desk desk;
    ASSERT_TRUE(desk->recover(found[0]));
    EXPECT_TRUE(desk->save());
    EXPECT_EQ(versionOf(textIn(name)), 2);
}

/// Other's version replaces the document before the n-th call of a save, for every n.
TEST_F(Mishap, OfAnotherProgramThatWritesTheDocumentIsNoticed) {
    constexpr int kOurs = 2;
    constexpr int kTheirs = 5;
    bool isReached = true;
    for (int step = 1; isReached; ++step) {
        SCOPED_TRACE(step);
        start(name, 1);
        start(folder / "theirs", kTheirs);
        std::filesystem::remove(folder / "plan.bak");
        Desk desk;
        ASSERT_TRUE(desk->open(RWCString(name)));
        desk.edit(versionText(kOurs));
        isReached = false;
        bool wasMade = false;
        bool wasLookedAt = false;  // after theirs came, and before a rename
        bool mayBeSeen = false;
        Result saved;
        {
            FaultyFiles files;
            int left = step;
            files.before = [&](FileCall call, int) {
                if (--left == 0) {
                    std::error_code refused;  // by Windows, while the document is being read
                    std::filesystem::rename(folder / "theirs", name, refused);
                    wasMade = !refused;
                    isReached = true;
                }
                mayBeSeen = mayBeSeen || (wasMade && call == FileCall::open);
                if (call == FileCall::replace) wasLookedAt = mayBeSeen;
            };
            saved = desk->save();
        }
        const int onDisk = versionOf(textIn(name));
        const int backup = versionOf(textIn(folder / "plan.bak"));
        EXPECT_EQ(onDisk == kOurs || onDisk == kTheirs, true);
        if (!saved) {
            EXPECT_EQ(saved.reason, Result::changedOnDisk);
            EXPECT_EQ(onDisk, kTheirs);
            EXPECT_EQ(desk->isChanged(), 1);
        } else if (wasMade && onDisk == kOurs && backup != kTheirs) {
            EXPECT_FALSE(wasLookedAt) << "only between the last look and the rename";
        }
        desk->close();
        if (HasFailure()) break;
    }
}

}  // namespace
