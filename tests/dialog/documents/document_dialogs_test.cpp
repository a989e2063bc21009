// Questions about documents, answered in real dialogs.
#include "toolbox/document_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "document_dialogs.h"
#include "support/temp_folder.h"
#include "support/window_kit.h"
#include "toolbox/controls.h"

using namespace toolbox::testing;

namespace {

void press(HWND dialog, int button) {
    PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

/// Controls of a question lie in it, one below the other.
void expectInside(HWND dialog) {
    RECT client{};
    GetClientRect(dialog, &client);
    LONG below = 0;
    for (const int id : {IDC_DOCUMENT_TEXT, IDC_DOCUMENT_LINES, IDC_DOCUMENT_ANSWER,
                         IDC_DOCUMENT_ANSWER_2, IDC_DOCUMENT_ANSWER_3, int{IDCANCEL}}) {
        const HWND control = GetDlgItem(dialog, id);
        if (!IsWindowVisible(control)) continue;
        RECT area{};
        GetWindowRect(control, &area);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
        EXPECT_GE(area.top, below) << id;
        below = area.bottom;
    }
    EXPECT_LE(below, client.bottom);
    EXPECT_LE(client.bottom - below, 20);
}

struct Dialogs : TvDocumentDialogs {
    std::string asked, given;

  protected:
    CString askName(const RWCString& name) override {
        asked = name.str();
        return CString(given);
    }
};

class DocumentDialogs : public ::testing::Test {
  protected:
    DocumentDialogs() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        TvDocumentFile::setRecoveryFolder(RWCString(folder / "recovery"));
    }
    ~DocumentDialogs() override {
        TvDocumentFile::setRecoveryFolder({});
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    GMSG service;
    TempFolder folder;
    Dialogs dialogs;
};

TEST_F(DocumentDialogs, AskWhatTheirButtonsSay) {
    const RWCString name("C:\\plans\\b\342timent de la mairie, deuxi\350me \351tage.dat");
    TvDocumentHolder holder;
    holder.user = "Zo\351";
    holder.machine = "PC-12";
    holder.age = 7300;
    const std::vector<TvDocumentLoss> losses(40, {.id = 7, .from = 160, .to = 320});
    TvDocumentResult why;
    why.ok = false;
    why.reason = TvDocumentResult::noRight;
    why.name = name;
    TvRecoverable work;
    work.document = name;
    work.saved = 1795354200;
    work.size = 2000;
    RWCString other;
    using D = TvDocumentDecisions;
    const struct {
        const char* what;
        std::function<int()> ask;
        std::vector<int> answers;  // of Escape, then of the buttons
        const char* says;
    } cases[] = {
        {"alive",
         [&] { return dialogs.locked(name, holder, false); },
         {D::CancelLocked, D::OpenReadOnly},
         "in use by Zo\351 (PC-12)"},
        {"elsewhere",
         [&] { return dialogs.locked(name, holder, true); },
         {D::CancelLocked, D::OpenReadOnly, D::TakeOver},
         "last heard of 2 hours ago"},
        {"changed",
         [&] { return dialogs.changedOnDisk(name, other); },
         {D::CancelChanged, D::SaveAs, D::Replace, D::TakeTheirs},
         "has changed this file"},
        {"damaged", [&] { return dialogs.openRescued(name, losses); }, {0, 1}, "What is missing:"},
        {"in place",
         [&] { return dialogs.writeInPlace(name, why); },
         {0, 0, 1},
         "No file can be made beside"},
        {"work",
         [&] { return dialogs.recoverWork(work); },
         {D::Later, D::Recover, D::ThrowAway},
         "2 KB"},
    };
    dialogs.given = "other.dat";
    for (const auto& test : cases)
        for (std::size_t i = 0; i < test.answers.size(); ++i) {
            SCOPED_TRACE(std::string(test.what) + ' ' + std::to_string(i));
            DialogScript script;
            script.run([&](HWND dialog) {
                const std::string text = textOf(dialog, IDC_DOCUMENT_TEXT);
                EXPECT_NE(text.find(name.str()), std::string::npos);
                EXPECT_NE(text.find(test.says), std::string::npos) << text;
                expectInside(dialog);
                EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_DOCUMENT_ANSWER));
                press(dialog,
                      i == 0 ? int{IDCANCEL} : IDC_DOCUMENT_ANSWER - 1 + static_cast<int>(i));
            });
            EXPECT_EQ(test.ask(), test.answers[i]);
        }
    EXPECT_EQ(other, "other.dat");
    EXPECT_EQ(dialogs.asked, name.str());
    dialogs.given = "";
    DialogScript script;
    script.run([](HWND dialog) { press(dialog, IDC_DOCUMENT_ANSWER); });
    EXPECT_EQ(dialogs.changedOnDisk(name, other), D::CancelChanged) << "no other name";
}

