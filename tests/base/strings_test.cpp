// Comparisons of the string types: every mix of operands, every way of asking.
#include "toolbox/strings.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace {

/// "less" < "more" by the unsigned bytes only: as signed ones the byte 0xE9 is negative.
constexpr const char* kLess = "ab";
constexpr const char* kMore = "a\xE9";

template <class A, class B>
void expectOrder(const A& less, const B& more) {
    EXPECT_TRUE(less < more);
    EXPECT_TRUE(less <= more);
    EXPECT_FALSE(less > more);
    EXPECT_FALSE(less >= more);
    EXPECT_TRUE(less != more);
    EXPECT_TRUE((less <=> more) < 0);
    EXPECT_TRUE(std::less<>{}(less, more));
}
template <class A, class B>
void expectOrderBothWays() {
    // Two copies of one text, so that addresses tell nothing.
    const std::string less = kLess, more = kMore, again = kMore;
    expectOrder(A(less.c_str()), B(more.c_str()));
    expectOrder(B(less.c_str()), A(more.c_str()));
    EXPECT_TRUE(A(more.c_str()) == B(again.c_str()));
    EXPECT_TRUE((B(more.c_str()) <=> A(again.c_str())) == 0);
}

template <class S>
class StringComparison : public testing::Test {};
using Strings = testing::Types<CString, RWCString, RWCollectableString>;
TYPED_TEST_SUITE(StringComparison, Strings);

TYPED_TEST(StringComparison, OrdersByUnsignedBytesWithEveryOperand) {
    expectOrderBothWays<TypeParam, CString>();
    expectOrderBothWays<TypeParam, RWCString>();
    expectOrderBothWays<TypeParam, RWCollectableString>();
    expectOrderBothWays<TypeParam, const char*>();
    expectOrderBothWays<TypeParam, std::string_view>();
}

TYPED_TEST(StringComparison, TakesANullPointerForTheEmptyText) {
    const TypeParam empty, text("a");
    const char* none = nullptr;
    EXPECT_TRUE(empty == none);
    EXPECT_TRUE(none < text);
    EXPECT_TRUE(empty == 0);
    EXPECT_FALSE(0 >= text);
}

}  // namespace
