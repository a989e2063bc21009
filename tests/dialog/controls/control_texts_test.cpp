// Texts of controls: hints and tips, entries, completion, recent entries, shortened paths; and how
// panes share a bar.
#include "dialog/controls/control_texts.h"

#include <gtest/gtest.h>

#include "dialog/controls/pane_widths.h"

namespace {

using namespace toolbox::controls;
using Texts = std::vector<std::string>;

TEST(ControlTexts, SplitsHintsFromTipsAndEntriesFromEachOther) {
    EXPECT_EQ(tipParts("a\r\nb\nc").hint, "a");
    EXPECT_EQ(tipParts("a\r\nb\nc").tip, "b\nc");
    EXPECT_EQ(tipParts("Hint only\n").tip, "");
    EXPECT_EQ(entriesOf("|S235| S355||"), (Texts{"S235", " S355"}));
    EXPECT_EQ(withoutMnemonics("A & B && C"), "A && B &&&& C");
}

TEST(ControlTexts, CompletesAfterAnInsertionAtTheEndOnly) {
    const struct {
        FieldText before, after;
        bool completes;
        const char* what;
    } cases[] = {{{"S", 1, 1}, {"S2", 2, 2}, true, "typed at the end"},
                 {{"S235", 1, 4}, {"S2", 2, 2}, true, "typed over what was completed"},
                 {{"S2", 2, 2}, {"S", 1, 1}, false, "Backspace"},
                 {{"S235", 2, 4}, {"S2", 2, 2}, false, "Backspace of what was completed"},
                 {{"S2x", 2, 2}, {"S23x", 3, 3}, false, "in the middle"},
                 {{"S2", 2, 2}, {"S23", 1, 3}, false, "with a selection"}};
    for (const auto& c : cases)
        EXPECT_EQ(isInsertionAtEnd(c.before, c.after), c.completes) << c.what;
}

TEST(ControlTexts, RemembersEachRecentEntryOnceTheNewestFirst) {
    EXPECT_EQ(withNewest({"a", "b", "c"}, "c", 3), (Texts{"c", "a", "b"}));
    EXPECT_EQ(withNewest({"a", "b"}, "A", 3), (Texts{"A", "a", "b"})) << "case counts";
    for (const char* kept : {"a", "a b", "\"a", "'", "\351"}) EXPECT_TRUE(canBeKept(kept)) << kept;
    for (const char* lost : {"", " a", "a ", "\"a\"", "'a'", "a\nb", "a\rb", "\ta"})
        EXPECT_FALSE(canBeKept(lost)) << lost;
    EXPECT_FALSE(canBeKept(std::string(1024, 'x')));
}

int lengthOf(std::string_view text) {
    return static_cast<int>(text.size());
}

TEST(ControlTexts, ShortensAPathInItsMiddle) {
    const struct {
        const char* path;
        int width;
        const char* shown;
    } cases[] = {
        {"C:\\a\\b.tvb", 10, "C:\\a\\b.tvb"},
        {"C:\\projects\\bridges\\north\\deck.tvb", 30, "C:\\...\\bridges\\north\\deck.tvb"},
        {"C:\\projects\\bridges\\north\\deck.tvb", 7, "de...vb"},
        {"C:\\projects\\bridges\\north\\deck.tvb", 4, "...b"},
        {"C:\\projects\\bridges\\north\\deck.tvb", 2, ""},
        {"\\\\host\\share\\some\\deck.tvb", 25, "\\\\host\\share\\...\\deck.tvb"},
        {"/home/user/data/deck.tvb", 18, "/.../data/deck.tvb"},
        {"\\\\host\\share", 8, "..."}};
    for (const auto& c : cases) {
        const std::string shown = shortenedPath(c.path, c.width, lengthOf);
        EXPECT_EQ(shown, c.shown) << c.path << " in " << c.width;
    }
    // Whatever the path and the font: never wider than there is room.
    const auto uneven = [](std::string_view text) {
        int width = 0;
        for (const char c : text) width += c == '.' ? 2 : 3 + c % 5;
        return width;
    };
    const std::string longPath = "C:\\" + std::string(3000, 'm') + "\\" + std::string(3000, 'n');
    for (const std::string& path : {longPath, std::string("\\\\\\//..\\a"), std::string(90, '\\')})
        for (int width = 0; width < 400; width += 7)
            EXPECT_LE(uneven(shortenedPath(path, width, uneven)), width) << path.size();
}

TEST(PaneEdges, GivesFixedPanesTheirWidthAndTheOthersTheRest) {
    using Edges = std::vector<int>;
    const struct {
        std::vector<int> characters;
        PaneMeasures measures;
        Edges edges;
    } cases[] = {{{0}, {300, 8, 6, 0}, {300}},
                 {{0, 10}, {300, 8, 6, 16}, {198, 300}},
                 {{10, 0, 0}, {287, 8, 6, 16}, {86, 186, 287}},
                 {{0, 2'000'000'000}, {300, 8, 6, 0}, {0, 300}},
                 {{}, {300, 8, 6, 0}, {}}};
    for (const auto& c : cases) EXPECT_EQ(paneEdges(c.characters, c.measures), c.edges);
}

}  // namespace
