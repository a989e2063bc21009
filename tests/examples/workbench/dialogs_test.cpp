// The workbench's own dialogs as a user fills them.
#include "dialogs/dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/common_controls.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

void press(HWND dialog, int button) {
    PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

constexpr int kTextOfBox = 0xFFFF;

class BeamDialogTest : public ::testing::Test {
  protected:
    BeamDialogTest() {
        beam.name = "P1";
        beam.section = "IPE 300";
        beam.span = 6.123456789;
        beam.uniform = 12.5;
        beam.loads = {{2, 10}, {3.1, -4}};
    }
    bool edit() { return editBeam(workbench.frame(), workbench.workbench(), beam); }
    /// Puts texts into the fields, presses OK, and expects a refusal over the dialog, which stays
    /// open with that field selected; cancels.
    void expectRefused(const std::vector<std::pair<int, const char*>>& texts, int button,
                       const char* message, int focus) {
        HWND form = nullptr;
        DialogScript script;
        script
            .run([&](HWND dialog) {
                form = dialog;
                for (const auto& [control, text] : texts) setText(dialog, control, text);
                press(dialog, button);
            })
            .waitUntil(message, [&](HWND box) { return box != form; })
            .run([&](HWND box) {
                EXPECT_EQ(GetWindow(box, GW_OWNER), form);
                EXPECT_EQ(textOf(box, kTextOfBox), message);
                press(box, IDOK);
            })
            .waitUntil("focus", [&](HWND) { return focusedControl() == focus; })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        const Beam before = beam;
        EXPECT_FALSE(edit());
        EXPECT_EQ(beam, before);
    }

    OpenWorkbench workbench;
    Beam beam;
};

TEST_F(BeamDialogTest, GivesBackWhatWasNotTouched) {
    const Beam before = beam;
    DialogScript script;
    script
        .run([](HWND dialog) {
            EXPECT_EQ(textOf(dialog, IDC_BEAM_SECTION), "IPE 300");
            EXPECT_EQ(textOf(dialog, IDC_BEAM_SPAN), "6.12346");
            ListView_SetItemState(GetDlgItem(dialog, IDC_BEAM_LOADS), 1, LVIS_SELECTED,
                                  LVIS_SELECTED);
            EXPECT_EQ(textOf(dialog, IDC_LOAD_FORCE), "-4");
        })
        .run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_TRUE(edit());
    EXPECT_EQ(beam, before) << "the digits that are not shown are kept";
}

TEST_F(BeamDialogTest, TakesWhatIsTyped) {
    const auto selectFirstLoad = [](HWND dialog) {
        ListView_SetItemState(GetDlgItem(dialog, IDC_BEAM_LOADS), 0, LVIS_SELECTED, LVIS_SELECTED);
    };
    DialogScript script;
    script.run([](HWND) { typeText("Nord"); })
        .waitUntil("name", [](HWND dialog) { return textOf(dialog, IDC_BEAM_NAME) == "Nord"; })
        .run([](HWND) { pressKey('S', {VK_MENU}); })
        .waitUntil("combo", [](HWND) { return focusedControl() == IDC_BEAM_SECTION; })
        .run([](HWND) { pressKey(VK_DOWN); })
        .run([](HWND dialog) {
            setText(dialog, IDC_BEAM_SPAN, "7,25");
            setText(dialog, IDC_LOAD_POSITION, "7.2");
            pressKey('A', {VK_MENU});
        })
        .waitUntil("force", [](HWND) { return focusedControl() == IDC_LOAD_FORCE; })
        .run([](HWND dialog) {
            setText(dialog, IDC_LOAD_FORCE, "3");
            pressKey(VK_RETURN);  // adds the load
        })
        .waitUntil("the load",
                   [](HWND dialog) {
                       return ListView_GetItemCount(GetDlgItem(dialog, IDC_BEAM_LOADS)) == 3;
                   })
        .run([&](HWND dialog) {
            selectFirstLoad(dialog);
            press(dialog, IDC_LOAD_REMOVE);
        })
        .run([&](HWND dialog) {
            selectFirstLoad(dialog);
            setText(dialog, IDC_LOAD_FORCE, "-5");
            press(dialog, IDC_LOAD_CHANGE);
        })
        .run([](HWND dialog) { press(dialog, IDOK); });
    EXPECT_TRUE(edit());
    Beam expected = beam;
    expected.name = "Nord";
    expected.section = "IPE 330";
    expected.span = 7.25;
    expected.loads = {{3.1, -5}, {7.2, 3}};
    EXPECT_EQ(beam, expected);
}

TEST_F(BeamDialogTest, RefusesWhatABeamCannotBe) {
    const char* const span = "The span must be between 0.5 and 60 m.";
    expectRefused({{IDC_BEAM_NAME, "  "}}, IDOK, "Give the beam a name.", IDC_BEAM_NAME);
    expectRefused({{IDC_BEAM_SPAN, "0.4"}}, IDOK, span, IDC_BEAM_SPAN);
    expectRefused({{IDC_BEAM_SPAN, "6 m"}}, IDOK, "\"6 m\" is not a number.", IDC_BEAM_SPAN);
    expectRefused({{IDC_BEAM_SPAN, ""}}, IDOK, "A number is missing.", IDC_BEAM_SPAN);
    expectRefused({{IDC_BEAM_UNIFORM, "1e5"}}, IDOK,
                  "The uniform load must be between -10000 and 10000 kN/m.", IDC_BEAM_UNIFORM);
    expectRefused({{IDC_BEAM_SPAN, "3"}}, IDOK,
                  "The load at 3.1 m is off the beam, whose span is 3 m.", IDC_BEAM_SPAN);
    expectRefused({{IDC_LOAD_POSITION, "6.2"}, {IDC_LOAD_FORCE, "1"}}, IDC_LOAD_ADD,
                  "The load at 6.2 m is off the beam, whose span is 6.12346 m.", IDC_LOAD_POSITION);
    expectRefused({{IDC_LOAD_POSITION, "1"}, {IDC_LOAD_FORCE, "inf"}}, IDC_LOAD_ADD,
                  "\"inf\" is not a number.", IDC_LOAD_FORCE);
    beam.loads.resize(kLoadsMax, {1, 1});
    expectRefused({{IDC_LOAD_POSITION, "1"}, {IDC_LOAD_FORCE, "1"}}, IDC_LOAD_ADD,
                  "A beam carries at most 10 point loads.", IDC_BEAM_NAME);
    GMSG::language = GMSG::French;
    beam.section = "HEB 200";
    expectRefused({}, IDOK, "Choisissez un profil\351.", IDC_BEAM_SECTION);
}

TEST_F(BeamDialogTest, AsksAboutALoadThatIsNotInTheListYet) {
    for (const auto& [answer, loads] : {std::pair{IDYES, 3u}, {IDNO, 2u}, {IDCANCEL, 2u}}) {
        Beam edited = beam;
        HWND form = nullptr;
        DialogScript script;
        script
            .run([&](HWND dialog) {
                form = dialog;
                setText(dialog, IDC_LOAD_POSITION, "1");
                setText(dialog, IDC_LOAD_FORCE, "1");
                press(dialog, IDOK);
            })
            .waitUntil("question", [&](HWND box) { return box != form; })
            .run([button = answer](HWND box) { press(box, button); });
        if (answer == IDCANCEL)
            script.waitUntil("back", [&](HWND dialog) { return dialog == form; })
                .run([](HWND dialog) { press(dialog, IDCANCEL); });
        EXPECT_EQ(editBeam(workbench.frame(), workbench.workbench(), edited), answer != IDCANCEL);
        EXPECT_EQ(edited.loads.size(), loads) << answer;
    }
}

TEST_F(BeamDialogTest, ShowsHowALabelReadsAndWhatIsWrong) {
    Label label{.beam = workbench.document().put(beam), .text = {}};
    struct Case {
        const char *text, *preview, *problems;
    };
    const Case cases[] = {
        {"$NAME$ : $SECTION$, L = $L$ m", "P1 : IPE 300, L = 6.12 m", ""},
        {"$LL$", "$LL$", "$LL$: no such key.\r\n"},
        {"$L$ and $M", "6.12 and $M", "$M: the closing $ is missing.\r\n"},
        {"$NAME$L$SECTION$", nullptr, "L between two tokens is a key as well: add a space.\r\n"},
        {"$$ $X1$", nullptr, "$$: no such key.\r\n$X1$: no such key.\r\n"},
    };
    DialogScript script;
    script
        .run([&](HWND dialog) {
            for (const Case& c : cases) {
                setText(dialog, IDC_LABEL_TEXT, c.text);
                if (c.preview) {
                    EXPECT_EQ(textOf(dialog, IDC_LABEL_PREVIEW), c.preview);
                }
                EXPECT_EQ(textOf(dialog, IDC_LABEL_PROBLEM), c.problems) << c.text;
            }
            setText(dialog, IDC_LABEL_TEXT, "L = ");
            SendDlgItemMessageA(dialog, IDC_LABEL_TEXT, EM_SETSEL, 4, 4);
            SendDlgItemMessageA(dialog, IDC_LABEL_KEY, CB_SETCURSEL, 2, 0);
            press(dialog, IDC_LABEL_INSERT);
        })
        .waitUntil("the token",
                   [](HWND dialog) { return textOf(dialog, IDC_LABEL_PREVIEW) == "L = 6.12"; })
        .run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_TRUE(editLabel(workbench.frame(), workbench.document(), label));
    EXPECT_EQ(label.text, "L = $L$");
}

TEST_F(BeamDialogTest, MessagesAreShownUntilTheUserClearsThem) {
    {
        DialogScript script;
        script.run([](HWND dialog) {
            EXPECT_EQ(textOf(dialog, IDC_MESSAGES), "one\r\ntwo\r\n");
            press(dialog, IDC_CLEAR);
        });
        EXPECT_TRUE(showMessages(workbench.frame(), workbench.workbench(), "one\ntwo\n"));
    }
    DialogScript script;
    script.run([](HWND dialog) {
        EXPECT_EQ(textOf(dialog, IDC_MESSAGES), "No errors.");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_CLEAR)));
        pressKey(VK_ESCAPE);
    });
    EXPECT_FALSE(showMessages(workbench.frame(), workbench.workbench(), ""));
}

