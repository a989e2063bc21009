// Opening and saving files, and what the user is told about them.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "open_workbench.h"
#include "project/project_store.h"
#include "resources/resource.h"
#include "settings/full_path.h"
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
    [[nodiscard]] std::string bytes() const { return workbench.folder().read("plan.tbf"); }
    [[nodiscard]] Workbench& program() const { return workbench.workbench(); }
    bool open(const std::string& name) const { return program().openFile(CString(name)); }
    /// Answers a message box, which says this.
    static void answer(DialogScript& script, const char* message, int button) {
        script.run([=](HWND box) {
            EXPECT_EQ(textOf(box, 0xFFFF), message);
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
    }
    /// Opens the file with other bytes, after which there is no document for it.
    void expectDamage(const std::string& content, const char* message) {
        workbench.folder().write("plan.tbf", content);
        DialogScript script;
        answer(script, message, IDCANCEL);
        EXPECT_FALSE(open(file));
        EXPECT_EQ(program().documentOf(CString(file)), nullptr);
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
    std::string content = bytes();
    content[content.find("P2")] ^= 1;
    workbench.folder().write("plan.tbf", content);
    DialogScript script;
    answer(script,
           "plan.tbf: damaged file, 3 of 4 items can be read.\n\n"
           "Open what can be read, as a new project?",
           IDYES);
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(workbench.document().fileName().empty());
    EXPECT_EQ(workbench.document().title(), "plan.tbf (recovered)*");
    EXPECT_EQ(workbench.document().project().beams().size(), 2u);
    EXPECT_EQ(workbench.document().project().labels().size(), 1u);
    EXPECT_EQ(bytes(), content);
}

TEST_F(Files, TellWhatIsLeftOfThem) {
    const std::string whole = bytes();
    constexpr std::size_t kCounts = 160, kIndex = 5 * 8 + 148;
    std::string content = whole;
    content.replace(kCounts, 4, 4, '\0');
    content.resize(whole.size() - kIndex);
    expectDamage(content,
                 "plan.tbf: damaged file, 4 items can be read. Their original number is "
                 "unknown.\n\nOpen what can be read, as a new project?");
    content = whole;
    for (std::size_t i = kCounts + 160; i < whole.size() - kIndex; ++i) content[i] = 'x';
    expectDamage(content,
                 "plan.tbf: damaged; no item can be read. The file is unchanged. Try tbfile "
                 "recover.");
}

}  // namespace
