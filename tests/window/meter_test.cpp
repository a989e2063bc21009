// The progress meter as its user sees it.
#include "toolbox/meter.h"

#include <gtest/gtest.h>

#include "meter_dialog.h"
#include "support/fake_system.h"
#include "support/window_kit.h"

namespace {

using namespace toolbox::testing;

struct CountingMeter : TarvMeter {
    void cancelMeter() const override { ++cancels; }
    mutable int cancels = 0;
};

struct MeterTest : ::testing::Test {
    MeterTest() { TarvMeter::setInstance(GetModuleHandleA(nullptr)); }
    ~MeterTest() override {
        meter.deleteMeter();
        DestroyWindow(owner);
        TarvMeter::setInstance(nullptr);
    }

    static HWND open() {
        const HWND window = CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                            0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
        SetActiveWindow(window);
        return window;
    }
    HWND control(int id) { return GetDlgItem(meter.getMeterHandle(), id); }
    void create(int cancelEnabled = 1) { ASSERT_EQ(meter.createMeter("Calcul", cancelEnabled), 1); }

    HWND owner = open();
    CountingMeter meter;
};

/// What needs a dialog, where there is none.
void expectHarmless(TarvMeter& meter) {
    char text[8] = "before";
    meter.deleteMeter();
    meter.enableCancel(1);
    meter.setMeterVisibility(1);
    meter.setMeterString(0, "line");
    meter.setDeltaPos(3);
    meter.setPartsInJob(7);
    meter.setPartsComplete(5);
    EXPECT_EQ(meter.isCancelEnabled() + meter.isMeterVisible() + meter.isMeterCreated(), 0);
    EXPECT_EQ(meter.getPartsComplete(), 0);
    EXPECT_EQ(meter.getMeterString(0, text, sizeof text), 0);
    EXPECT_STREQ(text, "");
}

TEST_F(MeterTest, MayBeDeletedByAMessageThatItHandles) {
    struct Deleting : TarvMeter {
        void cancelMeter() const override { delete this; }
    };
    using Operation = void (*)(TarvMeter&);
    const Operation operations[] = {
        [](TarvMeter& m) { m.setMeterVisibility(1); },
        [](TarvMeter& m) { m.setMeterString(0, "x"); },
        [](TarvMeter& m) { m.setPartsComplete(5); },
        [](TarvMeter& m) { m.resetMeterCancelledFlag(); },
        [](TarvMeter& m) { EXPECT_EQ(m.isMeterCancelled(), 0); },
        [](TarvMeter& m) { EXPECT_EQ(m.getPartsInJob(), 0u); },
    };
    for (const Operation operation : operations) {
        auto* const dying = new Deleting;
        ASSERT_EQ(dying->createMeter("", 1), 1);
        const HWND dialog = dying->getMeterHandle();
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        operation(*dying);
        EXPECT_FALSE(IsWindow(dialog));
    }
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(MeterTest, IsCancelledByAClickWhileTheJobAsks) {
    create();
    meter.setMeterVisibility(1);
    clickOn(control(IDCANCEL));
    EXPECT_TRUE(pumpUntil([&] { return meter.isMeterCancelled() != 0; }));
    EXPECT_EQ(meter.isCancelEnabled(), 0);
    EXPECT_EQ(meter.cancels, 1);
    meter.deleteMeter();
    create();
    EXPECT_EQ(meter.isMeterCancelled(), 0);
}

TEST_F(MeterTest, ShowsTheTimeElapsedAndTheTimeLeft) {
    FakeSystem clock;
    clock.seconds = 1000;
    create();
    meter.setPartsInJob(400);
    meter.setPartsComplete(100);
    clock.seconds += 30;
    const std::string left = "Temps restant\240: environ 00:02:00";
    EXPECT_TRUE(pumpUntil([&] { return textOf(control(IDC_METER_LEFT)) == left; }));
    meter.setPartsComplete(400);
    clock.seconds += 363695;
    EXPECT_TRUE(pumpUntil([&] { return textOf(control(IDC_METER_LEFT)).empty(); }));
    EXPECT_TRUE(pumpUntil([&] { return textOf(control(IDC_METER_ELAPSED)) == "101:02:05"; }));
}

TEST_F(MeterTest, SurvivesTheEndOfItsOwner) {
    create();
    meter.setMeterVisibility(1);
    DestroyWindow(owner);
    expectHarmless(meter);
    owner = open();
    create();
    EXPECT_FALSE(IsWindowEnabled(owner));
}

}  // namespace
