// The message service and the controls of a real window.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <tuple>

#include "support/text_fakes.h"
#include "support/window_kit.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox::testing;

constexpr unsigned short kEdit = 101;

class Controls : public ::testing::Test {
  protected:
    Controls() {
        CreateWindowA("EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, window_,
                      reinterpret_cast<HMENU>(kEdit), nullptr, nullptr);
        GMSG::initStaticVars();
        GMSG::setParent(window_);
        GMSG::setInstance(GetModuleHandleA(nullptr));
        texts_.prompt.liveWindow = window_;
    }
    ~Controls() override {
        GMSG::setInstance(nullptr);
        GMSG::setParent(nullptr);
        GMSG::destroyStaticVars();
        DestroyWindow(window_);
    }
    auto& boxes() { return texts_.prompt.boxes; }

    FakedTexts texts_;
    GMSG service_;
    HWND window_ = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                 nullptr, nullptr, nullptr, nullptr);
};

TEST_F(Controls, GiveTheirText) {
    setText(window_, kEdit, "d\351j\340");
    char small[4] = "GGG";
    EXPECT_EQ(GMSG::getCtrlString(kEdit, small, sizeof small), 3);
    EXPECT_STREQ(small, "d\351j");
    RWCString text;
    EXPECT_EQ(GMSG::getCtrlString(kEdit, text, INT_MAX), 4) << "in the room it needs";
    EXPECT_EQ(text, "d\351j\340");
}

TEST_F(Controls, GiveNumbersAndSayWhereTheyAreOutOfRange) {
    texts_.strings.put(1, "Entre %d et %d,1,10");
    texts_.strings.put(2, "Entre %g et %g,0.1,2.3");
    const std::tuple<const char*, int, bool> cases[] = {
        {"1", 1, true},
        {" 10 mm", 10, true},
        {"", 0, false},
        {"99999999999", INT_MAX, false},
        {"00000000000000000000000000000000000000012", 1, true}};
    for (const auto& [text, value, accepted] : cases) {
        setText(window_, kEdit, text);
        boxes().clear();
        int number = -1;
        EXPECT_EQ(GMSG::getInt(kEdit, number, 1), accepted) << text;
        EXPECT_EQ(number, value) << text;
        EXPECT_EQ(boxes().size(), accepted ? 0u : 1u) << text;
    }
    setText(window_, kEdit, "2.3");  // the limit itself
    float narrow = 0;
    EXPECT_EQ(GMSG::getFloat(kEdit, narrow, 2), 1);
    EXPECT_EQ(narrow, 2.3f);
    setText(window_, kEdit, "-6");
    long whole = 0;
    EXPECT_EQ(GMSG::getLong(kEdit, whole, 1), 0);
    EXPECT_EQ(boxes().back().text, "Entre 1 et 10");
    EXPECT_EQ(boxes().back().owner, window_);
}

}  // namespace
