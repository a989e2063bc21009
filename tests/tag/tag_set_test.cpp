#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/codec.h"
#include "canvas/check_sum.h"
#include "tag/tag_bytes.h"
#include "toolbox/messages.h"
#include "toolbox/tags.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

using Ids = std::vector<TvTagId>;
using Spoil = std::function<void(TvTag&)>;

TvTag labelled(const char* text) {
    TvTag tag;
    tag.text = text;
    return tag;
}

/// A tag in which no field is as at first.
TvTag rich() {
    TvTag tag = labelled("$A$\r\n\x80");
    tag.anchor = {1e300, -2};
    tag.offset = {3, -4.5};
    tag.align = TvAlign::right;
    tag.level = TvLevel::bottom;
    tag.width = 80;
    tag.font = {TvFont::Times, 7, true, true, {1, 2, 3}};
    tag.border = TvTagBorder::underline;
    tag.line = {{4, 5, 6}, 0.25, {2, 1}};
    tag.fill = TvColor{7, 8, 9};
    tag.margin = 0;
    tag.leader = true;
    tag.minScale = 0.5;
    tag.maxScale = 0.5;
    tag.locked = true;
    tag.unplaced = true;
    return tag;
}

std::string stored(const TvTagSet& set) {
    VarRecord record;
    set.store(record);
    return {record.getPData(), record.getLen()};
}

int load(TvTagSet& set, const std::string& bytes, CString* why = nullptr) {
    VarRecord record;
    record.setData(static_cast<unsigned long>(bytes.size()), bytes.data());
    const int loaded = set.load(record, why);
    EXPECT_EQ(record.getOffset(), loaded ? record.getLen() : 0);
    return loaded;
}

class English : public ::testing::Test {
  protected:
    ~English() override { GMSG::language = before_; }

  private:
    decltype(GMSG::language) before_ = std::exchange(GMSG::language, GMSG::English);
};

class Tags : public English {
  protected:
    Tags() {
        first = set.add(labelled("first"));
        second = set.add(rich());
        third = set.add(labelled("third"));
    }
    TvTagSet set;
    TvTagId first, second, third;
};

TEST_F(Tags, RefuseWhatCannotBe) {
    const std::pair<const char*, Spoil> cases[] = {
        {"coordinate", [](TvTag& tag) { tag.anchor.x = kNan; }},
        {"coordinate", [](TvTag& tag) { tag.anchor.y = -kInf; }},
        {"coordinate", [](TvTag& tag) { tag.offset.x = kInf; }},
        {"coordinate", [](TvTag& tag) { tag.offset.y = 2e9; }},
        {"width", [](TvTag& tag) { tag.width = -1; }},
        {"width", [](TvTag& tag) { tag.width = kNan; }},
        {"margin", [](TvTag& tag) { tag.margin = 100001; }},
        {"font", [](TvTag& tag) { tag.font.size = 0; }},
        {"line", [](TvTag& tag) { tag.line.dash[5] = -1; }},
        {"scale", [](TvTag& tag) { tag.minScale = 1; }},
        {"scale", [](TvTag& tag) { tag.maxScale = kInf; }},
        {"alignment", [](TvTag& tag) { tag.level = TvLevel::baseline; }},
        {"border", [](TvTag& tag) { tag.border = static_cast<TvTagBorder>(4); }},
    };
    const std::string before = stored(set);
    for (const auto& [word, spoil] : cases) {
        TvTag tag = rich();
        spoil(tag);
        CString why;
        EXPECT_EQ(set.add(tag, &why), 0U);
        EXPECT_NE(why.str().find(word), std::string::npos) << why.c_str();
        EXPECT_EQ(set.change(first, tag), 0) << word;
        EXPECT_EQ(set.insert(0, 99, tag), 0) << word;
    }
    const TvTagMove moves[] = {{first, {1, 1}}, {second, {kNan, 0}}};
    EXPECT_EQ(set.move(moves), 0);
    EXPECT_EQ(set.remove(Ids{first, 99}), 0);
    EXPECT_EQ(set.insert(4, 99, rich()), 0);
    EXPECT_EQ(set.insert(0, second, rich()), 0);
    EXPECT_EQ(stored(set), before);
}

/// Random changes against a list of numbers, each of which can be taken back.
TEST(TagSet, KeepsTheOrderOfDrawing) {
    std::minstd_rand random;
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() / 64) % n; };
    TvTagSet set;
    Ids model;
    const auto at = [&](std::size_t i) { return model.begin() + static_cast<std::ptrdiff_t>(i); };
    for (int i = 0; i < 3000; ++i) {
        const std::size_t place = model.empty() ? 0 : below(model.size());
        const std::size_t to = below(model.size() + 3);
        if (model.size() < 3 || below(3) == 0) {
            model.push_back(set.add(labelled("x")));
        } else if (below(2) == 0) {
            const TvTagId id = model[place];
            const auto tag = set.find(id);
            ASSERT_EQ(set.remove(id), 1);
            model.erase(at(place));
            if (below(3) == 0) continue;
            model.insert(at(std::min(to, model.size())), id);
            ASSERT_EQ(set.insert(std::min(to, model.size() - 1), id, *tag), 1);
        } else {
            const TvTagId id = model[place];
            ASSERT_EQ(set.moveTo(id, to), 1);
            model.erase(at(place));
            model.insert(at(std::min(to, model.size())), id);
        }
        ASSERT_EQ(set.ids(), model);
        for (std::size_t k = 0; k < model.size(); ++k) ASSERT_EQ(set.place(model[k]), k);
    }
}

