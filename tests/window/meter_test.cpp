// The progress meter as its user sees it.
#include "toolbox/meter.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <vector>

#include "meter_dialog.h"
#include "support/window_kit.h"
#include "toolbox/platform.h"
#include "toolbox/processes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::clickOn;
using toolbox::testing::pumpUntil;
using toolbox::testing::textOf;

struct CountingMeter : TarvMeter {
    void cancelMeter() const override { ++cancels; }
    using TarvMeter::dispatch;
    mutable int cancels = 0;
};

/// A clock that a test sets.
struct SetClock : toolbox::platform::SystemInfo {
    std::string errorText(toolbox::platform::ErrorCode) override { return {}; }
    toolbox::platform::LocalDate today() override { return {2026, 1, 1}; }
    std::uint64_t availableVirtualMemory() override { return 0; }
    std::time_t now() override { return time; }
    std::time_t time = 1000;
};

struct MeterTest : ::testing::Test {
    MeterTest() {
        TarvMeter::setInstance(GetModuleHandleA(nullptr));
        owner = CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300,
                                200, nullptr, nullptr, nullptr, nullptr);
        SetActiveWindow(owner);
    }
    ~MeterTest() override {
        meter.deleteMeter();
        DestroyWindow(owner);
        TarvMeter::setInstance(nullptr);
        GMSG::language = GMSG::French;
    }

    HWND control(int id) { return GetDlgItem(meter.getMeterHandle(), id); }
    int barPosition() {
        return static_cast<int>(SendMessageA(control(IDC_METER_BAR), PBM_GETPOS, 0, 0));
    }
    int barLimit(bool low) {
        return static_cast<int>(SendMessageA(control(IDC_METER_BAR), PBM_GETRANGE, low, 0));
    }
    void create(int cancelEnabled = 1) { ASSERT_EQ(meter.createMeter("Calcul", cancelEnabled), 1); }

    HWND owner;
    CountingMeter meter;
};

/// Every operation, where there is no dialog.
void expectHarmless(TarvMeter& meter) {
    char text[8] = "before";
    meter.deleteMeter();
    meter.enableCancel(1);
    meter.setMeterVisibility(1);
    meter.setMeterString(0, "line");
    meter.setDeltaPos(3);
    meter.setPartsInJob(7);
    meter.setPartsComplete(5);
    meter.resetMeterCancelledFlag();
    EXPECT_EQ(meter.isCancelEnabled(), 0);
    EXPECT_EQ(meter.isMeterVisible(), 0);
    EXPECT_EQ(meter.isMeterCreated(), 0);
    EXPECT_EQ(meter.getMeterHandle(), nullptr);
    EXPECT_EQ(meter.getMeterString(0, text, sizeof text), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(meter.getCaption(text, sizeof text), 0);
    EXPECT_EQ(meter.getPartsInJob(), 0u);
    EXPECT_EQ(meter.getPartsComplete(), 0);
    meter.setRange(-1, 70000);  // 16 bits each
    EXPECT_EQ(meter.getRange(), 4464u * 65536 + 65535);
    meter.setCurPos(4);
    EXPECT_EQ(meter.getCurPos(), 4);
    meter.setPartsInJob(0);
    EXPECT_EQ(meter.getCurPos(), -1);
}

TEST_F(MeterTest, IsHarmlessWithoutDialog) {
    TarvMeter::setInstance(nullptr);
    EXPECT_EQ(meter.createMeter("", 1), 0);
    EXPECT_EQ(meter.getRange(), 10u * 65536);
    expectHarmless(meter);
}

TEST_F(MeterTest, DisablesNothingWhenThereIsNoDialog) {
    TarvMeter::setEnable(0);
    EXPECT_EQ(meter.createMeter("", 1), 0);
    TarvMeter::setEnable(1);
    EXPECT_TRUE(IsWindowEnabled(owner));

    TarvMeter::setInstance(GetModuleHandleA("user32.dll"));  // it has no such template
    EXPECT_EQ(meter.createMeter("", 1), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));
    expectHarmless(meter);
}

TEST_F(MeterTest, NeedsAPlaceAmongTheAssociations) {
    std::vector<HWND> keys;
    for (std::size_t i = 1; i <= 100; ++i) keys.push_back(reinterpret_cast<HWND>(i));
    for (const HWND key : keys) SetHandleObject(this, key);
    EXPECT_EQ(meter.createMeter("", 1), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));
    for (const HWND key : keys) GetHandleObject(key, 1);
    create();
}

