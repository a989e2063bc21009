#include <gtest/gtest.h>

#include <random>
#include <unordered_map>
#include <utility>

#include "toolbox/block_files.h"

namespace {

TEST(BlockIndex, CursorWalksBothWaysAndStopsAtTheEnds) {
    TarvFileIndex index;
    constexpr unsigned long kNowhere = 99;
    const auto step = [&](int (TarvFileIndex::*move)(unsigned long&)) {
        unsigned long id = kNowhere;
        return (index.*move)(id) ? id : kNowhere;
    };
    const auto first = &TarvFileIndex::getFirstID, next = &TarvFileIndex::getNextID;
    const auto previous = &TarvFileIndex::getPrevID, last = &TarvFileIndex::getLastID;
    for (const auto move : {first, next, previous, last}) EXPECT_EQ(step(move), kNowhere);
    for (unsigned long each : {5ul, 3ul, 4ul}) index.addBloc(each, each * 1000);
    const std::pair<int (TarvFileIndex::*)(unsigned long&), unsigned long> walk[] = {
        {first, 5},       {previous, kNowhere}, {next, 3}, {next, 4},
        {next, kNowhere}, {previous, 3},        {last, 4}};
    for (const auto& [move, id] : walk) EXPECT_EQ(step(move), id);
    index.flushIndex();
    index.addBloc(1, 1);
    EXPECT_EQ(step(previous), 1u);
}

TEST(BlockIndex, FindsEveryIdentifierAmongManyAsAPlainMapDoes) {
    std::mt19937 random(1);
    // Ascending, high bits only, dense with repeats, spread.
    const std::uint32_t ranges[] = {1, 1u << 20, 0, 0};
    for (int kind = 0; kind < 4; ++kind) {
        TarvFileIndex index;
        std::unordered_map<std::uint32_t, unsigned long> model;
        for (std::uint32_t i = 0; i < 3000; ++i) {
            const std::uint32_t id =
                kind < 2 ? i * ranges[kind]
                         : static_cast<std::uint32_t>(kind == 2 ? random() % 2000 : random());
            const bool isNew = model.emplace(id, i + 1).second;
            ASSERT_EQ(index.addBloc(id, i + 1), isNew) << id;
        }
        const TarvFileIndex copy = index;
        for (std::uint32_t i = 0; i < 3000; ++i) {
            const auto id = static_cast<std::uint32_t>(i % 2 ? random() : i);
            const auto found = model.find(id);
            ASSERT_EQ(copy.getOffset(id), found == model.end() ? 0 : found->second);
        }
        for (const auto& [id, offset] : model) ASSERT_EQ(index.getOffset(id), offset);
    }
}

TEST(BlockIndex, PacksOnlyWhenThereAreEntries) {
    TarvFileIndex index;
    index.setData(3, "old");
    EXPECT_EQ(index.setData(), 1);
    EXPECT_EQ(index.getLen(), 3u);
    index.addBloc(1, 0x0203);
    EXPECT_EQ(index.setData(), 1);
    EXPECT_EQ(std::string(index.getPData(), index.getLen()), std::string("\1\0\0\0\3\2\0\0", 8));
}

}  // namespace
