// File types as texts name them, and the extensions that names get.
#include "dialog/pickers/file_filters.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace toolbox;
using namespace toolbox::pickers;

/// The types of a text as the system takes them, with '/' for NUL; "refused".
std::string parsed(std::string_view text) {
    const auto filters = parseFilters(text);
    if (!filters) return "refused";
    std::string out = systemFilter(*filters);
    for (char& c : out)
        if (c == '\0') c = '/';
    return out;
}

TEST(FileFilters, AreNamesAndPatternsInTurn) {
    const std::pair<const char*, const char*> cases[] = {
        {" Projects | *.tbf ; *.bak |All|*||", "Projects/*.tbf;*.bak/All/*//"},
        {"\311tudes|*.\351t\351", "\311tudes/*.\351t\351//"},
        {"", "refused"},
        {"Projects|*.tbf|All", "refused"},
        {"|*.tbf", "refused"},
        {"Projects|*.tbf;;*.bak", "refused"}};
    for (const auto& [text, system] : cases) EXPECT_EQ(parsed(text), system) << text;
}

TEST(FileFilters, MatchNamesWithoutRegardToCase) {
    const std::string manyA(2000, 'a');
    const struct {
        std::string name;
        const char* pattern;
        bool matches;
    } cases[] = {{"plan.TBF", "*.tbf", true}, {"plan.tbf.bak", "*.tbf", false},
                 {"plan", "*.*", true},       {"a.tar.gz", "*.tar.gz", true},
                 {"plan.d", "*.d?", false},   {"\311T\311.x", "\351t\351*", true},
                 {"aab", "*ab", true},        {manyA, "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", false}};
    for (const auto& c : cases) EXPECT_EQ(matchesPattern(c.name, c.pattern), c.matches) << c.name;
}

TEST(FileFilters, CompleteTheNameThatIsSaved) {
    const struct {
        const char* name;
        int chosen;
        const char* saved;
    } cases[] = {
        {"C:\\a.b\\plan", 0, "C:\\a.b\\plan.tbf"},
        {"plan.TBF", 0, "plan.TBF"},
        {"plan.dxf", 0, "plan.dxf"},  // of another type
        {"Project 1.2", 0, "Project 1.2.tbf"},
        {"plan", 1, "plan.dwg"},  // the type's own goes before the default
        {"plan", 2, "plan.tbf"},
        {"Project 1.2", 2, "Project 1.2"},    // all files
        {"plan", 7, "plan.tbf"},              // no such type
        {"C:\\folder\\", 0, "C:\\folder\\"},  // no name
    };
    const auto filters = parseFilters("Projects|*.tbf|Drawings|*.dwg;*.d?f|All files|*.*");
    ASSERT_TRUE(filters);
    for (const auto& c : cases)
        EXPECT_EQ(withExtension(c.name, *filters, c.chosen, "tbf"), c.saved) << c.name;
    EXPECT_EQ(withExtension("plan", *filters, 2, ""), "plan");
    EXPECT_EQ(withExtension("Project 1.2", {}, 0, "tbf"), "Project 1.2.tbf");
}

}  // namespace