TEST_F(MeterTest, ComesHiddenInTheMiddleOverADisabledParent) {
    for (const auto language : {GMSG::French, GMSG::English}) {
        GMSG::language = language;
        create(0);
        const HWND dialog = meter.getMeterHandle();
        EXPECT_EQ(meter.createMeter("other", 1), 1);  // it stays as it is
        EXPECT_EQ(meter.getMeterHandle(), dialog);
        EXPECT_EQ(textOf(dialog), "Calcul");
        EXPECT_EQ(textOf(control(IDCANCEL)), language == GMSG::French ? "Annuler" : "Cancel");
        EXPECT_FALSE(IsWindowVisible(dialog));
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner);
        EXPECT_EQ(meter.isCancelEnabled(), 0);
        RECT place{};
        GetWindowRect(dialog, &place);
        EXPECT_NEAR(place.left + place.right, GetSystemMetrics(SM_CXSCREEN), 1);
        EXPECT_NEAR(place.top + place.bottom, GetSystemMetrics(SM_CYSCREEN), 1);
        meter.deleteMeter();
        EXPECT_FALSE(IsWindow(dialog));
        EXPECT_TRUE(IsWindowEnabled(owner));
    }
}

TEST_F(MeterTest, IsShownUnderTheWaitCursorAndHidden) {
    create();
    const HWND dialog = meter.getMeterHandle();
    const auto cursor = [&] {
        return reinterpret_cast<HCURSOR>(GetClassLongPtrA(dialog, GCLP_HCURSOR));
    };
    const HCURSOR own = cursor();
    const HCURSOR wait = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT));
    for (const int show : {1, 1, 0, 0, 1}) {
        meter.setMeterVisibility(show);
        EXPECT_EQ(meter.isMeterVisible(), show);
        EXPECT_EQ(IsWindowVisible(dialog), show);
        EXPECT_EQ(cursor(), show ? wait : own);
        EXPECT_EQ(IsWindowEnabled(owner), !show);
    }
    meter.deleteMeter();
    create();
    EXPECT_EQ(reinterpret_cast<HCURSOR>(GetClassLongPtrA(meter.getMeterHandle(), GCLP_HCURSOR)),
              own);
}

TEST_F(MeterTest, ShowsTwoLines) {
    create();
    meter.setMeterString(0, "Section && 1");
    meter.setMeterString(1, "D\351fini");
    meter.setMeterString(2, "nowhere");
    EXPECT_EQ(textOf(control(IDC_METER_LINE_0)), "Section && 1");
    EXPECT_EQ(textOf(control(IDC_METER_LINE_1)), "D\351fini");
    char text[5];
    EXPECT_EQ(meter.getMeterString(1, text, sizeof text), 4);
    EXPECT_STREQ(text, "D\351fi");
    EXPECT_EQ(meter.getMeterString(2, text, sizeof text), 0);
    EXPECT_EQ(meter.getCaption(text, sizeof text), 4);
    EXPECT_STREQ(text, "Calc");
    meter.setMeterString(0, nullptr);
    EXPECT_EQ(textOf(control(IDC_METER_LINE_0)), "");
}

TEST_F(MeterTest, CountsPartsAndNeverMovesBack) {
    create();
    EXPECT_EQ(meter.getPartsComplete(), 0);
    EXPECT_EQ(meter.getPartsInJob(), 1u);
    EXPECT_EQ(barPosition(), 1);  // on purpose: the count starts with a step

    meter.setPartsInJob(20);
    EXPECT_EQ(barLimit(false), 20);
    struct Case {
        unsigned int complete;
        int parts;
        int bar;
    };
    const Case cases[] = {{5, 5, 6}, {3, 5, 6}, {5, 5, 6}, {6, 6, 7}, {0, 0, 8}, {2, 2, 10}};
    for (const Case& c : cases) {
        meter.setPartsComplete(c.complete);
        EXPECT_EQ(meter.getPartsComplete(), c.parts);
        EXPECT_EQ(meter.getCurPos(), c.parts);
        EXPECT_EQ(barPosition(), c.bar);
    }
    meter.setPartsInJob(0);
    EXPECT_EQ(meter.getPartsComplete(), -1);
}

TEST_F(MeterTest, MovesItsBar) {
    create();
    meter.setRange(10, 90);
    EXPECT_EQ(barLimit(true), 10);
    EXPECT_EQ(barLimit(false), 90);
    EXPECT_EQ(meter.getRange(), 90u * 65536 + 10);
    const int start = barPosition();
    meter.setDeltaPos(7);
    EXPECT_EQ(barPosition(), start + 7);
    EXPECT_EQ(meter.getCurPos(), 0);

    meter.setCurPos(5);  // on purpose, this is the step
    EXPECT_EQ(barPosition(), start + 7);
    EXPECT_EQ(meter.getCurPos(), 5);
    meter.setPartsComplete(6);
    EXPECT_EQ(barPosition(), start + 12);
    meter.setStepInc(2);
    EXPECT_EQ(meter.getStepInc(), 2);
    meter.setPartsComplete(8);
    EXPECT_EQ(barPosition(), start + 16);
}