TEST_F(DocumentDialogs, TellOnlyWhatThereIsToTell) {
    TvDocumentResult result;
    EXPECT_TRUE(dialogs.tell(result));
    result.ok = false;
    result.reason = TvDocumentResult::cancelled;
    EXPECT_FALSE(dialogs.tell(result));
    result.reason = TvDocumentResult::diskFull;
    result.name = "plan.dat";
    DialogScript script;
    script.run([](HWND box) {
        EXPECT_NE(textOf(box, 0xFFFF).find("plan.dat: the disk is full."), std::string::npos);
        press(box, IDOK);
    });
    EXPECT_FALSE(dialogs.tell(result));
    result.reason = TvDocumentResult::damaged;
    script.run([](HWND dialog) { press(dialog, IDCANCEL); });
    EXPECT_FALSE(dialogs.openRescued(result.name, {}));
    EXPECT_FALSE(dialogs.tell(result)) << "without a second box";
}

struct Number : TvDocumentContent {
    int value = 0;
    int write(TarvFileWrite& file) override {
        TarvBlocFile block;
        block.setID(1);
        block << value;
        return file.writeBloc(block);
    }
    int read(TarvFileRead& file) override {
        TarvBlocFile block;
        if (!file.getBloc(1, block)) return NotRead;
        block >> value;
        return Done;
    }
};

TEST_F(DocumentDialogs, ListUnsavedWork) {
    for (const int value : {1, 2, 3}) {
        Number number;
        TvDocumentFile document(number);
        number.value = value;
        document.edited();
        ASSERT_TRUE(document.autosave());
    }
    std::vector<TvRecoverable> works = TvDocumentFile::recoverable();
    ASSERT_EQ(works.size(), 3u);
    works[1].whole = false;
    TvRecoveryDialog dialog(works);
    const auto select = [](HWND window, const std::vector<int>& rows) {
        TvListView list;
        list.attach(window, IDC_RECOVERY_LIST);
        list.selectRow(TvListView::kEveryRow, false);
        for (const int row : rows) list.selectRow(row);
    };
    const auto isEnabled = [](HWND window, int id) {
        return IsWindowEnabled(GetDlgItem(window, id)) != 0;
    };
    DialogScript script;
    script
        .run([&](HWND window) {
            EXPECT_TRUE(isEnabled(window, IDC_RECOVERY_RECOVER));
            select(window, {1});
            EXPECT_FALSE(isEnabled(window, IDC_RECOVERY_RECOVER)) << "damaged";
            select(window, {});
            EXPECT_FALSE(isEnabled(window, IDC_RECOVERY_DELETE));
            select(window, {0});
            press(window, IDC_RECOVERY_DELETE);
        })
        .run([](HWND box) { press(box, IDYES); })
        .waitUntil("one less", [&](HWND) { return dialog.works().size() == 2; })
        .run([&](HWND window) {
            select(window, {0, 1});
            press(window, IDC_RECOVERY_RECOVER);
        });
    EXPECT_EQ(dialog.run(nullptr), 1);
    ASSERT_EQ(dialog.chosen().size(), 1u) << "the one that is whole";
    EXPECT_EQ(dialog.chosen()[0].state, works[2].state);
    EXPECT_EQ(TvDocumentFile::recoverable().size(), 2u);
    Number number;
    TvDocumentFile document(number);
    EXPECT_TRUE(document.recover(dialog.chosen()[0]));
    EXPECT_NE(number.value, 0);
    document.close();
}

}  // namespace
