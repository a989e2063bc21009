// A program without resources: the library's own dialogs and sentences are found.
#include "format_dialogs.h"
#include "key_list_fixture.h"

namespace {

TEST_F(KeyList, OpensTheFormatDialogOfAProgramWithoutResources) {
    ASSERT_EQ(FindResourceA(nullptr, "DLG_FORMAT_REAL", MAKEINTRESOURCEA(5)), nullptr);
    for (const auto& [language, range, message] :
         {std::tuple{GMSG::English, "2 to 80", "The width must be between 2 and 80."},
          std::tuple{GMSG::French, "de 2 \340 80",
                     "La largeur doit \352tre comprise entre 2 et 80."}}) {
        GMSG::language = language;
        HWND form = nullptr;
        DialogScript script;
        script
            .run([&](HWND window) {
                form = window;
                EXPECT_EQ(textOf(window, IDC_FORMAT_WIDTH_RANGE), range);
                setText(window, IDC_FORMAT_WIDTH, "1");
                pressKey(VK_RETURN);
            })
            .waitUntil("the message", [&](HWND box) { return box != form; })
            .run([&](HWND box) {
                EXPECT_NE(FindWindowExA(box, nullptr, "Static", message), nullptr);
                pressKey(VK_RETURN);
            })
            .waitUntil("the dialog", [&](HWND window) { return window == form; })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        UDKeyData key = manager.getKeyData(4);
        EXPECT_EQ(key.getFormat()->setFormatDlg(owner, key), 0);
    }
}

}  // namespace
