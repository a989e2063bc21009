// Pointer sets: what they hold after each operation.
#include "toolbox/sets.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

int cells[40];

/// Elements are named by small numbers.
void* at(int number) {
    return &cells[number];
}

std::vector<int> numbers(const ContigSet<void*>& set) {
    std::vector<int> found;
    for (int i = 0; i < set.nItem(); ++i)
        found.push_back(set[i] ? static_cast<int>(static_cast<int*>(set[i]) - cells) : -1);
    return found;
}

SetPointerVoid setOf(const std::vector<int>& elements, int allowNull = 0, int increment = 10) {
    SetPointerVoid set(allowNull, increment);
    for (const int number : elements) set.addNoCheck(number < 0 ? nullptr : at(number));
    return set;
}

using Numbers = std::vector<int>;

TEST(Sets, KeepOrderAndRefuseWhatTheyHold) {
    SetPointerVoid set;
    EXPECT_EQ(set.add(at(1)), 1);
    EXPECT_EQ(set.add(at(2)), 1);
    EXPECT_EQ(set.add(at(1)), 0);
    EXPECT_EQ(set.insert(at(2)), 0);
    EXPECT_EQ(set.insert(at(3)), 1);
    EXPECT_EQ(set.addNoCheck(at(1)), 1);
    EXPECT_EQ(set.insertNoCheck(at(1)), 1);
    EXPECT_EQ(numbers(set), (Numbers{1, 3, 1, 2, 1}));

    EXPECT_EQ(set.remove(at(1)), 1) << "the first of them";
    EXPECT_EQ(set.removeByIndex(2), 1);
    EXPECT_EQ(numbers(set), (Numbers{3, 1, 1}));
    EXPECT_EQ(set.replaceItem(0, at(1)), 0) << "held elsewhere";
    EXPECT_EQ(set.replaceItem(2, at(5)), 1);
    EXPECT_EQ(set.exchangeItem(0, 2), 1);
    EXPECT_EQ(numbers(set), (Numbers{5, 1, 3}));
    for (const int index : {-1, 3}) {
        EXPECT_EQ(set[index], at(5)) << index;
        EXPECT_EQ(set.removeByIndex(index), 0);
        EXPECT_EQ(set.replaceItem(index, at(7)), 0);
        EXPECT_EQ(set.exchangeItem(0, index), 0);
    }
    set.init();
    EXPECT_EQ(set[0], nullptr);
}

TEST(Sets, CombineInOrderWithAndWithoutNull) {
    const SetPointerVoid left = setOf({4, 2, 2, -1}, 1, 3);
    const SetPointerVoid right = setOf({9, 2, 5}, 0, 7);
    EXPECT_EQ(numbers(left + right), (Numbers{4, 2, 2, -1, 9, 5}));
    EXPECT_EQ(numbers(right + left), (Numbers{9, 2, 5, 4, -1})) << "null allowed by one of them";
    EXPECT_EQ(numbers(left - right), (Numbers{4, -1}));
    EXPECT_EQ(numbers(left * right), (Numbers{2, 2}));

    SetPointerVoid set = right;
    EXPECT_EQ(numbers(set += left), (Numbers{9, 2, 5, 4})) << "null refused by the set itself";
    EXPECT_EQ(numbers(set *= left), (Numbers{2, 4}));
    EXPECT_EQ(numbers(set -= right), (Numbers{4}));
    EXPECT_EQ(numbers(set -= set), (Numbers{}));
    set = left;
    EXPECT_EQ(numbers(set = *&set), (Numbers{4, 2, 2}));
    EXPECT_FALSE(set == setOf({4, 2, 2})) << "identity, not content";
}

TEST(Sets, StayAsTheyAreWhenTheyCannotGrow) {
    SetPointerVoid huge(0, std::numeric_limits<int>::max());
    EXPECT_EQ(huge.insert(at(1)), 0) << "one slot more than an int counts";
    EXPECT_EQ(huge.nItem(), 0);

    EXPECT_EQ(numbers(setOf({0, 1, 2, 3}, 0, -4)), (Numbers{0, 1, 2, 3})) << "no sense";
#if !defined(__SANITIZE_ADDRESS__)  // which ends the process instead
    struct Page {
        unsigned char bytes[1 << 17];
    };
    static Page page{};
    ContigSet<Page> pages(std::numeric_limits<int>::max());
    EXPECT_EQ(pages.add(page), 0) << "more memory than there can be";
    EXPECT_EQ(pages.nItem(), 0);
#endif
}

}  // namespace
