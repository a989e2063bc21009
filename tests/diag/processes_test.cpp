#include "toolbox/processes.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace {

HWND window(int& key) {
    return reinterpret_cast<HWND>(&key);
}

TEST(Associations, AnswerForAnUnknownWindowWithThePendingObject) {
    int key = 0, object = 0, pending = 0;
    SetHandleObject(&pending, nullptr);
    EXPECT_EQ(GetHandleObject(window(key), 1), &pending);
    EXPECT_EQ(SetHandleObject(&object, &key), 1);
    EXPECT_EQ(GetHandleObject(window(key), 0), &object);
    EXPECT_EQ(GetHandleObject(window(key), 1), &object);
    EXPECT_EQ(GetHandleObject(window(key), 0), &pending);
    SetHandleObject(nullptr, nullptr);
}

TEST(Associations, HaveAHundredPlacesInEachTable) {
    std::array<int, 101> keys{}, objects{};
    for (std::size_t i = 0; i <= 100; ++i) {
        EXPECT_EQ(SetHandleObject(&objects[i], &keys[i]), i < 100) << i;
        EXPECT_EQ(SetPointerObject(&objects[i], &keys[i]), i < 100) << i;
    }
    EXPECT_EQ(GetHandleObject(window(keys[100]), 0), nullptr);
    EXPECT_EQ(GetPointerObject(&keys[100], 0), nullptr);
    // A place that is freed is taken again.
    EXPECT_EQ(GetPointerObject(&keys[50], 1), &objects[50]);
    EXPECT_EQ(SetPointerObject(&objects[100], &keys[100]), 1);
    EXPECT_EQ(GetPointerObject(&keys[100], 0), &objects[100]);
    for (int& key : keys) {
        GetHandleObject(window(key), 1);
        GetPointerObject(&key, 1);
    }
}

}  // namespace
