// The format dialogs as a user sees and types them.
#include "format_dialogs.h"

#include <gtest/gtest.h>

#include <string>

#include "support/window_kit.h"
#include "toolbox/keys.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox::testing;

enum Kind { kInteger, kReal, kString };

template <class Format>
void give(UDKeyData& key, auto... arguments) {
    Format format;
    format.setFormat(arguments...);
    key.setFormat(format);
}

UDKeyData keyOf(Kind kind) {
    UDKeyData key("VOLT");
    key.setDescStr("Tension \340 vide");
    if (kind == kInteger) give<NumberFormat>(key, 7, Right);
    if (kind == kReal) give<RealFormat>(key, 10, 2, Right);
    if (kind == kString) give<StringFormat>(key, 20, Left);
    return key;
}

class FormatDialogs : public ::testing::Test {
  protected:
    FormatDialogs()
        : owner_(CreateWindowA("STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 400,
                               nullptr, nullptr, nullptr, nullptr)) {}
    ~FormatDialogs() override {
        GMSG::language = GMSG::French;
        DestroyWindow(owner_);
    }
    /// Opens the dialog for a key while the script plays.
    int edit(UDKeyData& key) { return key.getFormat()->setFormatDlg(owner_, key); }

    HWND owner_;
};

std::string preview(HWND dialog) {
    return textOf(dialog, IDC_FORMAT_PREVIEW);
}

TEST_F(FormatDialogs, ShowTheKeyInTheCurrentLanguage) {
    struct Case {
        Kind kind;
        GMSG::Language language;
        const char *caption, *preview;
    };
    const Case cases[] = {
        {kInteger, GMSG::English, "Format of an integer - VOLT", "|  -1234|"},
        {kReal, GMSG::French, "Format d'un nombre r\351el - VOLT", "|   1234.57|"},
        {kString, GMSG::English, "Format of a string - VOLT", "|Sample text         |"},
    };
    for (const Case& c : cases) {
        GMSG::language = c.language;
        UDKeyData key = keyOf(c.kind);
        DialogScript script;
        script
            .run([&](HWND dialog) {
                EXPECT_EQ(textOf(dialog), c.caption);
                EXPECT_EQ(textOf(dialog, IDC_FORMAT_DESCRIPTION), "Tension \340 vide");
                EXPECT_EQ(GetDlgItem(dialog, IDC_FORMAT_DECIMALS) != nullptr, c.kind == kReal);
                EXPECT_EQ(preview(dialog), c.preview);
                EXPECT_EQ(focusedControl(), IDC_FORMAT_DESCRIPTION);
                EXPECT_FALSE(IsWindowEnabled(owner_));
            })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
    }
}

TEST_F(FormatDialogs, TakeOverWhatWasTypedWhenEnterIsPressed) {
    UDKeyData key = keyOf(kReal);
    const FormatType* const format = key.getFormat();
    DialogScript script;
    script.run([](HWND) { typeText(" No load \t12\t9"); })
        .waitUntil("a warning",
                   [](HWND dialog) {
                       return textOf(dialog, IDC_FORMAT_WARNING) ==
                                  "L'exemple ne tient pas dans cette largeur." &&
                              textOf(dialog, IDC_FORMAT_DECIMALS_RANGE) == "de 0 \340 10";
                   })
        .run([](HWND) { typeText("\b3"); })
        .waitUntil("preview",
                   [](HWND dialog) {
                       return preview(dialog) == "|    1234.568|" &&
                              textOf(dialog, IDC_FORMAT_WARNING).empty();
                   })
        .run([](HWND) { pressKey('G', {VK_MENU}); })
        .waitUntil("Alt+G", [](HWND dialog) { return preview(dialog) == "|1234.568    |"; })
        .run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_EQ(edit(key), 1);
    EXPECT_EQ(key.saveStringData(), RWCString("|" + std::string(57, ' ') + "No load|  12-   3-L"));
    EXPECT_EQ(key.getFormat(), format);
}

TEST_F(FormatDialogs, RefuseWhatIsOutOfRangeAndFocusItsField) {
    struct Case {
        Kind kind;
        int control;
        const char *text, *message;
    };
    const Case cases[] = {
        {kReal, IDC_FORMAT_WIDTH, "1", "La largeur doit \352tre comprise entre 2 et 80."},
        {kReal, IDC_FORMAT_DECIMALS, "9",
         "Le nombre de d\351cimales doit \352tre compris entre 0 et 8."},
        {kString, IDC_FORMAT_DESCRIPTION, "a|b",
         "La description ne peut pas contenir le caract\350re |."},
        {kString, IDC_FORMAT_WIDTH, "", "La largeur doit \352tre comprise entre 1 et 80."},
    };
    for (const Case& c : cases) {
        UDKeyData key = keyOf(c.kind);
        HWND form = nullptr;
        DialogScript script;
        script
            .run([&](HWND dialog) {
                form = dialog;
                setText(dialog, c.control, c.text);
                EXPECT_EQ(preview(dialog), "");
                SetFocus(GetDlgItem(dialog, IDC_FORMAT_PREVIEW));
                pressKey(VK_RETURN);
            })
            .waitUntil("message", [&](HWND box) { return box != form; })
            .run([&](HWND box) {
                EXPECT_NE(FindWindowExA(box, nullptr, "Static", c.message), nullptr) << c.message;
                pressKey(VK_RETURN);
            })
            .waitUntil("back in the field",
                       [&](HWND dialog) { return dialog == form && focusedControl() == c.control; })
            .run([&](HWND dialog) {
                EXPECT_EQ(textOf(dialog, c.control), c.text);
                pressKey(VK_ESCAPE);
            });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
    }
}

TEST_F(FormatDialogs, OpenOnlyForTheirOwnKind) {
    DialogScript watch;  // closes a dialog that opens all the same
    UDKeyData real = keyOf(kReal);
    UDKeyData none;
    EXPECT_EQ(NumberFormat().setFormatDlg(owner_, real), 0);
    EXPECT_EQ(RealFormat().setFormatDlg(owner_, none), 0);
}

TEST_F(FormatDialogs, AreNamedByTheModuleOfTheWindow) {
    const auto nameIn = [](const char* module) {
        const HWND window = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                          GetModuleHandleA(module), nullptr);
        const RWCString name = RealFormat().getTypeName(window);
        DestroyWindow(window);
        return name;
    };
    EXPECT_TRUE(nameIn(nullptr) == "Nombre r\351el" || nameIn(nullptr) == "Real");
    EXPECT_EQ(nameIn("user32.dll"), "");
}

}  // namespace
