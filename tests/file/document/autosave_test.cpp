// Unsaved work: when it is kept, where, and how it is found again.
#include <gtest/gtest.h>

#include <filesystem>

#include "file/document/plan_kit.h"
#include "support/fake_system.h"
#include "support/faulty_files.h"

using namespace plan_kit;
using Result = TvDocumentResult;

namespace {

class UnsavedWork : public testing::Test {
  protected:
    TempFolder folder;
    TempFolder recovery;
    std::string name = folder / "plan.dat";

    void SetUp() override {
        TvDocumentFile::setRecoveryFolder(RWCString(recovery / "deep/er"));
        Plan plan("old.");
        TvDocumentFile file(plan);
        ASSERT_TRUE(file.saveAs(RWCString(name)));
    }
    void TearDown() override { TvDocumentFile::setRecoveryFolder({}); }

    /// Leaves work on the document, or on one without a name, as a crash does.
    void crash(const std::string& text, bool named = true) const {
        Desk desk;
        ASSERT_TRUE(!named || desk->open(RWCString(name)));
        desk.edit(text);
        ASSERT_TRUE(desk->autosave());
    }
    [[nodiscard]] bool isClean() const {
        const bool here = folder.names() == std::vector<std::string>{"plan.dat"};
        return here && std::filesystem::is_empty(recovery / "deep/er");
    }
};

TEST_F(UnsavedWork, IsKeptAfterEditsOrATimeAndGoneAfterACleanEnd) {
    FakeSystem system;
    system.milliseconds = 0xFFFFFF00;  // the clock turns over
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    desk->setAutosave(3, 10);
    const auto states = [&] { return folder.names().size() - 2; };  // document and lock
    desk.edit("1...");
    desk.edit("2...");
    EXPECT_EQ(desk->idle(), 1);
    EXPECT_EQ(states(), 0u);
    desk.edit("3...");
    EXPECT_EQ(desk->idle(), 1);
    EXPECT_EQ(states(), 1u);
    EXPECT_TRUE(TvDocumentFile::recoverable({RWCString(name)}).empty()) << "it still runs";
    desk.edit("4...");
    system.milliseconds += 9'999;
    int written = 0;
    desk.plan.onWrite = [&] { ++written; };
    EXPECT_EQ(desk->idle(), 1);
    EXPECT_EQ(written, 0);
    system.milliseconds += 1;
    EXPECT_EQ(desk->idle(), 1);
    EXPECT_EQ(desk->idle(), 1);
    EXPECT_EQ(written, 1);
    EXPECT_EQ(textIn(name), "old.");
    desk->close();
    EXPECT_TRUE(isClean());
}

TEST_F(UnsavedWork, IsOfferedAndOpenedAgain) {
    crash("new.");
    crash("bare", false);
    const auto found = TvDocumentFile::recoverable();
    ASSERT_EQ(found.size(), 2u);
    for (const TvRecoverable& work : found) {
        EXPECT_TRUE(work.whole);
        EXPECT_GT(work.size, 160u);
        EXPECT_GT(work.saved, 0);
        Desk desk;
        ASSERT_TRUE(desk->recover(work));
        EXPECT_EQ(desk->getName(), work.document);
        EXPECT_EQ(desk->isChanged(), 1);
        EXPECT_EQ(desk.plan.text, work.document.isNull() ? "bare" : "new.");
        Desk late;
        EXPECT_EQ(late->recover(work).reason, Result::inUse);
        EXPECT_EQ(TvDocumentFile::discard(work), 0);
        if (work.document.isNull()) {
            desk->close();
            continue;
        }
        EXPECT_EQ(textIn(name), "old.") << "recovery writes nothing";
        desk.edit("newer...");
        EXPECT_TRUE(desk->autosave());
        EXPECT_TRUE(desk->save());
    }
    EXPECT_EQ(textIn(name), "newer...");
    EXPECT_TRUE(TvDocumentFile::recoverable({RWCString(name)}).empty());
    std::filesystem::remove(folder / "plan.bak");
    EXPECT_TRUE(isClean());
}

TEST_F(UnsavedWork, IsAskedForWhenItsDocumentIsOpened) {
    for (const auto answer : {Answers::Later, Answers::ThrowAway, Answers::Recover}) {
        crash("new.");
        Desk desk;
        desk.answers.onWork = answer;
        ASSERT_TRUE(desk->open(RWCString(name)));
        EXPECT_EQ(desk.answers.asked, "R");
        EXPECT_EQ(desk.plan.text, answer == Answers::Recover ? "new." : "old.");
        EXPECT_EQ(desk->isChanged(), answer == Answers::Recover ? 1 : 0);
        desk->close();
        const auto left = TvDocumentFile::recoverable();
        EXPECT_EQ(left.size(), answer == Answers::Later ? 1u : 0u);
        for (const TvRecoverable& work : left) EXPECT_EQ(TvDocumentFile::discard(work), 1);
        EXPECT_TRUE(isClean());
    }
}

TEST_F(UnsavedWork, IsFoundWithoutItsRecordAndWhateverTheDatesSay) {
    crash("new.");
    const auto found = TvDocumentFile::recoverable();
    ASSERT_EQ(found.size(), 1u);
    std::filesystem::remove(found[0].record.str());
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(100'000);
    std::filesystem::last_write_time(found[0].state.str(), old);
    EXPECT_TRUE(TvDocumentFile::recoverable().empty());
    const auto beside = TvDocumentFile::recoverable({RWCString(name)});
    ASSERT_EQ(beside.size(), 1u);
    EXPECT_EQ(beside[0].state, found[0].state);
    Desk desk;
    ASSERT_TRUE(desk->recover(beside[0]));
    EXPECT_EQ(desk.plan.text, "new.");
    desk->close();
    EXPECT_TRUE(isClean());
}

TEST_F(UnsavedWork, IsThrownAwayWhenItStandsInTheDocument) {
    crash("old.");
    EXPECT_TRUE(TvDocumentFile::recoverable().empty());
    EXPECT_TRUE(isClean());
}

TEST_F(UnsavedWork, IsListedThoughDamagedAndStopsNothing) {
    crash("new.");
    crash("bare", false);
    const auto found = TvDocumentFile::recoverable();
    ASSERT_EQ(found.size(), 2u);
    std::ofstream(found[0].state.str(), std::ios::binary) << "damaged";
    std::ofstream(recovery / "deep/er/0.unsaved", std::ios::binary) << "damaged";
    std::size_t whole = 0;
    const auto now = TvDocumentFile::recoverable();
    EXPECT_EQ(now.size(), 3u);
    for (const TvRecoverable& work : now) {
        whole += work.whole;
        Desk desk;
        EXPECT_EQ(desk->recover(work).ok, work.whole);
        if (work.whole) desk->close();
        EXPECT_EQ(TvDocumentFile::discard(work), 1);
    }
    EXPECT_EQ(whole, 1u);
    EXPECT_TRUE(isClean());
}

TEST_F(UnsavedWork, GoesToTheRecoveryFolderWhenNothingCanBeMadeBeside) {
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    desk.edit("new.");
    FaultyFiles faults;
    faults.fail(FileCall::createLike, 1, ERROR_ACCESS_DENIED);
    EXPECT_TRUE(desk->autosave());
    EXPECT_EQ(folder.names().size(), 2u);
    desk.edit("last");
    faults.fail(FileCall::createLike, 1, ERROR_DISK_FULL, true);
    EXPECT_EQ(desk->autosave().reason, Result::diskFull);
    EXPECT_EQ(desk->lastAutosave().reason, Result::diskFull);
    faults.fail(FileCall::createLike, 0, 0);
    desk.file.reset();
    const auto found = TvDocumentFile::recoverable();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].document.str(), name);
    Desk again;
    ASSERT_TRUE(again->recover(found[0]));
    EXPECT_EQ(again.plan.text, "new.");
}

}  // namespace
