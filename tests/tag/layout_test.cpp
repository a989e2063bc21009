#include <cmath>
#include <functional>
#include <memory>
#include <tuple>

#include "canvas/probe_canvas.h"
#include "toolbox/tag_layout.h"
#include "udkey/keys_fixture.h"

namespace {

using toolbox::PlaneRect;

TvTag labelled(const std::string& text) {
    TvTag tag;
    tag.text = text;
    return tag;
}

const TransMatrix2D kView = TransMatrix2D().scale(10, -10).translate(100, 200);

TvTagOnPage laid(const TvTag& tag) {
    return tvLayOutTag(tag, kView, nullptr);
}

TEST(TagLayout, LiesWhereItsAlignmentSays) {
    const std::tuple<TvAlign, TvLevel, double, double> cases[] = {
        {TvAlign::left, TvLevel::top, 0, 0},          {TvAlign::center, TvLevel::top, 0.5, 0},
        {TvAlign::right, TvLevel::top, 1, 0},         {TvAlign::left, TvLevel::middle, 0, 0.5},
        {TvAlign::center, TvLevel::middle, 0.5, 0.5}, {TvAlign::right, TvLevel::middle, 1, 0.5},
        {TvAlign::left, TvLevel::bottom, 0, 1},       {TvAlign::center, TvLevel::bottom, 0.5, 1},
        {TvAlign::right, TvLevel::bottom, 1, 1},
    };
    TvTag tag = labelled("wide line\nii");
    tag.anchor = {1, 2};  // (110, 180) on the page
    tag.offset = {5, -30};
    tag.margin = 3;
    tag.font.size = 20;
    const double width = tag.font.measure("wide line").width + 6;
    const double height = 2 * 24 + 6;
    for (const auto& [align, level, before, above] : cases) {
        tag.align = align;
        tag.level = level;
        const TvTagOnPage at = laid(tag);
        EXPECT_EQ(at.anchor, (TvPoint{110, 180}));
        EXPECT_NEAR(at.box.left, 115 - before * width, 1e-9);
        EXPECT_NEAR(at.box.right, at.box.left + width, 1e-9);
        EXPECT_NEAR(at.box.top, 150 - above * height, 1e-9);
        EXPECT_NEAR(at.box.bottom, at.box.top + height, 1e-9);
    }
}

TEST(TagLayout, BreaksLinesAtTheWidthAndFindsEmptyTags) {
    TvTag tag = labelled("some words that are broken");
    tag.width = 60;
    EXPECT_LE(laid(tag).box.right - laid(tag).box.left, 64);
    EXPECT_EQ(laid(tag).text.runs()[0].bytes, "some words\nthat are\nbroken");
    for (const char* const text : {"", "\n"}) {
        const PlaneRect box = laid(labelled(text)).box;
        EXPECT_EQ(box.right - box.left, 14) << text;
        EXPECT_GE(box.bottom - box.top, 16) << text;
    }
}

TEST(TagLayout, LeadsToTheAnchor) {
    // The box lies from (0, 0) to (w, 16), the anchor where the case says.
    const double w = TvFont().measure("label").width + 4;
    struct Case {
        TvTagBorder border;
        TvPoint anchor;
        bool leads;
        TvPoint start;
    };
    const Case cases[] = {
        {TvTagBorder::none, {5, 5}, false, {}},
        {TvTagBorder::none, {w, 16}, false, {}},
        {TvTagBorder::frame, {-9, 5}, true, {0, 5}},
        {TvTagBorder::frame, {w + 5, 40}, true, {w, 16}},
        {TvTagBorder::underline, {-9, 5}, true, {0, 16}},
        {TvTagBorder::underline, {w + 1, -5}, true, {w, 16}},
        {TvTagBorder::underline, {7, -5}, true, {7, 0}},
        {TvTagBorder::underline, {7, 30}, true, {7, 16}},
    };
    for (const Case& each : cases) {
        TvTag tag = labelled("label");
        tag.border = each.border;
        tag.leader = true;
        tag.anchor = each.anchor;
        tag.offset = {-each.anchor.x, -each.anchor.y};
        const TvTagOnPage at = tvLayOutTag(tag, TransMatrix2D(), nullptr);
        EXPECT_EQ(at.hasLeader, each.leads) << each.anchor.x;
        EXPECT_EQ(each.leads ? at.leaderStart : TvPoint(), each.start) << each.anchor.x;
    }
}

TEST(TagLayout, ShowsWhatTheScaleAllows) {
    TvTagSet set;
    for (const auto& [least, greatest] : {std::pair{0, 0}, {10, 0}, {11, 0}, {0, 10}, {0, 9}}) {
        TvTag tag = labelled("a");
        tag.minScale = least;
        tag.maxScale = greatest;
        set.add(tag);
    }
    TvTag away = labelled("far");
    away.anchor = {1e308, 0};
    set.add(away);
    std::vector<TvTagId> shown;
    const TvTagLayout layout(set, kView, nullptr);
    for (const TvTagOnPage& each : layout.tags()) shown.push_back(each.id);
    EXPECT_EQ(shown, (std::vector<TvTagId>{1, 2, 4}));
    EXPECT_EQ(layout.tag(2)->id, 2U);
    EXPECT_EQ(layout.tag(3), nullptr);
    EXPECT_TRUE(TvTagLayout(set, TransMatrix2D().scale(1, 0), nullptr).tags().empty());
    EXPECT_TRUE(TvTagLayout(set, TransMatrix2D().scale(NAN, 1), nullptr).tags().empty());
}

TEST(TagLayout, FindsTheTopmostAtAPoint) {
    TvTagSet set;
    const TvTagId below = set.add(labelled("below"));
    TvTag tag = labelled("above");
    tag.offset = {0, 50};
    tag.leader = true;
    const TvTagId above = set.add(tag);
    const TransMatrix2D plain;
    const auto find = [&](TvPoint at) { return TvTagLayout(set, plain, nullptr).find(at, 2); };
    EXPECT_EQ(find({10, 10}), (TvTagHit{below, TvTagHit::Box}));
    EXPECT_EQ(find({0, 10}), (TvTagHit{above, TvTagHit::Leader}));
    EXPECT_EQ(find({-1.5, 30}), (TvTagHit{above, TvTagHit::Leader}));
    EXPECT_EQ(find({-2.1, 30}), TvTagHit());
    EXPECT_EQ(find({-1.4, 48.7}), (TvTagHit{above, TvTagHit::Box}));
    EXPECT_EQ(find({-1.9, -1.9}), TvTagHit());  // a corner is round
    set.bringToFront(below);
    EXPECT_EQ(find({0, 10}), (TvTagHit{below, TvTagHit::Box}));
    EXPECT_EQ(TvTagLayout(set, plain, nullptr).findIn({-1, 0, 99, 60}), std::vector{below});
}

TEST(TagLayout, DrawsInItsBox) {
    TvTag tag = labelled("one\ntwo");
    tag.anchor = {9, 9};
    tag.offset = {20, 20};
    tag.align = TvAlign::center;
    tag.fill = TvColor{200, 200, 0};
    tag.leader = tag.unplaced = true;
    for (const auto border :
         {TvTagBorder::none, TvTagBorder::frame, TvTagBorder::rounded, TvTagBorder::underline}) {
        tag.border = border;
        TvTagSet set;
        set.add(tag);
        const TvTagLayout layout(set, kView, nullptr);
        const PlaneRect box = layout.tags()[0].box;
        ProbeCanvas canvas;
        ASSERT_EQ(layout.draw(canvas), 1);
        const bool lined = border == TvTagBorder::underline;
        ASSERT_EQ(canvas.paths.size(), lined ? 5U : 4U);  // leader, box, line, the mark's two
        for (const auto& [x, y] : canvas.paths[1].path.points())
            EXPECT_TRUE(x >= box.left && x <= box.right && y >= box.top && y <= box.bottom);
        EXPECT_TRUE(canvas.paths[1].brush.filled);
        EXPECT_EQ(canvas.paths[1].pen.width > 0,
                  border == TvTagBorder::frame || border == TvTagBorder::rounded);
        ASSERT_EQ(canvas.texts.size(), 1U);
        EXPECT_EQ(canvas.texts[0].at, (TvPoint{(box.left + box.right) / 2, box.top + 2}));
        EXPECT_EQ(canvas.texts[0].place, (TvTextPlace{TvAlign::center, TvLevel::top}));
        EXPECT_EQ(canvas.paths.back().path.points().size(), 3U);
    }
}

class TagTemplates : public KeysFixture {
  protected:
    TagTemplates() {
        startWithUsualKeys();
        manager_.values = {{1, "230"}, {2, "1.5"}, {3, "beam"}};
    }
};

TEST_F(TagTemplates, ShowWrongTokensAsTheyStand) {
    manager_.removeMatchingId(3);
    const std::pair<const char*, const char*> cases[] = {
        {"U=$VOLT$ V", "U=230 V"},
        {"$VOLT$$A$", "2301.50"},
        {"$VOLTS$ $VOLT$", "$VOLTS$ 230"},
        {"VOLT$A$ $VOLT$", "VOLT1.50 230"},
        {"$NAME$ 5$ or $VOLT$", "$NAME$ 5$ or 230"},
        {"$A$ $VOLT", "1.50 $VOLT"},
        {"$$VOLT$$", "$230$"},
    };
    for (const auto& [text, shown] : cases) EXPECT_EQ(tvTagText(labelled(text), &manager_), shown);
    const auto problems = manager_.checkTemplate("$A$ $VOLTS$");
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(tvTagSentence(problems[0]).str().find("$VOLTS$, "), std::string::npos);
    EXPECT_NE(tvTagSentence(problems[0]).str().find(" 5"), std::string::npos);
}

TEST_F(TagTemplates, TakeLongTextsOfAnyBytes) {
    for (const char* const part : {"$x ", "\x81"}) {
        TvTag tag;
        while (tag.text.size() < 1 << 17) tag.text += part;
        tag.width = 50;
        TvTagSet set;
        ASSERT_EQ(set.add(tag), 1U);
        TvRecording recording(100, 100);
        EXPECT_EQ(TvTagLayout(set, kView, &manager_).draw(recording), 1);
    }
}

TEST_F(TagTemplates, HaveKeysOfTheirOwn) {
    TestManager other;
    other.values = manager_.values;
    other.values[1] = "400";
    TvTagSet set;
    for (int i = 0; i < 4; ++i) set.add(labelled("$VOLT$"));
    TvTagKeys keysOf = [&](TvTagId id, const TvTag& tag) -> TokenizerUDManager* {
        EXPECT_EQ(&tag, set.find(id).get());
        if (id == 3) keysOf = nullptr;  // while it runs
        return id == 1 ? &manager_ : id == 4 ? nullptr : &other;
    };
    const TvTagLayout layout(set, kView, keysOf);
    std::string shown;
    for (const TvTagOnPage& each : layout.tags()) shown += each.text.windows1252() + ' ';
    EXPECT_EQ(shown, "230 400 400 $VOLT$ ");
    EXPECT_EQ(TvTagLayout(set, kView, TvTagKeys()).tags()[0].text.windows1252(), "$VOLT$");
}

TEST_F(TagTemplates, SurviveWhatFetchingAValueDeletes) {
    struct Ending : TestManager {
        int getKeyValue(UINT id, FormatedValue* value) override {
            const int known = TestManager::getKeyValue(id, value);
            end();
            return known;
        }
        std::function<void()> end;
    };
    auto set = std::make_unique<TvTagSet>();
    for (const char* text : {"$BAD$ $VOLT$ $A$", "$VOLT$"}) set->add(labelled(text));
    auto ending = std::make_unique<Ending>();
    ending->values = manager_.values;
    ending->end = [&] {
        set.reset();
        ending.reset();
    };
    const TvTagLayout layout(*set, kView, ending.get());
    ASSERT_EQ(layout.tags().size(), 2U);
    EXPECT_EQ(layout.tags()[0].text.windows1252(), "$BAD$ 230 $A$");
    EXPECT_EQ(layout.tags()[1].text.windows1252(), "$VOLT$");
}

}  // namespace