INT_PTR CALLBACK nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

/// A dialog's mnemonics, and the widths of its texts and of what holds them.
void checkControls(HWND dialog) {
    std::string mnemonics;
    const HDC device = GetDC(dialog);
    SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageA(dialog, WM_GETFONT, 0, 0)));
    for (HWND part = GetWindow(dialog, GW_CHILD); part; part = GetWindow(part, GW_HWNDNEXT)) {
        const std::string text = textOf(part);
        const bool isButton = isOfClass(part, "Button");
        if (!isButton && !isOfClass(part, "Static")) continue;
        const std::size_t mark = text.find('&');
        if (mark != std::string::npos)
            mnemonics +=
                static_cast<char>(std::tolower(static_cast<unsigned char>(text[mark + 1])));
        RECT room{}, needed{};
        GetClientRect(part, &room);
        DrawTextA(device, text.c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
        EXPECT_LE(needed.right + (isButton ? 6 : 0), room.right) << text;
    }
    ReleaseDC(dialog, device);
    std::string unique = mnemonics;
    std::ranges::sort(unique);
    EXPECT_EQ(std::ranges::adjacent_find(unique), unique.end()) << mnemonics;
}

TEST_F(BeamDialogTest, HaveRoomForTheirTextsAndOneMnemonicForEach) {
    for (const GMSG::Language language : {GMSG::French, GMSG::English}) {
        GMSG::language = language;
        for (const int dialog :
             {IDD_PALETTE, IDD_BEAM, IDD_LABEL, IDD_KEY_LIST, IDD_MESSAGES, IDD_ABOUT}) {
            const HWND made =
                CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(inLanguage(dialog)),
                                   workbench.frame(), nothing, 0);
            ASSERT_NE(made, nullptr) << dialog;
            checkControls(made);
            DestroyWindow(made);
        }
    }
}

}  // namespace
