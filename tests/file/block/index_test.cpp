#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <unordered_map>

#include "toolbox/block_files.h"

namespace {

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

}  // namespace
