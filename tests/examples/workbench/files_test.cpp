// Opening and saving files, and what the user is told about them.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "document_dialogs.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

class Files : public ::testing::Test {
  protected:
    Files() {
        Project project = sampleProject(3, {"IPE 300"});
        project.put(Label{.beam = 1, .tag = labelTag("$NAME$", 0, 0)});
        workbench.document().setProject(project);
        EXPECT_TRUE(workbench.document().saveAs(CString(file)));
        closeDocument();
    }
    void closeDocument() const {
        workbench.command(CMD_CLOSE);
        workbench.command(CMD_NEW);
    }
    /// The next question gets the answer with that number, or another button.
    static void choose(DialogScript& script, const std::string& beginning, int button) {
        script.run([=](HWND dialog) {
            EXPECT_EQ(textOf(dialog, IDC_DOCUMENT_TEXT).substr(0, beginning.size()), beginning);
            PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
    }
    [[nodiscard]] std::string bytes() const { return workbench.folder().read("plan.tbf"); }
    bool open(const std::string& name) const {
        return workbench.workbench().openFile(CString(name));
    }
    /// Answers a message box, which says this.
    static void answer(DialogScript& script, const char* message, int button) {
        script.run([=](HWND box) {
            EXPECT_EQ(textOf(box, 0xFFFF), message);
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
    }

    /// Answers a box, whatever it says.
    static void answerAny(DialogScript& script, int button) {
        script.run(
            [=](HWND box) { PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0); });
    }

    OpenWorkbench workbench;
    std::string file = workbench.folder() / "plan.tbf";
};

TEST_F(Files, AreOpenInOneDocumentWhateverTheirNameIs) {
    char before[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof before, before);
    ASSERT_TRUE(SetCurrentDirectoryA(workbench.folder().path().c_str()));
    ASSERT_TRUE(open("plan.tbf"));
    Document* const document = &workbench.document();
    EXPECT_EQ(document->fileName(), CString(file)) << "not a name that goes with the folder";
    for (const std::string& name :
         {std::string("PLAN.tbf"), std::string("none\\..\\plan.TBF"), file}) {
        ASSERT_TRUE(open(name));
        EXPECT_EQ(&workbench.document(), document) << name;
    }
    workbench.command(CMD_NEW);
    Document& other = workbench.document();
    ASSERT_NE(&other, document);
    {
        DialogScript script;
        answer(script,
               "Plan.tbf is open in another window. Close it first, or choose another name.", IDOK);
        EXPECT_FALSE(other.saveAs("Plan.tbf"));
    }
    EXPECT_TRUE(other.fileName().empty());
    EXPECT_EQ(document->project().beams().size(), 3u);
    EXPECT_TRUE(other.saveAs("second.tbf"));
    EXPECT_EQ(other.fileName(), CString(workbench.folder() / "second.tbf"));
    EXPECT_TRUE(document->saveAs("Plan.tbf")) << "its own";
    SetCurrentDirectoryA(before);
}

TEST_F(Files, OpenWhatIsLeftOfADamagedOne) {
    std::string damaged = bytes();
    damaged[damaged.find("P2")] ^= 1;
    workbench.folder().write("plan.tbf", damaged);
    for (const int button : {int{IDCANCEL}, IDC_DOCUMENT_ANSWER}) {
        DialogScript script;
        choose(script, "", button);
        EXPECT_EQ(open(file), button != IDCANCEL);
    }
    EXPECT_EQ(bytes(), damaged);
    EXPECT_EQ(workbench.document().title(), "plan.tbf*");
    EXPECT_EQ(workbench.document().project().beams().size(), 2u);
    EXPECT_EQ(workbench.document().project().labels().size(), 1u);
}

TEST_F(Files, AreHeldByOneProgramAndLookedAtWhenItIsActivated) {
    ASSERT_TRUE(open(file));
    Document& document = workbench.document();
    DialogScript script;
    {
        Document reader(workbench.workbench());
        choose(script, file, IDC_DOCUMENT_ANSWER);
        EXPECT_TRUE(reader.open(CString(file)));
        EXPECT_EQ(reader.title(), "plan.tbf [read-only]");
        answerAny(script, IDOK);
        EXPECT_FALSE(reader.save());
    }
    // Another program writes the file.
    Project project = document.project();
    project.put(Beam{.name = "P9", .section = "IPE 80", .loads = {}});
    workbench.command(CMD_NEW);
    Document& second = workbench.document();
    second.setProject(project);
    ASSERT_TRUE(second.saveAs(CString(workbench.folder() / "other.tbf")));
    workbench.folder().write("plan.tbf", workbench.folder().read("other.tbf"));
    answerAny(script, IDNO);
    document.lookAtDisk();
    document.lookAtDisk();  // asked once
    EXPECT_EQ(document.project().beams().size(), 3u);
    document.put(Beam{.name = "P5", .section = "IPE 80", .loads = {}});
    choose(script, "", IDCANCEL);
    EXPECT_FALSE(document.save());
    EXPECT_TRUE(document.isModified());
    choose(script, "", IDC_DOCUMENT_ANSWER + 2);  // theirs
    EXPECT_TRUE(document.save());
    EXPECT_EQ(document.project().beams().size(), 4u);
    EXPECT_FALSE(document.isModified());
    EXPECT_NE(document.work().results(3), nullptr);
}

TEST_F(Files, GiveUnsavedWorkBack) {
    {
        // As a program that is killed leaves it.
        Document killed(workbench.workbench());
        for (int i = 0; i < 20; ++i)
            killed.put(Beam{.name = "P9", .section = "IPE 80", .x = double(i), .loads = {}});
        killed.idle();
    }
    DialogScript script;
    script.run([](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDC_RECOVERY_RECOVER, 0); });
    workbench.workbench().offerRecovery();
    EXPECT_EQ(workbench.document().project().beams().size(), 20u);
    EXPECT_TRUE(workbench.document().isModified());
    EXPECT_TRUE(workbench.document().fileName().empty());
}

}  // namespace