TEST_F(Tags, AreSelected) {
    set.setSelection(Ids{third, 77, first});
    EXPECT_EQ(set.selection(), (Ids{first, third}));
    set.bringToFront(first);
    EXPECT_EQ(set.selection(), (Ids{third, first}));
    const auto before = set.selectionChanges();
    EXPECT_EQ(set.select(first), 1);
    EXPECT_EQ(set.select(77), 0);
    EXPECT_EQ(set.selectionChanges(), before);
    set.remove(first);
    EXPECT_NE(set.selectionChanges(), before);
    EXPECT_EQ(set.selection(), Ids{third});
}

struct Listener : TvTagListener {
    explicit Listener(TvTagSet& set) { listenTo(&set); }
    void tagsChanged() override {
        ++told;
        const auto then = what;  // it may delete this listener
        then();
    }
    int told = 0;
    std::function<void()> what = [] {};
};

TEST_F(Tags, TellEachListenerOnce) {
    Listener listener(set);
    const Ids twice{first, third, first};
    const TvTagMove moved{second, {9, 9}};
    const auto move = [&] { set.move({&moved, 1}); };
    const auto change = [&] { set.change(second, labelled("other")); };
    const std::pair<int, std::function<void()>> cases[] = {
        {1, [&] { set.remove(twice); }},
        {1, change},
        {0, change},
        {1, move},
        {0, move},
        {0, [&] { set.bringToFront(second); }},
        {1, [&] { set.pasteTags(set.copyTags(set.ids()), {}, nullptr); }},
        {1, [&] { set.clear(); }},
        {0, [&] { set.clear(); }},
    };
    for (const auto& [told, act] : cases) {
        listener.told = 0;
        act();
        EXPECT_EQ(listener.told, told) << &told - &cases[0].first;
    }
}

TEST(TagSet, MayBeDeletedByWhoIsTold) {
    auto set = std::make_unique<TvTagSet>();
    auto leaves = std::make_unique<Listener>(*set);
    Listener ends(*set);
    Listener late(*set);
    leaves->what = [&] { leaves.reset(); };
    ends.what = [&] {
        ends.what = [] {};
        set.reset();
    };
    EXPECT_EQ(set->add(labelled("a")), 1U);
    EXPECT_EQ(set, nullptr);
    EXPECT_EQ(late.told, 1);  // of the end
    EXPECT_EQ(late.tagSet(), nullptr);
}

TEST_F(Tags, ComeBackFromARecord) {
    set.sendToBack(third);
    TvTagSet again;
    again.add(labelled("dropped"));
    again.select(1);
    ASSERT_EQ(load(again, stored(set)), 1);
    EXPECT_EQ(again.ids(), (Ids{third, first, second}));
    EXPECT_EQ(*again.find(second), rich());
    EXPECT_TRUE(again.selection().empty());
    EXPECT_EQ(stored(again), stored(set));
    EXPECT_EQ(again.add(rich()), third + 1);
}

/// What the bytes say is impossible, though their check sum is right.
TEST_F(Tags, RefuseImpossibleBytes) {
    constexpr std::size_t kCount = 12;
    constexpr std::size_t kId = kCount + 4;
    constexpr std::size_t kText = kId + 8;
    constexpr std::size_t kAnchor = kText + 5;  // of "first"
    constexpr std::size_t kAlign = kAnchor + 8 * 8;
    const std::string whole = stored(set);
    const std::tuple<const char*, std::size_t, char> cases[] = {
        {"newer version", 4, 101},        {"does not match", 4, 99},
        {"damaged from byte 16", kId, 0}, {"damaged from byte", kId, 2},
        {"from byte 16", kAlign, 3},      {"from byte 16", kAlign + 1, 2},
        {"from byte 16", kAlign + 3, 64}, {"from byte", kCount, 2},
        {"from byte", kCount, 4},         {"from byte 16", kAnchor + 7, '\x7F'},
    };
    for (const auto& [sentence, place, byte] : cases) {
        std::string bytes = whole;
        bytes[place] = byte;
        if (place == kAnchor + 7) bytes[place - 1] = '\xF0';
        toolbox::base::store(
            bytes.data() + bytes.size() - 4,
            toolbox::canvas::checkSum(std::string_view(bytes).substr(4, bytes.size() - 8)));
        CString why;
        EXPECT_EQ(load(set, bytes, &why), 0) << place;
        EXPECT_NE(why.str().find(sentence), std::string::npos) << why.c_str();
    }
    for (std::size_t i = 0; i < whole.size(); ++i) EXPECT_EQ(load(set, whole.substr(0, i)), 0) << i;
    EXPECT_EQ(stored(set), whole);
}

TEST_F(Tags, ArePasted) {
    TvTagSet other;
    other.add(labelled("there"));
    other.select(1);
    ASSERT_EQ(other.pasteTags(set.copyTags(Ids{third, first, 99}), {10, 20}, nullptr), 1);
    EXPECT_EQ(other.selection(), (Ids{2, 3}));
    EXPECT_EQ(other.find(2)->text, "first");
    EXPECT_EQ(other.find(3)->anchor, (TvPoint{10, 20}));
    CString why;
    EXPECT_EQ(other.pasteTags("text", {}, &why), 0);
    EXPECT_STREQ(why.c_str(), "These data are not labels.");
    EXPECT_EQ(other.pasteTags(set.copyTags(set.ids()), {kInf, 0}, &why), 0);
    EXPECT_EQ(other.count(), 3U);
}

}  // namespace
