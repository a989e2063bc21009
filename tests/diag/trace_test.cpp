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

TEST(Trace, PassesTheCategoriesOfTheMaskAndCutsALongText) {
    EXPECT_EQ(toolbox::setTraceSink(keep), nullptr);
    // Printing this argument would end the process.
    const auto* const nowhere = reinterpret_cast<const char*>(8);
    CTvTrace::Trace(~0ul, "%s", nowhere);
    CTvTrace::SetCurrentTraceCategoryEnabled(4 | 0x80000000ul);
    CTvTrace::Trace(1 | 2, "%s", nowhere);
    CTvTrace::Trace(4 | 1, "%d%% of %-5s|%6.2f", 12, "abc", 3.14159);
    CTvTrace::Trace(0x80000000ul, "last");
    CTvTrace::Trace(4, "%s", std::string(2000, 'x').c_str());
    EXPECT_EQ(traced, (std::vector<std::string>{"5 12% of abc  |  3.14", "2147483648 last",
                                                "4 " + std::string(511, 'x')}));
    EXPECT_EQ(toolbox::setTraceSink(nullptr), keep);
    CTvTrace::Trace(4, "without a sink");
    CTvTrace::SetCurrentTraceCategoryEnabled(0);
}

}  // namespace
