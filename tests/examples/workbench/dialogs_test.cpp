// The workbench's own dialogs as a user fills them.
#include "dialogs/dialogs.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

void press(HWND dialog, int button) {
    PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

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

    OpenWorkbench workbench;
    Beam beam;
};

TEST_F(BeamDialogTest, TakesWhatIsTyped) {
    DialogScript script;
    script.run([](HWND) { typeText("Nord"); })
        .waitUntil("name", [](HWND dialog) { return textOf(dialog, IDC_BEAM_NAME) == "Nord"; })
        .run([](HWND dialog) {
            setText(dialog, IDC_BEAM_SPAN, "7,25");
            setText(dialog, IDC_LOAD_POSITION, "7.2");
            setText(dialog, IDC_LOAD_FORCE, "3");
            press(dialog, IDC_LOAD_ADD);
        })
        .run([](HWND dialog) {
            ListView_SetItemState(GetDlgItem(dialog, IDC_BEAM_LOADS), 0, LVIS_SELECTED,
                                  LVIS_SELECTED);
            press(dialog, IDC_LOAD_REMOVE);
        })
        .run([](HWND dialog) { press(dialog, IDOK); });
    Beam expected = beam;  // the rest as it was, to the last digit
    expected.name = "Nord";
    expected.span = 7.25;
    expected.loads = {{3.1, -4}, {7.2, 3}};
    EXPECT_TRUE(edit());
    EXPECT_EQ(beam, expected);
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

}  // namespace
