// Modal and modeless dialogs with real keys: what they call, return, and leave of the others.
#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

using DialogTest = DialogFixture;

TEST_F(DialogTest, RunsUntilItIsConfirmedOrCancelled) {
    const struct {
        WORD key;
        int confirms, cancels, result;
        const char* log;
    } cases[] = {{VK_RETURN, 1, 1, 1, "opened confirmed destroyed "},
                 {VK_ESCAPE, 1, 1, 0, "opened cancelled destroyed "},
                 {VK_RETURN, 0, 1, 9, "opened confirmed destroyed "},
                 {VK_ESCAPE, 1, 0, 9, "opened cancelled destroyed "}};
    for (const auto& c : cases) {
        TestDialog dialog;
        dialog.confirms = c.confirms;
        dialog.cancels = c.cancels;
        DialogScript script;
        script.run([&](HWND) { pressKey(c.key); });
        if (c.result == 9)
            script
                .waitUntil("refusal",
                           [&](HWND) { return dialog.log.find("ed ", 8) != std::string::npos; })
                .run([&](HWND) { EXPECT_EQ(dialog.close(9), 1); });
        EXPECT_EQ(dialog.run(owner), c.result) << c.log;
        EXPECT_EQ(dialog.log, c.log);
        EXPECT_EQ(dialog.wasMade(), 1);
        EXPECT_EQ(dialog.isOpen(), 0);
        EXPECT_EQ(dialog.close(1), 0) << "it is closed";
    }
}

}  // namespace
