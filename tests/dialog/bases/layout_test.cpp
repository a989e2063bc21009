// Arithmetic of places: what follows an edge, what is on which screen, what is kept of a window.
#include <gtest/gtest.h>

#include "dialog/layout/kept_place.h"

using namespace toolbox::dialog;

namespace {

/// A screen, one at its right that is lower, and one above the first.
constexpr Box kScreens[] = {{0, 0, 1000, 700}, {1000, 100, 1800, 600}, {0, -900, 1000, 0}};

TEST(Following, MovesEachEdgeByItsShare) {
    const Box control{10, 20, 110, 40};
    const struct {
        EdgeShares shares;
        int wider, higher;
        Box expected;
    } cases[] = {{{}, 50, 60, {10, 20, 110, 40}},
                 {{0, 0, 50, 100}, 51, 60, {10, 20, 135, 100}},
                 {{0, 0, 100, 100}, -300, -300, {10, 20, 10, 20}}};  // never inside out
    for (const auto& c : cases) EXPECT_EQ(follow(control, c.shares, c.wider, c.higher), c.expected);
}

TEST(Screens, HoldWhatStandsOnThemAndTakeWhatDoesNot) {
    const struct {
        Box box;
        bool mayShrink;
        Box expected;
    } cases[] = {
        {{900, 200, 1100, 400}, false, {900, 200, 1100, 400}},  // on two of them
        {{900, 20, 1100, 220}, false, {800, 20, 1000, 220}},    // but not in the corner between
        {{100, -1000, 300, -950}, false, {100, -900, 300, -850}},
        {{5000, 5000, 5100, 5100}, false, {1700, 500, 1800, 600}},  // the nearest
        {{100, 100, 3100, 300}, false, {0, 100, 3000, 300}},        // its left corner is seen
        {{100, 100, 3100, 300}, true, {0, 100, 1000, 300}},
    };
    for (const auto& c : cases) EXPECT_EQ(ontoScreens(c.box, kScreens, c.mayShrink), c.expected);
    const Box far{5000, 1, 5100, 2};
    EXPECT_EQ(ontoScreens(far, {}, true), far) << "no screen is known";
}

TEST(KeptPlaces, AreReadAsTheyWerePrinted) {
    for (const KeptPlace& place :
         {KeptPlace{{-1200, 30, -200, 530}, 96, false}, KeptPlace{{0, 0, 1, 1}, 144, true}})
        EXPECT_EQ(scanPlace(printPlace(place)), place);
    EXPECT_EQ(printPlace({{-5, 6, 95, 56}, 120, true}), "-5 6 100 50 120 max");
}

TEST(KeptPlaces, AreRefusedWhenTheyAreNone) {
    for (const char* text :
         {"", "1", "1 2 3 4", "1 2 0 4 96", "1 2 3 -4 96", "1 2 3 4 0", "1 2 3 4 9999",
          "1 2 3 4 96 min", "1 2 3 4 96 max ", "a 2 3 4 96", "1,2,3,4,96", "1  2 3 4 96",
          "99999999999 2 3 4 96", "1000001 2 3 4 96", "1 2 3 4 96max"})
        EXPECT_FALSE(scanPlace(text)) << text;
}

TEST(KeptPlaces, AreTakenAgainOnTheScreensThatThereAre) {
    const Box present{0, 0, 300, 200};
    const KeptPlace kept{{1200, 150, 1600, 450}, 96, false};
    EXPECT_EQ(placeAgain(kept, present, true, 96, kScreens), kept.box);
    EXPECT_EQ(placeAgain(kept, present, false, 96, kScreens), (Box{1200, 150, 1500, 350}));
    EXPECT_EQ(placeAgain(kept, present, true, 144, kScreens), (Box{1200, 150, 1800, 600}));
    const std::span<const Box> one(kScreens, 1);
    EXPECT_EQ(placeAgain(kept, present, true, 288, one), (Box{0, 0, 1000, 700}));
}

}  // namespace
