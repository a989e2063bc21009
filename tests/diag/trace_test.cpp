#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "toolbox/diagnostics.h"

namespace {

std::vector<std::string> traced;

void keep(unsigned long category, const char* text) {
    traced.push_back(std::to_string(category) + ' ' + text);
    CTvTrace::Trace(category, "from within a sink");  // dropped
}

struct TraceTest : ::testing::Test {
    TraceTest() { EXPECT_EQ(toolbox::setTraceSink(keep), nullptr); }
    ~TraceTest() override {
        EXPECT_EQ(toolbox::setTraceSink(nullptr), keep);
        CTvTrace::SetCurrentTraceCategoryEnabled(0);
        traced.clear();
    }
};

TEST_F(TraceTest, PassesTheCategoriesOfTheMask) {
    // Printing this argument would end the process.
    const auto* const nowhere = reinterpret_cast<const char*>(8);
    CTvTrace::Trace(~0ul, "%s", nowhere);
    CTvTrace::SetCurrentTraceCategoryEnabled(4 | 0x80000000ul);
    CTvTrace::Trace(1 | 2, "%s", nowhere);
    CTvTrace::Trace(0, "%s", nowhere);
    CTvTrace::Trace(4 | 1, "%d%% of %-5s|%6.2f", 12, "abc", 3.14159);
    CTvTrace::Trace(0x80000000ul, "last");
    EXPECT_EQ(traced, (std::vector<std::string>{"5 12% of abc  |  3.14", "2147483648 last"}));
}

TEST_F(TraceTest, CutsALongText) {
    CTvTrace::SetCurrentTraceCategoryEnabled(1);
    CTvTrace::Trace(1, "%s", std::string(2000, 'x').c_str());
    EXPECT_EQ(traced, std::vector{"1 " + std::string(511, 'x')});
}

TEST(Trace, WithoutASinkShowsNothing) {
    CTvTrace::SetCurrentTraceCategoryEnabled(1);
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    CTvTrace::Trace(1, "text %d", 1);
    InitConsole();
    Debug("text %d", 1);
    Debug2("text %d", 1);
    Debug3("text %d", 1);
    Debug4("text %d", 1);
    DestroyConsole();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    CTvTrace::SetCurrentTraceCategoryEnabled(0);
}

}  // namespace
