// The format dialogs as a user sees and types them.
#include "format_dialogs.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

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

bool isChecked(HWND dialog, int control) {
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

bool isSelectedWhole(HWND dialog, int control) {
    DWORD from = 0;
    DWORD to = 0;
    SendDlgItemMessageA(dialog, control, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                        reinterpret_cast<LPARAM>(&to));
    return from == 0 && to == textOf(dialog, control).size();
}

TEST_F(FormatDialogs, ShowTheKeyInTheCurrentLanguage) {
    struct Case {
        Kind kind;
        GMSG::Language language;
        const char *caption, *width, *preview;
    };
    const Case cases[] = {
        {kInteger, GMSG::English, "Format of an integer - VOLT", "7", "|  -1234|"},
        {kReal, GMSG::French, "Format d'un nombre r\351el - VOLT", "10", "|   1234.57|"},
        {kString, GMSG::English, "Format of a string - VOLT", "20", "|Sample text         |"},
    };
    for (const Case& c : cases) {
        GMSG::language = c.language;
        UDKeyData key = keyOf(c.kind);
        DialogScript script;
        script
            .run([&](HWND dialog) {
                EXPECT_EQ(textOf(dialog), c.caption);
                EXPECT_EQ(textOf(dialog, IDC_FORMAT_DESCRIPTION), "Tension \340 vide");
                EXPECT_EQ(textOf(dialog, IDC_FORMAT_WIDTH), c.width);
                EXPECT_EQ(GetDlgItem(dialog, IDC_FORMAT_DECIMALS) != nullptr, c.kind == kReal);
                EXPECT_EQ(isChecked(dialog, IDC_FORMAT_LEFT), c.kind == kString);
                EXPECT_EQ(isChecked(dialog, IDC_FORMAT_RIGHT), c.kind != kString);
                EXPECT_EQ(preview(dialog), c.preview);
                EXPECT_EQ(focusedControl(), IDC_FORMAT_DESCRIPTION);
                EXPECT_TRUE(isSelectedWhole(dialog, IDC_FORMAT_DESCRIPTION));
                EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner_);
                EXPECT_FALSE(IsWindowEnabled(owner_));
            })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
        EXPECT_TRUE(IsWindowEnabled(owner_));
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

TEST_F(FormatDialogs, AreWalkedThroughWithTheTabKey) {
    UDKeyData key = keyOf(kReal);
    std::vector<int> visited;
    DialogScript script;
    script.waitUntil("a whole round", [&](HWND) {
        const int now = focusedControl();
        if (!visited.empty() && visited.back() == now) return false;  // the key is on its way
        visited.push_back(now);
        pressKey(VK_TAB);
        return visited.size() == 8;
    });
    script.run([](HWND) { pressKey(VK_ESCAPE); });
    edit(key);
    EXPECT_EQ(visited, (std::vector{IDC_FORMAT_DESCRIPTION, IDC_FORMAT_WIDTH, IDC_FORMAT_DECIMALS,
                                    IDC_FORMAT_RIGHT, IDC_FORMAT_PREVIEW, IDOK, IDCANCEL,
                                    IDC_FORMAT_DESCRIPTION}));
}

TEST_F(FormatDialogs, ReachEveryFieldByItsMnemonic) {
    constexpr int kFields[] = {IDC_FORMAT_DESCRIPTION, IDC_FORMAT_WIDTH, IDC_FORMAT_DECIMALS,
                               IDC_FORMAT_LEFT,        IDC_FORMAT_RIGHT, IDC_FORMAT_PREVIEW};
    for (const auto& [language, letters] :
         {std::pair{GMSG::French, "DLCGRE"}, std::pair{GMSG::English, "DWELRS"}}) {
        GMSG::language = language;
        UDKeyData key = keyOf(kReal);
        DialogScript script;
        for (const int& field : kFields) {
            const char letter = letters[&field - kFields];
            script.run([](HWND dialog) { SetFocus(GetDlgItem(dialog, IDCANCEL)); })
                .run([=](HWND) { pressKey(static_cast<WORD>(letter), {VK_MENU}); })
                .waitUntil("the field", [&](HWND) { return focusedControl() == field; });
        }
        script.run([](HWND) { pressKey(VK_ESCAPE); });
        EXPECT_EQ(edit(key), 0) << letters;
    }
}

TEST_F(FormatDialogs, RefuseWhatIsOutOfRangeAndFocusItsField) {
    struct Case {
        Kind kind;
        GMSG::Language language;
        int control;
        const char *text, *message;
    };
    const Case cases[] = {
        {kReal, GMSG::French, IDC_FORMAT_WIDTH, "1",
         "La largeur doit \352tre comprise entre 2 et 80."},
        {kReal, GMSG::French, IDC_FORMAT_DECIMALS, "9",
         "Le nombre de d\351cimales doit \352tre compris entre 0 et 8."},
        {kString, GMSG::French, IDC_FORMAT_DESCRIPTION, "a|b",
         "La description ne peut pas contenir le caract\350re |."},
        {kString, GMSG::English, IDC_FORMAT_WIDTH, "", "The width must be between 1 and 80."},
    };
    for (const Case& c : cases) {
        GMSG::language = c.language;
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
                EXPECT_EQ(GetWindow(box, GW_OWNER), form);
                EXPECT_EQ(textOf(box), c.language == GMSG::French ? "Erreur" : "Error");
                EXPECT_NE(FindWindowExA(box, nullptr, "Static", c.message), nullptr) << c.message;
                pressKey(VK_RETURN);
            })
            .waitUntil("back in the field",
                       [&](HWND dialog) { return dialog == form && focusedControl() == c.control; })
            .run([&](HWND dialog) {
                EXPECT_TRUE(isSelectedWhole(dialog, c.control));
                EXPECT_EQ(textOf(dialog, c.control), c.text);
                pressKey(VK_ESCAPE);
            });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
    }
}

TEST_F(FormatDialogs, TakeNoMoreThanADescriptionHolds) {
    UDKeyData key = keyOf(kInteger);
    DialogScript script;
    script.run([](HWND) { typeText(std::string(70, 'x')); })
        .waitUntil("64 characters",
                   [](HWND dialog) { return textOf(dialog, IDC_FORMAT_DESCRIPTION).size() >= 64; })
        .run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_EQ(edit(key), 1);
    EXPECT_EQ(key.getDescStr(), RWCString(std::string(64, 'x')));
}

TEST_F(FormatDialogs, OpenOnlyForTheirOwnKind) {
    DialogScript watch;  // closes a dialog that opens all the same
    UDKeyData real = keyOf(kReal);
    UDKeyData none;
    EXPECT_EQ(NumberFormat().setFormatDlg(owner_, real), 0);
    EXPECT_EQ(RealFormat().setFormatDlg(owner_, none), 0);
    EXPECT_EQ(NoFormatType().setFormatDlg(owner_, real), 0);
}

TEST_F(FormatDialogs, AreNamedByTheModuleOfTheWindow) {
    const HWND own = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                   GetModuleHandleA(nullptr), nullptr);
    const HWND others = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                      GetModuleHandleA("user32.dll"), nullptr);
    const RWCString name = RealFormat().getTypeName(own);
    EXPECT_TRUE(name == "Nombre r\351el" || name == "Real") << name;
    EXPECT_EQ(RealFormat().getTypeName(others), "");
    EXPECT_EQ(NoFormatType().getTypeName(own), "");
    DestroyWindow(own);
    DestroyWindow(others);
}

}  // namespace
