// The system's dialogs for files and folders as a user meets them.
#include "toolbox/pickers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/settings_fixture.h"
#include "support/window_kit.h"
#include "toolbox/diagnostics.h"
#include "toolbox/windowing.h"
// Needs the declarations of the system first.
#include <objbase.h>

namespace {

using namespace toolbox;
using namespace toolbox::testing;

enum Texts : unsigned short { kFilters = 1, kOddFilters = 2 };

class Pickers : public SettingsFixture {
  protected:
    Pickers()
        : owner_(CreateWindowA("STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 400,
                               nullptr, nullptr, nullptr, nullptr)) {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(profileHolding("")));
        dialog_.setFolder(folder_.path());
        dialog_.setFilter(kFilters);
        dialog_.setDefaultExtension(".tbf");
    }
    ~Pickers() override {
        GMSG::language = GMSG::French;
        GMSG::setUseRegistry(1);
        GMSG::destroyStaticVars();
        DestroyWindow(owner_);
    }
    [[nodiscard]] CString inFolder(const char* name) const { return CString(folder_ / name); }

    HWND owner_;
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
    dialog_.setTitle("Open a project");
    {
        DialogScript script;
        script.run([&](HWND dialog) {
            EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner_);
            EXPECT_FALSE(IsWindowEnabled(owner_));
            EXPECT_EQ(textOf(dialog), "Open a project");
            enterName(dialog, "plan");
        });
        ASSERT_EQ(dialog_.open(owner_), 1);
    }
    EXPECT_EQ(dialog_.getFile(), inFolder("plan.tbf"));
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
    EXPECT_EQ(other.getFile(), inFolder("plan.tbf"));
    DialogScript script;
    script.run(cancel);
    EXPECT_EQ(other.open(owner_), 0);
    EXPECT_EQ(other.getOutcome(), PickOutcome::cancelled);
    EXPECT_EQ(other.getFile(), inFolder("plan.tbf"));
    EXPECT_TRUE(other.getFiles().empty());
}

TEST_F(Pickers, SaveUnderACompletedNameAndAskBeforeTheyReplace) {
    folder_.write("plan.tbf", "kept");
    HWND form = nullptr;
    DialogScript script;
    script
        .run([&](HWND dialog) {
            form = dialog;
            EXPECT_EQ(textOf(nameField(dialog)), "draft");
            enterName(dialog, "plan");
        })
        .waitUntil("the question", [&](HWND box) { return box != form; })
        .run([&](HWND box) {
            const std::string question = inFolder("plan.tbf").str() +
                                         "\nThis file exists already. Do you want to replace it?";
            EXPECT_NE(FindWindowExA(box, nullptr, "Static", question.c_str()), nullptr);
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
    EXPECT_EQ(folder_.read("Project 1.2.tbf"), "<none>");
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
    EXPECT_EQ(dialog_.getFile(), inFolder("a rather long name of measured values 0.dat"));
    EXPECT_EQ(dialog_.getFiles().back(),
              inFolder("a rather long name of measured values 1499.dat"));
}

TEST_F(Pickers, TellOfANameThatTheProgramCannotWrite) {
    const std::wstring name = L"\u043f\u043b\u0430\u043d.tbf";
    const std::string folder = folder_.path() + "\\";
    const std::wstring whole = std::wstring(folder.begin(), folder.end()) + name;
    CloseHandle(CreateFileW(whole.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    HWND form = nullptr;
    DialogScript script;
    script
        .run([&](HWND dialog) {
            form = dialog;
            SetWindowTextW(nameField(dialog), name.c_str());
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        })
        .waitUntil("the message", [&](HWND box) { return box != form && !nameField(box); })
        .run([&](HWND box) {
            char text[300] = "";
            GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
            EXPECT_NE(std::string(text).find("????.tbf\nThis name cannot be used"),
                      std::string::npos)
                << text;
            PostMessageA(box, WM_COMMAND, IDOK, 0);
        })
        .waitUntil("the dialog again", [](HWND dialog) { return nameField(dialog); })
        .run(cancel);
    EXPECT_EQ(dialog_.open(owner_), 0);
    EXPECT_EQ(dialog_.getOutcome(), PickOutcome::cancelled);
    EXPECT_TRUE(dialog_.getFiles().empty());
}

TEST_F(Pickers, MakeTheRestOfTheProgramWait) {
    MDI frame(GetModuleHandleA(nullptr), nullptr, {}, nullptr);
    frame.registerModeless(owner_);
    DialogScript script;
    script.run([&](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(owner_));
        EXPECT_TRUE(frame.isAcceleratorFrozen());
        EXPECT_EQ(dialog_.open(nullptr), 0) << "a second time";
        EXPECT_EQ(dialog_.getOutcome(), PickOutcome::notShown);
        EXPECT_EQ(dialog_.getReason(), "It is open already.");
        cancel(dialog);
    });
    EXPECT_EQ(dialog_.open(nullptr), 0);
    EXPECT_EQ(dialog_.getOutcome(), PickOutcome::cancelled);
    EXPECT_TRUE(IsWindowEnabled(owner_));
    EXPECT_FALSE(frame.isAcceleratorFrozen());
    EXPECT_TRUE(frame.getModelessDispatch());
}

TEST_F(Pickers, SurviveWhatIsDeletedMeanwhile) {
    auto dialog = std::make_unique<TvFileDialog>();
    auto frame =
        std::make_unique<MDI>(GetModuleHandleA(nullptr), nullptr, MDI::ConstructInfo(), nullptr);
    DialogScript script;
    script.run([&](HWND window) {
        dialog.reset();
        frame.reset();
        cancel(window);
    });
    TvFileDialog* const plain = dialog.get();
    EXPECT_EQ(plain->open(owner_), 0);
}

std::string traced;

TEST_F(Pickers, RefuseAnOddListOfTypesAndTellTheTrace) {
    const TraceSink before = setTraceSink([](unsigned long, const char* text) { traced = text; });
    const unsigned long mask = CTvTrace::GetCurrentTraceCategoryEnabled();
    CTvTrace::SetCurrentTraceCategoryEnabled(1);
    EXPECT_EQ(dialog_.setFilter(kOddFilters), 0);
    EXPECT_EQ(traced, "No list of file types: Projects|*.tbf|Drawings");
    EXPECT_EQ(dialog_.setFilter("All|*.*"), 1);
    CTvTrace::SetCurrentTraceCategoryEnabled(mask);
    setTraceSink(before);
}

TEST_F(Pickers, ChooseAFolderAndLeaveNothingOfCom) {
    const std::string current = platform::current().files->currentFolder();
    const std::string start = inFolder("gone\\deeper").str();
    DialogScript script;
    script.run([&](HWND dialog) {
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner_);
        EXPECT_NE(FindWindowExA(dialog, nullptr, "Button", "&Make New Folder"), nullptr);
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
    script.run(cancel);
    TvFolderDialog dialog("export");
    dialog.setFolder(start);
    EXPECT_EQ(dialog.run(owner_), 1);
    EXPECT_EQ(dialog.getFolder(), folder_.path());
    EXPECT_EQ(platform::current().files->currentFolder(), current);
    RWCString remembered;
    GMSG::getProfile("Folders", "export", remembered, "");
    EXPECT_EQ(remembered, folder_.path());

    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK) << "COM is not in use";
    EXPECT_EQ(dialog.run(owner_), 0) << "shown all the same";
    EXPECT_EQ(dialog.getOutcome(), PickOutcome::cancelled);
    CoUninitialize();
}

}  // namespace
