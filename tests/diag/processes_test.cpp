#include "toolbox/processes.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(Secs2HMS, SplitsTowardZero) {
    const struct {
        long seconds;
        int h, m, s;
    } cases[] = {{3725, 1, 2, 5},    {0, 0, 0, 0},        {59, 0, 0, 59},
                 {65, 0, 1, 5},      {86399, 23, 59, 59}, {2147483647, 596523, 14, 7},
                 {-3725, -1, -2, -5}};
    for (const auto& c : cases) {
        int h = -1;
        int m = -1;
        int s = -1;
        Secs2HMS(c.seconds, &h, &m, &s);
        EXPECT_EQ((std::array{h, m, s}), (std::array{c.h, c.m, c.s})) << c.seconds;
    }
}

struct AssociationsTest : ::testing::Test {
    ~AssociationsTest() override {
        for (int& key : keys) {
            GetHandleObject(window(key), 1);
            GetPointerObject(&key, 1);
        }
        SetHandleObject(nullptr, nullptr);
    }
    static HWND window(int& key) { return reinterpret_cast<HWND>(&key); }

    std::array<int, 101> keys{};
    std::array<int, 101> objects{};
    int dialog = 0;
};

TEST_F(AssociationsTest, AnswerForAnUnknownWindowWithThePendingObject) {
    EXPECT_EQ(GetHandleObject(window(keys[0]), 0), nullptr);
    SetHandleObject(&dialog, nullptr);
    EXPECT_EQ(GetHandleObject(window(keys[0]), 1), &dialog);
    EXPECT_EQ(GetHandleObject(nullptr, 1), &dialog);
    EXPECT_EQ(SetHandleObject(&objects[0], &keys[0]), 1);
    EXPECT_EQ(GetHandleObject(window(keys[0]), 0), &objects[0]);
    EXPECT_EQ(GetHandleObject(window(keys[0]), 1), &objects[0]);
    EXPECT_EQ(GetHandleObject(window(keys[0]), 0), &dialog);
}

TEST_F(AssociationsTest, HaveAHundredPlaces) {
    for (std::size_t i = 0; i < 100; ++i) {
        ASSERT_EQ(SetHandleObject(&objects[i], &keys[i]), 1);
        ASSERT_EQ(SetPointerObject(&objects[i], &keys[i]), 1);
    }
    EXPECT_EQ(SetHandleObject(&objects[100], &keys[100]), 0);
    EXPECT_EQ(SetPointerObject(&objects[100], &keys[100]), 0);
    EXPECT_EQ(GetHandleObject(window(keys[100]), 0), nullptr);
    EXPECT_EQ(GetPointerObject(&keys[100], 0), nullptr);
    EXPECT_EQ(GetPointerObject(&keys[99], 0), &objects[99]);
    // A place that is freed is taken again.
    EXPECT_EQ(GetPointerObject(&keys[50], 1), &objects[50]);
    EXPECT_EQ(GetPointerObject(&keys[50], 0), nullptr);
    EXPECT_EQ(SetPointerObject(&objects[100], &keys[100]), 1);
    EXPECT_EQ(GetPointerObject(&keys[100], 0), &objects[100]);
}

TEST_F(AssociationsTest, StoreNothingUnderANullKey) {
    EXPECT_EQ(SetPointerObject(&dialog, nullptr), 0);
    EXPECT_EQ(GetPointerObject(nullptr, 0), nullptr);
    EXPECT_EQ(GetPointerObject(nullptr, 1), nullptr);
}

}  // namespace
