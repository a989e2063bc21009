// Damaged files: what is undamaged is given, and takes no more memory than the file justifies.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"

namespace {
std::size_t largestAllocation = 0;
}

// All of this program's memory comes from here. Not inline: where only one of a pair is, the
// compiler takes them for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    largestAllocation = std::max(largestAllocation, size);
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

using namespace block_kit;

namespace {

class DamagedBlockFile : public testing::TestWithParam<std::uint32_t> {
  protected:
    /// A block that is as it was, like the header and the index, is given as it was; of another
    /// only what stands in the file.
    void check(const std::string& whole, const std::string& bytes, const std::string& what) {
        // Emptying a file makes some systems wait for the disk; a new one is never written there.
        std::filesystem::remove(folder / "damaged.dat");
        const std::string name = folder.write("damaged.dat", bytes);
        const auto isKept = [&](std::size_t from, std::size_t to) {
            return to <= bytes.size() &&
                   bytes.compare(from, to - from, whole, from, to - from) == 0;
        };
        std::size_t at = GetParam() == 100 ? 156 : 160;
        const bool isIndexed = isKept(0, at) && isKept(wordAt(whole, 148), whole.size());
        largestAllocation = 0;
        TarvFileRead file;
        ASSERT_TRUE(file.open(name.c_str()) == 1 || !isIndexed) << what;
        for (const Block& block : blocks) {
            const std::size_t from = at;
            at += record(GetParam(), block).size();
            TarvBlocFile out = made(kBefore);
            const bool isGiven = file.getBloc(block.id, out) == 1;
            if (isIndexed && isKept(from, at)) {
                ASSERT_EQ(seen(out), block) << what;
            } else if (isGiven) {
                ASSERT_TRUE(standsIn(bytes, seen(out))) << what;
            } else {
                ASSERT_EQ(seen(out), kBefore) << what;
            }
        }
        ASSERT_LE(largestAllocation, bytes.size() + (1u << 20) + 4096) << what;
    }

    const Block kBefore{77, "kept", "as it was"};
    const std::uint32_t version = GetParam() >= 200 ? 3 : 0;
    const std::uint32_t recordVersion = GetParam() >= 210 ? 2 : 0;
    const std::vector<Block> blocks = {{7, "8 bytes.", "first", version, recordVersion},
                                       {9, "", "none", version, recordVersion},
                                       {12, "12 bytes ok.", "", version, recordVersion}};
    TempFolder folder;
};

TEST_P(DamagedBlockFile, GivesWhatIsUndamaged) {
    // Bit 0 of the mask tells whether blocks are searched for where the index misplaces them.
    for (const char mask : {'\0', '\1'}) {
        std::string whole = fileOf(GetParam(), blocks);
        whole[4] = mask;
        const auto size = static_cast<std::uint32_t>(whole.size());
        for (std::size_t at = 0; mask && at < whole.size(); ++at) {
            check(whole, whole.substr(0, at), "cut at " + std::to_string(at));
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ 1);
            check(whole, bytes, "byte " + std::to_string(at) + " changed");
        }
        for (std::size_t at = 0; at + 4 <= whole.size(); at += 4)
            for (const std::uint32_t value :
                 {0u, 0x7FFFFFFFu, 0xFFFFFFFFu, size - 4, 0x00200000u}) {
                std::string bytes = whole;
                bytes.replace(at, 4, word(value));
                check(whole, bytes, "word " + std::to_string(value) + " at " + std::to_string(at));
            }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedBlockFile, testing::Values(100, 199, 200, 209, 210));

TEST(DamagedIndex, OfEqualEntriesTheFirstCounts) {
    TempFolder folder;
    for (const std::uint32_t more : {0u, 100u}) {  // walked, and in a table
        std::string entries = word(3) + word(160) + word(3) + word(8) + word(5) + word(8);
        for (std::uint32_t i = 0; i < more; ++i) entries += word(100 + i % 90) + word(8);
        entries += word(3) + word(4) + word(5) + word(160);
        // A file too small for its entries is never given a table.
        const Block block{3, std::string(20000, 'x')};
        const std::string bytes = record(210, block);
        const auto end = static_cast<std::uint32_t>(160 + bytes.size());
        const std::string name = folder.write(
            std::to_string(more), header(210, 0, end) + bytes + record(210, {0xFFFFFFEF, entries}));
        EXPECT_EQ(fetched(name, {block, {5, ""}}), std::vector<Block>{block});
        TarvFileRead file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        EXPECT_EQ(file.getIndex()->getNbrItem(), more + 5);
        EXPECT_EQ(file.getIndex()->getOffset(3), 160u);
        EXPECT_EQ(file.getIndex()->getOffset(5), 8u);
    }
}

}  // namespace
