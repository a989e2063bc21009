// The editor of labels under the keyboard.
#include "tag_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/picture.h"
#include "support/temp_folder.h"
#include "support/window_kit.h"
#include "toolbox/messages.h"
#include "toolbox/tag_tools.h"

namespace {

using namespace toolbox::testing;

struct Keys : TokenizerUDManager {
    explicit Keys(std::string file) : profile(std::move(file)) {
        UDKeyData data("VOLT");
        RealFormat format;
        format.setFormat(8, 2, Right);
        data.setFormat(format);
        addKey(1, data);
        initUDApp();
    }
    ~Keys() override { freeUDApp(); }
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;

    RWCString getProfilePath() override { return RWCString(profile); }
    int getKeyValue(UINT, FormatedValue* value) override {
        static_cast<RealFormatedValue*>(value)->setValue(230);
        if (const auto once = std::exchange(whenAsked, nullptr)) once();
        return 1;
    }
    std::string profile;
    std::function<void()> whenAsked;
};

class TagDialogTest : public ::testing::Test {
  protected:
    TagDialogTest() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        UDManager::initStaticVars();
        keys = std::make_unique<Keys>(folder / "keys.ini");
        tag.text = "U = $VOLT$ V\nsecond";
        tag.anchor = {3, 4};
        tag.offset = {5, -6};
        tag.font = {TvFont::Times, 9.5, true, false, {10, 20, 30}};
        tag.width = 100;
        tag.level = TvLevel::bottom;
        tag.border = TvTagBorder::rounded;
        tag.minScale = 0.3;
    }
    ~TagDialogTest() override {
        keys.reset();
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    static std::vector<std::string> problems(HWND dialog) {
        std::vector<std::string> lines;
        const HWND list = GetDlgItem(dialog, IDC_TAG_PROBLEMS);
        for (LRESULT i = 0; i < SendMessageA(list, LB_GETCOUNT, 0, 0); ++i) {
            char line[200] = "";
            SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(line));
            lines.emplace_back(line);
        }
        return lines;
    }
    static std::function<bool(HWND)> focused(int control) {
        return [=](HWND) { return focusedControl() == control; };
    }
    static std::function<void(HWND)> press(WORD key, std::vector<WORD> modifiers = {}) {
        return [=](HWND) { pressKey(key, modifiers); };
    }

    GMSG service;
    TempFolder folder;
    std::unique_ptr<Keys> keys;
    TvTag tag;
};

TEST_F(TagDialogTest, GivesBackWhatNobodyTouchedInBothLanguages) {
    for (const auto language : {GMSG::English, GMSG::French}) {
        GMSG::language = language;
        TvTagDialog editor(tag, keys.get());
        DialogScript script;
        script.run([&](HWND dialog) {
            EXPECT_EQ(textOf(dialog), language == GMSG::English ? "Label" : "\311tiquette");
            EXPECT_EQ(textOf(dialog, IDC_TAG_TEXT), "U = $VOLT$ V\r\nsecond");
            EXPECT_EQ(textOf(dialog, IDC_TAG_SAMPLE), "U = 230.00 V\nsecond");
            EXPECT_EQ(problems(dialog),
                      std::vector<std::string>{language == GMSG::English ? "No findings"
                                                                         : "Aucune anomalie"});
            for (const int each : {IDC_TAG_SAMPLE, IDC_TAG_ALIGN_TOP_LEFT, IDC_TAG_TEXT_COLOR}) {
                UpdateWindow(GetDlgItem(dialog, each));
                const Picture seen = pictureOf(GetDlgItem(dialog, each));
                const auto paper = std::ranges::count(seen.pixels, seen.at(seen.width / 2, 4));
                EXPECT_GT(std::ssize(seen.pixels) - paper, 20) << each;
            }
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        });
        EXPECT_EQ(editor.run(nullptr), 1);
        EXPECT_TRUE(editor.getTag() == tag);
    }
}

