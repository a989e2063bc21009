// The format dialogs as a user sees and types them.
#include "format_dialogs.h"

#include <string>

#include "support/owner_fixture.h"
#include "toolbox/keys.h"

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

class FormatDialogs : public OwnerFixture {
  protected:
    /// Opens the dialog for a key while the script plays.
    int edit(UDKeyData& key) { return key.getFormat()->setFormatDlg(owner, key); }
};

std::string preview(HWND dialog) {
    return textOf(dialog, IDC_FORMAT_PREVIEW);
}

TEST_F(FormatDialogs, ShowTheKeyInTheCurrentLanguage) {
    const struct {
        Kind kind;
        GMSG::Language language;
        const char *caption, *preview;
    } cases[] = {
        {kInteger, GMSG::English, "Format of an integer - VOLT", "|  -1234|"},
        {kReal, GMSG::French, "Format d'un nombre r\351el - VOLT", "|   1234.57|"},
    };
    for (const auto& c : cases) {
        GMSG::language = c.language;
        UDKeyData key = keyOf(c.kind);
        DialogScript script;
        script
            .run([&](HWND dialog) {
                EXPECT_EQ(textOf(dialog), c.caption);
                EXPECT_EQ(textOf(dialog, IDC_FORMAT_DESCRIPTION), "Tension \340 vide");
                EXPECT_EQ(preview(dialog), c.preview);
                EXPECT_EQ(focusedControl(), IDC_FORMAT_DESCRIPTION);
                EXPECT_FALSE(IsWindowEnabled(owner));
            })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
    }
}

TEST_F(FormatDialogs, TakeOverWhatWasTypedWhenEnterIsPressed) {
    GMSG::language = GMSG::French;
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
    const struct {
        Kind kind;
        int control;
        const char *text, *message;
    } cases[] = {
        {kReal, IDC_FORMAT_WIDTH, "1", "The width must be between 2 and 80."},
        {kReal, IDC_FORMAT_DECIMALS, "9", "The number of decimals must be between 0 and 8."},
        {kString, IDC_FORMAT_DESCRIPTION, "a|b", "The description cannot contain the character |."},
    };
    for (const auto& c : cases) {
        UDKeyData key = keyOf(c.kind);
        DialogScript script;
        script
            .run([&](HWND dialog) {
                setText(dialog, c.control, c.text);
                EXPECT_EQ(preview(dialog), "");
                SetFocus(GetDlgItem(dialog, IDC_FORMAT_PREVIEW));
                pressKey(VK_RETURN);
            })
            .waitUntil("message",
                       [&](HWND box) { return FindWindowExA(box, nullptr, "Static", c.message); })
            .run([](HWND) { pressKey(VK_RETURN); })
            .waitUntil("back in the field", [&](HWND) { return focusedControl() == c.control; })
            .run([&](HWND dialog) {
                EXPECT_EQ(textOf(dialog, c.control), c.text);
                pressKey(VK_ESCAPE);
            });
        EXPECT_EQ(edit(key), 0);
        EXPECT_EQ(key, keyOf(c.kind));
    }
    DialogScript watch;  // closes a dialog that opens all the same
    UDKeyData real = keyOf(kReal);
    EXPECT_EQ(NumberFormat().setFormatDlg(owner, real), 0) << "another kind";
}

}  // namespace
