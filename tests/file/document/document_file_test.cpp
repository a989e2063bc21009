// Documents: opening, saving, and what others do to the file meanwhile.
#include <gtest/gtest.h>

#include <filesystem>

#include "file/document/plan_kit.h"
#include "support/faulty_files.h"
#include "support/text_fakes.h"

using namespace plan_kit;
using Result = TvDocumentResult;

namespace {

class DocumentFile : public testing::Test {
  protected:
    TempFolder folder;
    TempFolder recovery;
    toolbox::testing::RecordingPrompt prompt;
    std::string name = folder / "plan.dat";

    void SetUp() override { TvDocumentFile::setRecoveryFolder(RWCString(recovery.path())); }
    void TearDown() override {
        TvDocumentFile::setRecoveryFolder({});
        EXPECT_TRUE(prompt.boxes.empty()) << prompt.boxes.front().text;
    }
    /// A file of other work, as another program writes it.
    void put(const std::string& text, const std::string& where) const {
        Plan plan(text);
        TvDocumentFile file(plan);
        file.setGenerations(0);
        ASSERT_TRUE(file.saveAs(RWCString(where))) << file.saveAs(RWCString(where)).text();
    }
    /// Replaces the document without taking notice of locks.
    void replaceByOther(const std::string& text) const {
        put(text, folder / "other.tmp");
        std::filesystem::rename(folder / "other.tmp", name);
    }
    void damage(std::size_t from, std::size_t bytes) const {
        std::fstream file(name, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(from));
        file << std::string(bytes, '#');
    }
};

TEST_F(DocumentFile, KeepsWhatWasSavedAndItsOlderVersions) {
    Desk desk;
    EXPECT_EQ(desk->save().reason, Result::noName);
    EXPECT_EQ(desk->isChanged(), 0);
    desk.edit("one.");
    ASSERT_TRUE(desk->saveAs(RWCString(name)));
    EXPECT_EQ(desk->isChanged(), 0);
    desk->setGenerations(3);
    for (const char* text : {"two.", "3...", "4...", "5..."}) {
        desk.edit(text);
        EXPECT_TRUE(desk->save().text().isNull());
    }
    EXPECT_EQ(desk->hasLock(), 1);
    EXPECT_EQ(textIn(name), "5...");
    EXPECT_EQ(textIn(folder / "plan.bak"), "4...");
    EXPECT_EQ(textIn(folder / "plan.bak2"), "3...");
    EXPECT_EQ(textIn(folder / "plan.bak3"), "two.");
    EXPECT_FALSE(std::filesystem::exists(folder / "plan.bak4"));
    EXPECT_TRUE(desk->close());
    EXPECT_EQ(folder.names(),
              (std::vector<std::string>{"plan.bak", "plan.bak2", "plan.bak3", "plan.dat"}));

    ASSERT_TRUE(desk->open(RWCString(folder / "plan.bak2")));
    EXPECT_EQ(desk.plan.text, "3...");
    EXPECT_EQ(desk->open(RWCString(name)).reason, Result::alreadyOpen);
    EXPECT_TRUE(desk->copyTo(RWCString(folder / "copy\351.dat")));
    EXPECT_EQ(desk->getName().str(), folder / "plan.bak2");
    EXPECT_EQ(textIn(folder / "copy\351.dat"), "3...");
}

TEST_F(DocumentFile, IsReadOnlyForTheSecond) {
    put("mine", name);
    Desk first;
    ASSERT_TRUE(first->open(RWCString(name)));
    Desk second;
    const Result opened = second->open(RWCString(name));
    EXPECT_TRUE(opened);
    EXPECT_EQ(opened.reason, Result::inUse);
    ASSERT_TRUE(opened.holder);
    EXPECT_TRUE(opened.holder->onThisMachine);
    EXPECT_EQ(second.answers.asked, "L");
    EXPECT_FALSE(second.answers.mayTakeOver);
    EXPECT_EQ(second.plan.text, "mine");
    EXPECT_EQ(second->isReadOnly(), 1);
    second.edit("ours");
    EXPECT_EQ(second->save().reason, Result::documentReadOnly);
    EXPECT_EQ(second->saveAs(RWCString(name)).reason, Result::inUse);
    EXPECT_TRUE(second->autosave()) << "in the recovery folder";
    EXPECT_TRUE(second->saveAs(RWCString(folder / "copy.dat")));
    EXPECT_EQ(second->isReadOnly(), 0);
    first->close();
    EXPECT_EQ(textIn(name), "mine");

    Desk cancelled;
    cancelled.answers.onLocked = Answers::CancelLocked;
    EXPECT_EQ(cancelled->open(RWCString(folder / "copy.dat")).reason, Result::inUse);
    EXPECT_TRUE(cancelled->getName().isNull());
}

TEST_F(DocumentFile, AsksBeforeItReplacesWhatAnotherWrote) {
    struct Case {
        Answers::Changed answer;
        Result::Reason reason;
        const char* here;     // in the file afterwards
        const char* content;  // in the application
    };
    for (const Case& each : {Case{Answers::CancelChanged, Result::changedOnDisk, "them", "mine"},
                             Case{Answers::Replace, Result::done, "mine", "mine"},
                             Case{Answers::TakeTheirs, Result::done, "them", "them"},
                             Case{Answers::SaveAs, Result::done, "them", "mine"}}) {
        put("old.", name);
        Desk desk;
        desk.answers.onChanged = each.answer;
        desk.answers.other = RWCString(folder / "mine.dat");
        ASSERT_TRUE(desk->open(RWCString(name)));
        EXPECT_EQ(desk->changedOnDisk(), TvDocumentFile::SameOnDisk);
        const auto time = std::filesystem::last_write_time(name);
        replaceByOther("them");
        std::filesystem::last_write_time(name, time);
        EXPECT_EQ(desk->changedOnDisk(), TvDocumentFile::OtherOnDisk) << "times tell nothing";
        desk.edit("mine");
        EXPECT_EQ(desk->save().reason, each.reason);
        EXPECT_EQ(desk.answers.asked, "C");
        desk.answers.onChanged = Answers::CancelChanged;
        EXPECT_EQ(desk.plan.text, each.content);
        const bool moved = each.answer == Answers::SaveAs;
        EXPECT_TRUE(!moved || textIn(folder / "mine.dat") == "mine");
        const bool replaced = each.answer == Answers::Replace;
        EXPECT_TRUE(!replaced || textIn(folder / "plan.bak") == "them");
        if (each.reason == Result::done) {
            EXPECT_EQ(desk->isChanged(), 0);
            EXPECT_EQ(desk->changedOnDisk(), TvDocumentFile::SameOnDisk);
        }
        desk->close();
        EXPECT_EQ(textIn(name), each.here);
    }
}

TEST_F(DocumentFile, LooksOnceMoreImmediatelyBeforeTheRename) {
    put("old.", name);
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    FaultyFiles calls;
    enum { before, backedUp, replaced } now = before;
    // After the first look and the backup: at the open of the last look.
    calls.before = [&](FileCall call, int) {
        if (call == FileCall::open && now == backedUp) {
            now = replaced;
            replaceByOther("them");
        }
        if (call == FileCall::replace && now == before) now = backedUp;
    };
    desk.edit("mine");
    EXPECT_EQ(desk->save().reason, Result::changedOnDisk);
    EXPECT_EQ(desk.answers.asked, "C");
    EXPECT_EQ(textIn(name), "them");
    EXPECT_EQ(desk->isChanged(), 1);
}

TEST_F(DocumentFile, IsMissedWhenItIsGoneAndComesBackWithASave) {
    put("old.", name);
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    std::filesystem::remove(name);
    EXPECT_EQ(desk->changedOnDisk(), TvDocumentFile::GoneFromDisk);
    EXPECT_TRUE(desk->save());
    EXPECT_EQ(textIn(name), "old.");
    desk->close();
    EXPECT_EQ(desk->open(RWCString(folder / "none.dat")).reason, Result::notThere);
    EXPECT_EQ(desk->open(RWCString(folder / "none/a.dat")).reason, Result::folderGone);
    desk.edit("new.");
    EXPECT_EQ(desk->saveAs(RWCString(folder / "none/a.dat")).reason, Result::folderGone);
    EXPECT_EQ(desk->isChanged(), 1);
}

TEST_F(DocumentFile, TellsWhyASaveFailedAndKeepsTheFile) {
    struct Case {
        FileCall call;
        toolbox::platform::ErrorCode error;
        Result::Reason reason;
    };
    for (const Case& each :
         {Case{FileCall::createLike, ERROR_ACCESS_DENIED, Result::noRight},
          Case{FileCall::createLike, ERROR_WRITE_PROTECT, Result::mediumReadOnly},
          Case{FileCall::write, ERROR_DISK_FULL, Result::diskFull},
          Case{FileCall::flush, ERROR_WRITE_FAULT, Result::deviceFailed},
          Case{FileCall::readAt, ERROR_READ_FAULT, Result::deviceFailed},
          Case{FileCall::replace, ERROR_PATH_NOT_FOUND, Result::folderGone}}) {
        put("old.", name);
        Desk desk;
        desk->setGenerations(0);
        ASSERT_TRUE(desk->open(RWCString(name)));
        desk.edit("new.");
        {
            FaultyFiles faults;
            faults.fail(each.call, 1, each.error, true);
            const Result result = desk->save();
            EXPECT_FALSE(result);
            EXPECT_EQ(result.reason, each.reason);
            EXPECT_EQ(result.code, each.error);
            EXPECT_FALSE(result.text().isNull());
        }
        EXPECT_EQ(desk->isChanged(), 1);
        EXPECT_EQ(textIn(name), "old.");
        EXPECT_TRUE(desk->save()) << "what failed is no obstacle for the next";
        EXPECT_EQ(textIn(name), "new.");
        desk->close();
        EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
    }
}

TEST_F(DocumentFile, SavesThoughTheBackupFailsAndSaysSo) {
    put("old.", name);
    std::filesystem::create_directory(folder / "plan.bak");  // no file can take its place
    std::ofstream(folder / "plan.bak/x") << 'x';
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    desk.edit("new.");
    const Result result = desk->save();
    EXPECT_TRUE(result);
    EXPECT_NE(result.backup, 0u);
    EXPECT_FALSE(result.text().isNull());
    EXPECT_EQ(textIn(name), "new.");
}

TEST_F(DocumentFile, RescuesADamagedFileAndKeepsIt) {
    put("one.two.thr.", name);
    const std::size_t second = folder.read("plan.dat").find("two.");
    damage(second - 8, 12);
    Desk desk;
    Result result = desk->open(RWCString(name));
    EXPECT_EQ(result.reason, Result::damaged);
    EXPECT_FALSE(result.missing.empty());
    EXPECT_TRUE(desk->getName().isNull());
    desk.answers.onDamaged = 1;
    result = desk->open(RWCString(name));
    EXPECT_TRUE(result);
    EXPECT_EQ(desk.plan.text, "one.thr.");
    EXPECT_EQ(desk.plan.lost.size(), result.missing.size());
    EXPECT_EQ(desk->isChanged(), 1);
    EXPECT_EQ(desk.answers.asked, "DD");
    const std::string before = folder.read("plan.dat");
    result = desk->save();
    ASSERT_TRUE(result);
    ASSERT_FALSE(result.kept.isNull());
    EXPECT_EQ(folder.read(result.kept.str().substr(folder.path().size() + 1)), before);
    EXPECT_EQ(textIn(name), "one.thr.");

    std::ofstream(folder / "text.txt") << "no block file at all";
    desk->close();
    EXPECT_EQ(desk->open(RWCString(folder / "text.txt"), TvDocumentFile::Rescued).reason,
              Result::notADocument);
    desk.plan.reads = TvDocumentContent::NewerVersion;
    EXPECT_EQ(desk->open(RWCString(name)).reason, Result::newerVersion);
    EXPECT_EQ(desk->hasLock(), 0);
}

#if !defined(_WIN32)
TEST_F(DocumentFile, ReadsInAReadOnlyFolderAndWritesInPlaceOnlyWhenAsked) {
    namespace fs = std::filesystem;
    put("old.", name);
    Desk desk;
    FaultyFiles faults;  // the user of tests may write everywhere
    faults.fail(FileCall::createLike, 1, ERROR_ACCESS_DENIED, true);
    ASSERT_TRUE(desk->open(RWCString(name)));
    EXPECT_EQ(desk->hasLock(), 0);
    EXPECT_EQ(desk->isReadOnly(), 0);
    desk.edit("new.");
    EXPECT_EQ(desk->save().reason, Result::noRight);
    EXPECT_EQ(desk.answers.asked, "P");
    EXPECT_EQ(textIn(name), "old.");
    desk.answers.onInPlace = 1;
    desk.answers.before = [&] { faults.fail(FileCall::createLike, 0, 0); };
    EXPECT_TRUE(desk->save());
    EXPECT_EQ(textIn(name), "new.");
    EXPECT_EQ(desk->isChanged(), 0);
    EXPECT_TRUE(recovery.names().empty()) << "the state is gone with the save";
}
#endif

TEST_F(DocumentFile, SurvivesCallbacksThatDestroyIt) {
    put("old.", name);
    struct Case {
        const char* what;
        std::function<void(Desk&)> act;
    };
    const std::vector<Case> acts = {{"destroy", [](Desk& desk) { desk.file.reset(); }},
                                    {"close", [](Desk& desk) { desk->close(); }}};
    for (const Case& each : acts) {
        for (const std::string step : {"open", "save", "autosave", "asked"}) {
            SCOPED_TRACE(each.what + (" in " + step));
            Desk desk;
            if (step == "open") desk.plan.onRead = [&] { each.act(desk); };
            Result result = desk->open(RWCString(name));
            if (step != "open") {
                ASSERT_TRUE(result);
                desk.edit("new.");
                (step == "asked" ? desk.answers.before : desk.plan.onWrite) = [&] {
                    each.act(desk);
                };
                if (step == "asked") replaceByOther("old.other...");
                result = step == "autosave" ? desk->autosave() : desk->save();
                if (step == "asked") replaceByOther("old.");
            }
            EXPECT_EQ(result.reason, Result::closed);
            EXPECT_EQ(textIn(name), "old.");
            EXPECT_TRUE(TvDocumentFile::recoverable({RWCString(name)}).empty());
        }
    }
    Desk desk;
    ASSERT_TRUE(desk->open(RWCString(name)));
    Result inner;
    desk.plan.onWrite = [&] { inner = desk->save(); };
    EXPECT_TRUE(desk->save());
    EXPECT_EQ(inner.reason, Result::busy);
}

TEST_F(DocumentFile, SaysInBothLanguagesWhatHappenedAndWhatToDo) {
    Result result;
    result.ok = false;
    result.reason = Result::diskFull;
    result.name = "a.dat";
    const auto language = GMSG::language;
    GMSG::language = GMSG::English;
    EXPECT_EQ(result.text().str(),
              "a.dat: the disk is full. The file is unchanged; the document stays open. Free some "
              "space or save it on another disk.");
    GMSG::language = GMSG::French;
    EXPECT_EQ(result.text().str(),
              "a.dat\240: le disque est plein. Le fichier est inchang\351\240; le document reste "
              "ouvert. Lib\351rez de la place ou enregistrez-le sur un autre disque.");
    for (int reason = Result::cancelled; reason <= Result::other; ++reason) {
        result.reason = static_cast<Result::Reason>(reason);
        for (const auto each : {GMSG::English, GMSG::French}) {
            GMSG::language = each;
            EXPECT_GT(result.text().length(), 10u) << reason;
            EXPECT_EQ(result.text().str().find('%'), std::string::npos) << reason;
        }
    }
    GMSG::language = language;
}

}  // namespace