TEST_F(TagDialogTest, WorksByTheKeyboardAlone) {
    TvTagDialog editor(tag, keys.get());
    DialogScript script;
    script.waitUntil("the text has the focus", focused(IDC_TAG_TEXT))
        .run([](HWND) { typeText("a"); })
        .waitUntil("it is shown", [](HWND d) { return textOf(d, IDC_TAG_SAMPLE) == "a"; })
        .run([](HWND) { pressKey(VK_TAB), pressKey(VK_TAB); })
        .waitUntil("alignment", focused(IDC_TAG_ALIGN_BOTTOM_LEFT))
        .run(press(VK_UP))
        .waitUntil("the row above", focused(IDC_TAG_ALIGN_LEFT))
        .run(press(VK_RIGHT))
        .waitUntil("the next one", focused(IDC_TAG_ALIGN_CENTER))
        .run(press(VK_TAB))
        .waitUntil("border", focused(IDC_TAG_BORDER_ROUNDED))
        .run(press(VK_RIGHT))
        .waitUntil("underline", focused(IDC_TAG_BORDER_UNDERLINE))
        .run(press('F', {VK_MENU}))
        .waitUntil("font", focused(IDC_TAG_FONT))
        .run([](HWND) { typeText("c"), pressKey(VK_TAB); })
        .waitUntil("size", focused(IDC_TAG_SIZE))
        .run([](HWND) { typeText("12"); })
        .run(press('D', {VK_MENU}))
        .waitUntil("leader", [](HWND d) { return IsDlgButtonChecked(d, IDC_TAG_LEADER) != 0; })
        .run(press(VK_RETURN));
    EXPECT_EQ(editor.run(nullptr), 1);
    TvTag expected = tag;
    expected.text = "a";
    expected.align = TvAlign::center;
    expected.level = TvLevel::middle;
    expected.border = TvTagBorder::underline;
    expected.font.family = TvFont::Courier;
    expected.font.size = 12;
    expected.leader = true;
    EXPECT_TRUE(editor.getTag() == expected);
}

TEST_F(TagDialogTest, ListsWhatIsWrongAndLeadsThere) {
    TvTagDialog editor(tag, keys.get());
    DialogScript script;
    script
        .run([](HWND dialog) {
            SendDlgItemMessageA(dialog, IDC_TAG_TEXT, EM_REPLACESEL, FALSE,
                                reinterpret_cast<LPARAM>("a\r\n$VOLTS$ and $VOLT \201"));
            EXPECT_EQ(problems(dialog).size(), 3u);
            const HWND list = GetDlgItem(dialog, IDC_TAG_PROBLEMS);
            SendMessageA(list, LB_SETCURSEL, 0, 0);
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_TAG_PROBLEMS, LBN_SELCHANGE), 0);
            DWORD from = 0, to = 0;
            SendDlgItemMessageA(dialog, IDC_TAG_TEXT, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                                reinterpret_cast<LPARAM>(&to));
            EXPECT_EQ(from, 3u);
            EXPECT_EQ(to, 10u);
            setText(dialog, IDC_TAG_SIZE, "0");
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        })
        .waitUntil("the size is refused", focused(IDC_TAG_SIZE))
        .run([](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(editor.run(nullptr), 0);
    EXPECT_TRUE(editor.getTag() == tag);
}

TEST_F(TagDialogTest, MayEndWhileAValueIsFetchedAndLeavesNothingBehind) {
    auto editor = std::make_unique<TvTagDialog>(tag, keys.get());
    keys->whenAsked = [&] { editor.reset(); };
    EXPECT_EQ(editor->run(nullptr), 0);
    EXPECT_EQ(editor, nullptr);
    expectNoHandlesLeft(8, [this] {
        TvTagDialog dialog(tag, keys.get());
        dialog.open(nullptr);
        pumpMessages();
    });
}

}  // namespace
