// Opening and saving files, and what the user is told about them.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "full_path.h"
#include "open_workbench.h"
#include "project_store.h"
#include "resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

class Files : public ::testing::Test {
  protected:
    Files() {
        Project project = sampleProject(3, {"IPE 300"});
        project.put(Label{.beam = 1, .text = "$NAME$"});
        EXPECT_EQ(saveProject(project, file.c_str(), TarvDate(2026, 8, 14), {}), 0);
    }
    [[nodiscard]] Workbench& program() const { return workbench.workbench(); }
    bool open(const std::string& name) const { return program().openFile(CString(name)); }
    /// Answers a message box, which says this.
    static void answer(DialogScript& script, const char* message, int button) {
        script.run([=](HWND box) {
            std::string said;
            for (HWND part = GetWindow(box, GW_CHILD); part; part = GetWindow(part, GW_HWNDNEXT))
                if (isOfClass(part, "Static") && !textOf(part).empty()) said = textOf(part);
            EXPECT_EQ(said, message);
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
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
    RWCString recent;
    GMSG::getProfile("Files_opened", "File_1", recent, "");
    EXPECT_TRUE(isSamePath(CString(recent), CString(file))) << recent;
    for (const char* const other : {"PLAN.tbf", ".\\plan.tbf", "none\\..\\plan.TBF"}) {
        ASSERT_TRUE(open(other));
        EXPECT_EQ(&workbench.document(), document) << other;
    }
    ASSERT_TRUE(open(file));
    EXPECT_EQ(&workbench.document(), document);

    workbench.command(CMD_NEW);
    Document& other = workbench.document();
    ASSERT_NE(&other, document);
    for (const GMSG::Language language : {GMSG::English, GMSG::French}) {
        GMSG::language = language;
        DialogScript script;
        answer(script,
               language == GMSG::English
                   ? "Plan.tbf is open in another window. Close it first, or choose another name."
                   : "Plan.tbf est ouvert dans une autre fen\352tre. Fermez-le d'abord, ou "
                     "choisissez un autre nom.",
               IDOK);
        EXPECT_FALSE(other.saveAs("Plan.tbf"));
    }
    EXPECT_TRUE(other.fileName().empty());
    EXPECT_EQ(loadProject(file.c_str(), {}).loaded, 4u);
    EXPECT_TRUE(other.saveAs("second.tbf"));
    EXPECT_EQ(other.fileName(), CString(workbench.folder() / "second.tbf"));
    EXPECT_TRUE(document->saveAs("Plan.tbf")) << "its own";
    SetCurrentDirectoryA(before);
}

}  // namespace
