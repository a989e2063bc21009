// Which keys an active dialog keeps from the frame's accelerators.
#include "dialog/field_keys.h"

#include <gtest/gtest.h>

using namespace toolbox::dialog;

namespace {

constexpr Modifiers kNone, kControl{.control = true}, kAlt{.alternate = true},
    kAltGr{.control = true, .alternate = true, .right = true},
    kControlAlt{.control = true, .alternate = true};

TEST(FieldKeys, AreThoseThatEditAText) {
    const struct {
        unsigned key;
        Modifiers held;
        bool inAnyDialog, withAField;
    } cases[] = {
        {'C', kControl, false, true},     {'V', kControl, false, true},
        {'X', kControl, false, true},     {'Z', kControl, false, true},
        {'Y', kControl, false, true},     {'A', kControl, false, true},
        {'S', kControl, false, false},    {'N', kControl, false, false},
        {'C', kNone, false, true},        {'7', kNone, false, true},
        {0x67, kNone, false, true},       {0xBC, kNone, false, true},     // a pad's key, a comma
        {0x2E, kNone, false, true},       {0x2E, kControl, false, true},  // delete
        {0x2D, kControl, false, true},    {0x08, kNone, false, true},     // insert, backspace
        {0x08, kAlt, false, true},        {0x25, kControl, false, true},  // undo, a word left
        {0x25, kNone, true, true},        {0x24, kNone, true, true},      // left, home
        {0x09, kNone, true, false},       {0x0D, kNone, true, false},     // tab, enter
        {0x1B, kNone, true, false},       {0x09, kControl, false, false},
        {0x70, kNone, true, false},       {0x74, kNone, false, false},  // F1, F5
        {0x73, kNone, false, true},       {0x73, kAlt, true, false},    // F4, Alt+F4
        {0x28, kAlt, false, true},        {'E', kAltGr, false, true},   // opens a list, a Euro sign
        {'E', kControlAlt, false, false}, {'D', kAlt, false, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(isDialogKey(c.key, c.held), c.inAnyDialog) << std::hex << c.key;
        EXPECT_EQ(isFieldKey(c.key, c.held), c.withAField) << std::hex << c.key;
    }
}

TEST(FieldKeys, AreToldByTheirCharactersToo) {
    for (const unsigned c : {0x61u, 0x5Au, 0x30u, 0x20u, 0xE9u, 1u, 3u, 22u, 24u, 26u, 8u, 13u})
        EXPECT_TRUE(isFieldCharacter(c)) << std::hex << c;
    for (const unsigned c : {0x13u, 0x0Eu, 0x06u, 0x00u}) EXPECT_FALSE(isFieldCharacter(c)) << c;
}

TEST(FieldClasses, AreKnownByAnySpelling) {
    for (const char* name :
         {"Edit", "EDIT", "ComboBox", "RichEdit20A", "RICHEDIT50W", "SysDateTimePick32"})
        EXPECT_TRUE(isFieldClass(name)) << name;
    for (const char* name : {"Button", "Static", "SysListView32", "EditX", ""})
        EXPECT_FALSE(isFieldClass(name)) << name;
}

}  // namespace
