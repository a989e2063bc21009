// Damaged files: what is fetched from them is in them, and takes no more memory than they justify.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "block/block_kit.h"
#include "support/temp_folder.h"

namespace {
std::size_t largestAllocation = 0;
}

// The compiler sees malloc and free through the two of them and takes them for a mismatch.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

// All of this program's memory comes from here.
void* operator new(std::size_t size) {
    largestAllocation = std::max(largestAllocation, size);
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

using namespace block_kit;

namespace {

const std::vector<Block> kBlocks = {
    {7, "8 bytes.", "first"}, {9, "", "none", 1, 2}, {12, "12 bytes ok."}};

/// Whether the bytes of a file hold this block somewhere, but for the end of its terminator.
bool holds(const std::string& bytes, std::uint32_t format, const Block& block) {
    const std::size_t text = format >= 210 ? 128 : 64;
    const std::string data = word(static_cast<std::uint32_t>(block.data.size())) + block.data;
    std::string tail;
    if (format >= 200) tail += word(block.version);
    if (format >= 210) tail += word(block.recordVersion);
    const std::string id = word(block.id);
    for (std::size_t at = bytes.find(id); at != std::string::npos; at = bytes.find(id, at + 1)) {
        const std::size_t body = at + 4 + text;
        if (bytes.compare(at + 4, block.description.size(), block.description) == 0 &&
            body + data.size() + tail.size() < bytes.size() &&
            bytes.compare(body, data.size(), data) == 0 &&
            bytes.compare(body + data.size(), tail.size(), tail) == 0)
            return true;
    }
    return false;
}

class DamagedBlockFile : public testing::TestWithParam<std::uint32_t> {
  protected:
    /// Fetches everything there may be and checks it against the bytes.
    void check(const std::string& bytes, const std::string& what) {
        // Emptying a file makes some systems wait for the disk; a new one is never written there.
        std::filesystem::remove(folder / "damaged.dat");
        const std::string name = folder.write("damaged.dat", bytes);
        largestAllocation = 0;
        TarvFileRead file;
        if (file.open(name.c_str())) {
            const auto format = static_cast<std::uint32_t>(file.getHeader()->getVersionFile());
            unsigned long id = 0;
            std::vector<unsigned long> ids = {7, 9, 12, 1, 0, 0xFFFFFFFF};
            for (int more = file.getIndex()->getFirstID(id); more;
                 more = file.getIndex()->getNextID(id))
                ids.push_back(id);
            for (const unsigned long each : ids) {
                TarvBlocFile out;
                if (file.getBloc(each, out)) {
                    ++fetches;
                    const Block block = seen(out);
                    ASSERT_EQ(block.id, static_cast<std::uint32_t>(each)) << what;
                    ASSERT_TRUE(holds(bytes, format, block)) << what << ", block " << each;
                }
            }
        }
        ASSERT_LE(largestAllocation, bytes.size() + (1u << 20) + 4096) << what;
    }

    TempFolder folder;
    const std::string whole = fileOf(GetParam(), kBlocks);
    int fetches = 0;
};

TEST_P(DamagedBlockFile, TruncatedAnywhere) {
    check(whole, "whole");
    ASSERT_GE(fetches, 6);
    for (std::size_t size = 0; size < whole.size(); ++size)
        check(whole.substr(0, size), "cut at " + std::to_string(size));
}

TEST_P(DamagedBlockFile, WithAnyByteChanged) {
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int bits : {0x01, 0xFF}) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ bits);
            check(bytes, "byte " + std::to_string(at) + " changed");
        }
    }
}

TEST_P(DamagedBlockFile, WithHostileWords) {
    const auto size = static_cast<std::uint32_t>(whole.size());
    for (std::size_t at = 0; at + 4 <= whole.size(); at += 4)
        for (const std::uint32_t value : {0u, 0x7FFFFFFFu, 0xFFFFFFFFu, size - 4, 0x00200000u}) {
            std::string bytes = whole;
            bytes.replace(at, 4, word(value));
            check(bytes, "word " + std::to_string(value) + " at " + std::to_string(at));
        }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedBlockFile, testing::Values(100, 200, 210));

TEST(DamagedIndex, OfManyEntriesTakesMemoryForThemOnly) {
    TempFolder folder;
    std::string entries;
    for (std::uint32_t i = 0; i < 200000; ++i) entries += word(i % 5 ? i : 3) + word(i);
    const std::string bytes = header(210, 1, 160) + record(210, {0xFFFFFFEF, entries});
    const std::string name = folder.write("index.dat", bytes);
    largestAllocation = 0;
    TarvFileRead file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    TarvBlocFile out;
    for (unsigned long id = 0; id < 10; ++id) EXPECT_EQ(file.getBloc(id * 19999, out), 0);
    EXPECT_EQ(file.getIndex()->getOffset(3), 0u);
    EXPECT_EQ(file.getIndex()->getOffset(4), 4u);
    EXPECT_LE(largestAllocation, bytes.size() + (1u << 20));
}

}  // namespace
