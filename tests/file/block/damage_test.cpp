// Damaged files: what is fetched from them is in them, and takes no more memory than they justify.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <new>

#include "plain_reader.h"
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

const std::vector<Block> kBlocks = {
    {7, "8 bytes.", "first"}, {9, "", "none", 1, 2}, {12, "12 bytes ok."}};

class DamagedBlockFile : public testing::TestWithParam<std::uint32_t> {
  protected:
    /// What the file gives is what a plain reading of its bytes finds.
    void check(const std::string& bytes, const std::string& what) {
        // Emptying a file makes some systems wait for the disk; a new one is never written there.
        std::filesystem::remove(folder / "damaged.dat");
        const std::string name = folder.write("damaged.dat", bytes);
        const PlainReader plain(bytes);
        largestAllocation = 0;
        TarvFileRead file;
        ASSERT_EQ(file.open(name.c_str()), plain.opens()) << what;
        ASSERT_TRUE(!plain.opens() || givesWhatItHolds(file, plain)) << what;
        ASSERT_LE(largestAllocation, bytes.size() + (1u << 20) + 4096) << what;
    }

    TempFolder folder;
    const std::string whole = fileOf(GetParam(), kBlocks);
};

TEST_P(DamagedBlockFile, GivesWhatItsBytesHold) {
    ASSERT_TRUE(PlainReader(whole).opens());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        check(whole.substr(0, at), "cut at " + std::to_string(at));
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        check(bytes, "byte " + std::to_string(at) + " changed");
    }
    // Bit 0 of the mask tells whether blocks are searched for where the index misplaces them.
    const auto size = static_cast<std::uint32_t>(whole.size());
    for (const char mask : {'\0', '\1'})
        for (std::size_t at = 0; at + 4 <= whole.size(); at += 4)
            for (const std::uint32_t value :
                 {0u, 0x7FFFFFFFu, 0xFFFFFFFFu, size - 4, 0x00200000u}) {
                std::string bytes = whole;
                bytes[4] = mask;
                bytes.replace(at, 4, word(value));
                check(bytes, "word " + std::to_string(value) + " at " + std::to_string(at));
            }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedBlockFile, testing::Values(100, 199, 200, 209, 210, 999));

using DamagedIndex = DamagedBlockFile;

TEST_P(DamagedIndex, OfEqualEntriesTheFirstCounts) {
    std::string entries = word(3) + word(160) + word(3) + word(8) + word(5) + word(8);
    for (std::uint32_t i = 0; i < GetParam(); ++i) entries += word(100 + i % 90) + word(8);
    entries += word(3) + word(4) + word(5) + word(160);
    // A file too small for its entries is never given a table.
    const std::string block = record(210, {3, std::string(20000, 'x')});
    const auto end = static_cast<std::uint32_t>(160 + block.size());
    check(header(210, 0, end) + block + record(210, {0xFFFFFFEF, entries}), "equal entries");
}

INSTANTIATE_TEST_SUITE_P(WalkedAndInATable, DamagedIndex, testing::Values(0, 100));

}  // namespace
