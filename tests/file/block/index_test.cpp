#include <gtest/gtest.h>

#include <array>
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
    EXPECT_EQ(step(next), kNowhere);
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
    for (std::size_t kind = 0; kind < 4; ++kind) {
        TarvFileIndex index;
        std::unordered_map<std::uint32_t, unsigned long> model;
        for (std::uint32_t i = 0; i < 3000; ++i) {
            const auto any = static_cast<std::uint32_t>(random());
            // Ascending, high bits only, dense with repeats, spread.
            const std::uint32_t id = std::array{i, i << 20, any % 2000, any}[kind];
            const bool isNew = model.emplace(id, i + 1).second;
            ASSERT_EQ(index.addBloc(id, i + 1), isNew) << id;
        }
        for (std::uint32_t i = 0; i < 3000; ++i) {
            const auto id = static_cast<std::uint32_t>(i % 2 ? random() : i);
            const auto found = model.find(id);
            ASSERT_EQ(index.getOffset(id), found == model.end() ? 0 : found->second);
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
