// Opening and saving files, and what the user is told about them.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "open_workbench.h"
#include "project/project_store.h"
#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

class Files : public ::testing::Test {
  protected:
    Files() {
        Project project = sampleProject(3, {"IPE 300"});
        project.put(Label{.beam = 1, .tag = labelTag("$NAME$", 0, 0)});
        EXPECT_EQ(saveProject(project, file.c_str(), TarvDate(2026, 8, 14), {}), 0);
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
    EXPECT_EQ(loadProject(file.c_str(), {}).loaded, 4u);
    EXPECT_TRUE(other.saveAs("second.tbf"));
    EXPECT_EQ(other.fileName(), CString(workbench.folder() / "second.tbf"));
    EXPECT_TRUE(document->saveAs("Plan.tbf")) << "its own";
    SetCurrentDirectoryA(before);
}

TEST_F(Files, OpenWhatIsLeftAsANewProject) {
    const std::string whole = bytes();
    std::string damaged = whole, unreadable = whole;
    damaged[damaged.find("P2")] ^= 1;
    // From the first beam to the index.
    std::fill(unreadable.begin() + 320, unreadable.end() - 188, 'x');
    const std::tuple<std::string, const char*, int> cases[] = {
        {unreadable,
         "plan.tbf: damaged; no item can be read. The file is unchanged. Try tbfile recover.",
         IDCANCEL},
        {damaged,
         "plan.tbf: damaged file, 3 of 4 items can be read.\n\n"
         "Open what can be read, as a new project?",
         IDYES}};
    for (const auto& [content, message, button] : cases) {
        workbench.folder().write("plan.tbf", content);
        DialogScript script;
        answer(script, message, button);
        EXPECT_EQ(open(file), button == IDYES);
        EXPECT_EQ(workbench.workbench().documentOf(CString(file)), nullptr);
        EXPECT_EQ(bytes(), content);
    }
    EXPECT_TRUE(workbench.document().fileName().empty());
    EXPECT_EQ(workbench.document().title(), "plan.tbf (recovered)*");
    EXPECT_EQ(workbench.document().project().beams().size(), 2u);
    EXPECT_EQ(workbench.document().project().labels().size(), 1u);
}

}  // namespace
