// The system's dialogs for files and folders as a user meets them.
#include "toolbox/pickers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/owner_fixture.h"
#include "support/settings_fixture.h"
#include "toolbox/windowing.h"
// Needs the declarations of the system first.
#include <objbase.h>

namespace {

using namespace toolbox;
using namespace toolbox::testing;

constexpr unsigned short kFilters = 1;

class Pickers : public SettingsFixture {
  protected:
    Pickers() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(profileHolding("")));
        dialog_.setFolder(folder_.path());
        EXPECT_EQ(dialog_.setFilter("Projects|*.tbf|Drawings"), 0) << "an odd list";
        EXPECT_EQ(dialog_.setFilter(kFilters), 1);
        dialog_.setDefaultExtension(".tbf");
    }
    ~Pickers() override {
        GMSG::language = GMSG::French;
        GMSG::setUseRegistry(1);
        GMSG::destroyStaticVars();
        DestroyWindow(owner_);
    }
    [[nodiscard]] CString inFolder(const char* name) const { return CString(folder_ / name); }

    HWND owner_ = makeOwner();
    TvFileDialog dialog_{"project"};
};

BOOL CALLBACK takeVisibleEdit(HWND window, LPARAM found) {
    if (!isOfClass(window, "Edit") || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// Where the name is typed; null in other dialogs.
HWND nameField(HWND dialog) {
    HWND field = nullptr;
    EnumChildWindows(dialog, takeVisibleEdit, reinterpret_cast<LPARAM>(&field));
    return field;
}

void enterName(HWND dialog, const std::string& name) {
    SendMessageA(nameField(dialog), EM_LIMITTEXT, name.size() + 1, 0);
    EXPECT_TRUE(SetWindowTextA(nameField(dialog), name.c_str()));
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

void cancel(HWND dialog) {
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

TEST_F(Pickers, OpenAFileAndRememberWhereItWas) {
    folder_.write("plan.tbf", "");
    const std::string current = platform::current().files->currentFolder();
    {
        DialogScript script;
        script.run([&](HWND dialog) {
            EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner_);
            EXPECT_FALSE(IsWindowEnabled(owner_));
            enterName(dialog, "plan");
        });
        ASSERT_EQ(dialog_.open(owner_), 1);
    }
    EXPECT_EQ(dialog_.getFiles(), std::vector<CString>{inFolder("plan.tbf")});
    EXPECT_EQ(dialog_.getOutcome(), PickOutcome::chosen);
    EXPECT_TRUE(IsWindowEnabled(owner_));
    EXPECT_EQ(platform::current().files->currentFolder(), current);

    TvFileDialog other("project");
    {
        DialogScript script;
        script.run([](HWND dialog) { enterName(dialog, "plan.tbf"); });
        EXPECT_EQ(other.open(owner_), 1) << "in the folder remembered";
    }
    DialogScript script;
    script.run(cancel);
    EXPECT_EQ(other.open(owner_), 0);
    EXPECT_EQ(other.getOutcome(), PickOutcome::cancelled);
    EXPECT_EQ(other.getFile(), inFolder("plan.tbf"));
    EXPECT_TRUE(other.getFiles().empty());
}

TEST_F(Pickers, SaveUnderACompletedNameAndAskBeforeTheyReplace) {
    folder_.write("plan.tbf", "kept");
    DialogScript script;
    script
        .run([&](HWND dialog) {
            EXPECT_EQ(textOf(nameField(dialog)), "draft");
            enterName(dialog, "plan");
        })
        .waitUntil("the question", [&](HWND box) { return !nameField(box); })
        .run([&](HWND box) {
            EXPECT_EQ(focusedControl(), IDNO);
            PostMessageA(box, WM_COMMAND, IDNO, 0);
        })
        .waitUntil("the dialog again",
                   [](HWND dialog) { return textOf(nameField(dialog)) == "plan.tbf"; })
        .run([](HWND dialog) { enterName(dialog, "Project 1.2"); });
    dialog_.setFile("draft");
    EXPECT_EQ(dialog_.save(owner_), 1);
    EXPECT_EQ(dialog_.getFile(), inFolder("Project 1.2.tbf"));
    EXPECT_EQ(folder_.read("plan.tbf"), "kept");
}

TEST_F(Pickers, OpenThousandsOfFiles) {
    constexpr int kFiles = 1500;
    std::string names;  // of a type that the dialog does not list: that would take long
    for (int i = 0; i < kFiles; ++i) {
        const std::string name = "a rather long name of measured values " + std::to_string(i);
        folder_.write(name + ".dat", "");
        names += '"' + name + ".dat\" ";
    }
    DialogScript script;
    script.run([&](HWND dialog) { enterName(dialog, names); });
    ASSERT_EQ(dialog_.openSeveral(owner_), 1);
    ASSERT_EQ(dialog_.getFiles().size(), std::size_t{kFiles});
    EXPECT_EQ(dialog_.getFiles().back(),
              inFolder("a rather long name of measured values 1499.dat"));
}

TEST_F(Pickers, MakeTheRestOfTheProgramWaitAndSurviveWhatIsDeletedMeanwhile) {
    auto frame =
        std::make_unique<MDI>(GetModuleHandleA(nullptr), nullptr, MDI::ConstructInfo(), nullptr);
    frame->registerModeless(owner_);
    auto dialog = std::make_unique<TvFileDialog>();
    TvFileDialog* const plain = dialog.get();
    for (const bool deletes : {false, true}) {
        DialogScript script;
        script.run([&](HWND window) {
            EXPECT_FALSE(IsWindowEnabled(owner_));
            EXPECT_TRUE(frame->isAcceleratorFrozen());
            EXPECT_EQ(dialog->open(nullptr), 0) << "a second time";
            EXPECT_EQ(dialog->getReason(), "It is open already.");
            if (deletes) {
                dialog.reset();
                frame.reset();
            }
            cancel(window);
        });
        EXPECT_EQ(plain->open(owner_), 0);
        EXPECT_TRUE(IsWindowEnabled(owner_));
        EXPECT_TRUE(!frame || !frame->isAcceleratorFrozen());
    }
}

TEST_F(Pickers, ChooseAFolderAndLeaveNothingOfCom) {
    const std::string start = inFolder("gone\\deeper").str();
    DialogScript script;
    script.run([&](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDOK, 0); });
    script.run(cancel);
    TvFolderDialog dialog("export");
    dialog.setFolder(start);
    EXPECT_EQ(dialog.run(owner_), 1);
    EXPECT_EQ(dialog.getFolder(), folder_.path());
    RWCString remembered;
    GMSG::getProfile("Folders", "export", remembered, "");
    EXPECT_EQ(remembered, folder_.path());

    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK) << "COM is not in use";
    EXPECT_EQ(dialog.run(owner_), 0) << "shown all the same";
    EXPECT_EQ(dialog.getOutcome(), PickOutcome::cancelled);
    CoUninitialize();
}

}  // namespace