TEST_F(MeterTest, IsCancelledByAClickWhileTheJobAsks) {
    create();
    meter.setMeterVisibility(1);
    EXPECT_EQ(meter.isMeterCancelled(), 0);
    clickOn(control(IDCANCEL));
    EXPECT_TRUE(pumpUntil([&] { return meter.isMeterCancelled() != 0; }));
    EXPECT_EQ(meter.isCancelEnabled(), 0);
    EXPECT_EQ(meter.cancels, 1);
    meter.resetMeterCancelledFlag();
    EXPECT_EQ(meter.isMeterCancelled(), 0);

    meter.enableCancel(1);
    for (const WORD id : {WORD{IDOK}, WORD{IDCANCEL}, WORD{3}}) {
        PostMessageA(meter.getMeterHandle(), WM_COMMAND, id, 0);
        EXPECT_EQ(meter.isMeterCancelled(), id != 3);
        meter.resetMeterCancelledFlag();
    }
    PostMessageA(meter.getMeterHandle(), WM_COMMAND, IDCANCEL, 0);
    meter.dispatch();
    meter.deleteMeter();
    create();
    EXPECT_EQ(meter.isMeterCancelled(), 0);
}

TEST_F(MeterTest, UsesUpAQuitMessageWithoutBeingCancelled) {
    PostQuitMessage(3);
    EXPECT_EQ(meter.isMeterCancelled(), 0);  // without dialog it takes no messages
    EXPECT_EQ(meter.cancels, 0);
    create();
    EXPECT_EQ(meter.cancels, 1);
    EXPECT_EQ(meter.isMeterCancelled(), 0);
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
}

TEST_F(MeterTest, ShowsTheTimeElapsed) {
    SetClock clock;
    const toolbox::platform::Replaced guard(toolbox::platform::current().system,
                                            static_cast<toolbox::platform::SystemInfo&>(clock));
    create();
    const std::pair<long, const char*> cases[] = {
        {65, "00:01:05"}, {0, "00:00:00"}, {3725, "01:02:05"}, {360000, "100:00:00"}};
    for (const auto& [seconds, text] : cases) {
        clock.time = 1000 + seconds;
        SendMessageA(meter.getMeterHandle(), WM_TIMER, 1, 0);
        EXPECT_EQ(textOf(control(IDC_METER_ELAPSED)), text);
    }
}

TEST_F(MeterTest, TicksByItself) {
    create();
    EXPECT_TRUE(pumpUntil([&] { return textOf(control(IDC_METER_ELAPSED)) > "00:00:00"; }));
}

TEST_F(MeterTest, SurvivesTheEndOfItsOwner) {
    create();
    meter.setMeterVisibility(1);
    DestroyWindow(owner);
    expectHarmless(meter);
    owner = CreateWindowExA(0, "STATIC", "next", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                            nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(owner);
    create();
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_EQ(reinterpret_cast<HCURSOR>(GetClassLongPtrA(meter.getMeterHandle(), GCLP_HCURSOR)),
              LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW)));
}

TEST_F(MeterTest, IsNotTakenForTheObjectOfADialogToCome) {
    create();
    CountingMeter other;
    other.setParentWindow(owner);
    ASSERT_EQ(other.createMeter("", 1), 1);
    SetHandleObject(static_cast<TarvMeter*>(&other), nullptr);
    meter.deleteMeter();
    SetHandleObject(nullptr, nullptr);
    EXPECT_EQ(other.isMeterCreated(), 1);
}

TEST_F(MeterTest, DisablesTheParentThatItIsGiven) {
    const HWND other = CreateWindowExA(0, "STATIC", "other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       300, 200, nullptr, nullptr, nullptr, nullptr);
    meter.setParentWindow(other);
    create();
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_FALSE(IsWindowEnabled(other));
    meter.setParentWindow(owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_TRUE(IsWindowEnabled(other));
    meter.deleteMeter();
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(other);
}

TEST_F(MeterTest, GoesWithItsGuard) {
    try {
        const toolbox::ShownMeter shown(meter, "Calcul", 1);
        EXPECT_EQ(meter.isMeterVisible(), 1);
        { const toolbox::ShownMeter again(meter, "encore", 0); }
        EXPECT_EQ(meter.isMeterVisible(), 1);
        EXPECT_EQ(textOf(meter.getMeterHandle()), "Calcul");
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(meter.isMeterCreated(), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(MeterTest, HasIconsForFilesFoundOrNot) {
    for (const int id : {12002, 12003})
        EXPECT_NE(LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id)), nullptr);
}

}  // namespace
