// Which keys an active dialog keeps from the frame's accelerators.
#include "dialog/field_keys.h"

#include <gtest/gtest.h>

#include <string_view>

using namespace toolbox::dialog;

namespace {

constexpr Modifiers kNone, kControl{.control = true}, kAlt{.alternate = true},
    kAltGr{.control = true, .alternate = true, .right = true},
    kControlAlt{.control = true, .alternate = true};

TEST(FieldKeys, AreThoseThatEditAText) {
    const struct {
        Modifiers held;
        std::string_view keys;
        bool inAnyDialog, withAField;
    } cases[] = {{kControl, "CVXZYA\x2E\x2D\x25", false, true},  // delete, insert, a word left
                 {kControl, "SN\x09", false, false},
                 {kNone, "C7\x67\xBC\x2E\x08\x73", false, true},  // a pad's 7, comma, F4
                 {kNone, "\x25\x24", true, true},                 // left, home
                 {kNone, "\x09\x0D\x1B\x70", true, false},        // tab, enter, escape, F1
                 {kNone, "\x74", false, false},                   // F5
                 {kAlt, "\x08\x28", false, true},                 // undo, opens a list
                 {kAlt, "\x73", true, false},
                 {kAltGr, "E", false, true},  // a Euro sign
                 {kControlAlt, "E", false, false},
                 {kAlt, "D", false, false}};
    for (const auto& c : cases)
        for (const char key : c.keys) {
            const auto code = static_cast<unsigned char>(key);
            EXPECT_EQ(isDialogKey(code, c.held), c.inAnyDialog) << std::hex << +code;
            EXPECT_EQ(isFieldKey(code, c.held), c.withAField) << std::hex << +code;
        }
    for (const char c : std::string_view("aZ0 \xE9\1\3\x16\x18\x1A\b\r"))
        EXPECT_TRUE(isFieldCharacter(static_cast<unsigned char>(c))) << c;
    for (const unsigned c : {0x13u, 0x0Eu, 0x06u, 0x00u}) EXPECT_FALSE(isFieldCharacter(c)) << c;
    for (const char* name : {"Edit", "EDIT", "RichEdit20A", "RICHEDIT50W", "SysDateTimePick32"})
        EXPECT_TRUE(isFieldClass(name)) << name;
    for (const char* name : {"Button", "SysListView32", "EditX", ""})
        EXPECT_FALSE(isFieldClass(name)) << name;
}

}  // namespace
