#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"

using namespace block_kit;

namespace {

constexpr std::uint32_t kListId = 0xFFFFFFEE;

const std::vector<Block> kBlocks = {{1, "first", "One", 1, 2},
                                    {2, std::string(40000, 'x'), "Long", 3, 4},
                                    {9, "", "None", 5, 6},
                                    {8, "down"},
                                    {0xFFFFFFF0, std::string(700, 'd')},
                                    {0, "zero"}};

/// Writes blocks with checksums, one commit after each `perCommit` of them.
void saveSummed(const std::string& name, const std::vector<Block>& blocks,
                std::size_t perCommit = 100) {
    TarvFileWrite file;
    file.setChecksums(1);
    ASSERT_EQ(file.open(name.c_str()), 1);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ASSERT_EQ(file.writeBloc(made(blocks[i])), 1);
        if ((i + 1) % perCommit == 0) {
            ASSERT_EQ(file.commit(), 1);
        }
    }
    ASSERT_EQ(file.commit(), 1);
    ASSERT_EQ(file.close(), 1);
}

TarvFileRead::ChecksumState stateOf(const std::string& name) {
    TarvFileRead file;
    EXPECT_EQ(file.open(name.c_str()), 1);
    return file.getChecksumState();
}

/// Copies a file block by block as a program does that knows no checksums; `change` may change a
/// block on the way.
void copyUnaware(const std::string& from, const std::string& to,
                 const std::function<void(Block&)>& change = {}) {
    TarvFileRead source;
    ASSERT_EQ(source.open(from.c_str()), 1);
    TarvFileWrite target;
    ASSERT_EQ(target.open(to.c_str()), 1);
    unsigned long id = 0;
    for (int more = source.getIndex()->getFirstID(id); more;
         more = source.getIndex()->getNextID(id)) {
        TarvBlocFile block;
        ASSERT_EQ(source.getBloc(id, block), 1);
        Block copied = seen(block);
        if (change) change(copied);
        ASSERT_EQ(target.writeBloc(made(copied)), 1);
    }
    ASSERT_EQ(target.commit(), 1);
}

TEST(BlockChecksums, AreCurrentAfterEveryCommit) {
    TempFolder folder;
    const std::string name = folder / "summed.dat";
    for (const std::size_t perCommit : {1u, 2u, 100u}) {
        saveSummed(name, kBlocks, perCommit);
        EXPECT_EQ(stateOf(name), TarvFileRead::ChecksumsCurrent) << perCommit;
        EXPECT_EQ(fetched(name, kBlocks), kBlocks) << perCommit;
    }
    save(name, kBlocks);
    EXPECT_EQ(stateOf(name), TarvFileRead::NoChecksums);
}

// Whatever byte is damaged, nothing else than what was written comes out of the file.
TEST(BlockChecksums, TellEveryDamagedByte) {
    TempFolder folder;
    const std::vector<Block> blocks = {{1, "first", "One"}, {2, "second one", "Two"}};
    saveSummed(folder / "whole.dat", blocks);
    const std::string whole = folder.read("whole.dat");
    int wrong = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x10);
        folder.write("damaged.dat", bytes);
        TarvFileRead file;
        if (!file.open((folder / "damaged.dat").c_str())) continue;
        for (const Block& block : blocks) {
            TarvBlocFile out;
            if (file.getBloc(block.id, out)) {
                EXPECT_EQ(seen(out), block) << "byte " << at;
            } else {
                wrong += file.getBlocFault() == TarvFileRead::WrongChecksum;
            }
        }
    }
    // Each byte of the two blocks spoils that block, and no other byte does.
    EXPECT_EQ(wrong, 148 * 2 + 5 + 10);
}

TEST(BlockChecksums, NeverSearchForAnotherBlock) {
    TempFolder folder;
    // The data of one block holds an image of the other, which a search would find.
    const std::string image = folder / "image.dat";
    save(image, {{5, "old!"}});
    const std::string old = folder.read("image.dat").substr(156, 4 + 152);
    const std::vector<Block> blocks = {{4, old}, {5, "new!"}};
    for (const bool summed : {false, true}) {
        const std::string name = folder / "file.dat";
        summed ? saveSummed(name, blocks) : static_cast<void>(save(name, blocks));
        std::string bytes = folder.read("file.dat");
        bytes[160 + 148 + old.size()] ^= 1;  // the identifier of the second block
        folder.write("file.dat", bytes);
        TarvFileRead file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        TarvBlocFile out;
        EXPECT_EQ(file.getBloc(5, out), !summed);
        EXPECT_EQ(file.getBlocFault(),
                  summed ? TarvFileRead::WrongChecksum : TarvFileRead::NoFault);
        EXPECT_EQ(file.getBloc(6, out), 0);
        EXPECT_EQ(file.getBlocFault(), TarvFileRead::NotThere);
    }
}

// The list is found and proves as before wherever else a byte is damaged.
TEST(BlockChecksums, ProveThoughTheRestIsDamaged) {
    TempFolder folder;
    const std::string name = folder / "file.dat";
    const std::vector<Block> whole = {{1, "first", "One"}, {2, "second one!", "Two"}};
    saveSummed(name, whole);
    const std::string bytes = folder.read("file.dat");
    const std::size_t entries = bytes.size() - 12 - 3 * 8;  // the list's, then one for each block
    const struct {
        const char* what;
        std::size_t at;
    } cases[] = {{"header", 0},
                 {"place of the index in the header", 151},
                 {"format version", 152},
                 {"description of the index", entries - 9},
                 {"identifier of the list", entries},
                 {"offset of the list", entries + 4},
                 {"offset of a block", entries + 8 + 4},
                 {"end of the index", bytes.size() - 1}};
    for (const auto& [what, at] : cases) {
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x40);
        folder.write("file.dat", damaged);
        EXPECT_EQ(stateOf(name), TarvFileRead::ChecksumsDamaged) << what;
        EXPECT_EQ(fetched(name, whole), whole) << what;
        damaged[160 + 136] = 'F';
        folder.write("file.dat", damaged);
        EXPECT_EQ(fetched(name, whole), std::vector{whole[1]}) << what;
    }
}

// A program that does not know the list must not make good blocks unreadable.
TEST(BlockChecksums, AreOutdatedByThoseWhoDoNotKnowThem) {
    TempFolder folder;
    const std::string name = folder / "summed.dat";
    saveSummed(name, kBlocks);

    std::vector<Block> changed = kBlocks;
    changed[0].data = "FIRST";  // as long as before, so that all blocks keep their lengths
    const std::string copy = folder / "copy.dat";
    copyUnaware(name, copy, [&](Block& block) {
        if (block.id == 1) block.data = changed[0].data;
    });
    EXPECT_EQ(stateOf(copy), TarvFileRead::ChecksumsOutdated);
    EXPECT_EQ(fetched(copy, changed), changed);

    // Written anew in the order of the file: all blocks are where they were, the list's too.
    std::string sorted = folder.read("summed.dat");
    const std::size_t entries = sorted.size() - 12 - 8 * (kBlocks.size() + 1);
    std::rotate(sorted.begin() + static_cast<std::ptrdiff_t>(entries),
                sorted.begin() + static_cast<std::ptrdiff_t>(entries + 8), sorted.end() - 12);
    sorted[160 + 136] = 'F';
    folder.write("copy.dat", sorted);
    EXPECT_EQ(stateOf(copy), TarvFileRead::ChecksumsOutdated);
    changed[0].data = "First";
    EXPECT_EQ(fetched(copy, changed), changed);

    {
        TarvFileRead before;
        ASSERT_EQ(before.open(name.c_str()), 1);
        TarvFileWrite appending;
        appending.setHeader(*before.getHeader());
        appending.setIndex(*before.getIndex());
        before.close();
        auto file =
            std::make_unique<APIFile>(name.c_str(), GENERIC_WRITE | GENERIC_READ, 0, OPEN_EXISTING);
        file->SeekToEnd();
        appending.setFile(file.release());
        ASSERT_EQ(appending.open(name.c_str()), 1);
        ASSERT_EQ(appending.writeBloc(made({30, "more"})), 1);
        ASSERT_EQ(appending.commit(), 1);
    }
    std::vector<Block> appended = kBlocks;
    appended.push_back({30, "more"});
    EXPECT_EQ(stateOf(name), TarvFileRead::ChecksumsOutdated);
    EXPECT_EQ(fetched(name, appended), appended);
}

TEST(BlockChecksums, LeaveOutWhatIsNotKnown) {
    TempFolder folder;
    const std::string name = folder / "late.dat";
    TarvFileWrite file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    ASSERT_EQ(file.writeBloc(made(kBlocks[0])), 1);
    file.setChecksums(1);
    for (const std::size_t i : {1u, 2u, 3u, 4u, 5u}) ASSERT_EQ(file.writeBloc(made(kBlocks[i])), 1);
    EXPECT_EQ(file.writeBloc(made({kListId, "mine"})), 0);
    ASSERT_EQ(file.commit(), 1);
    ASSERT_EQ(file.close(), 1);
    std::string bytes = folder.read("late.dat");
    bytes[160 + 136] = 'F';        // in the first block, whose sum nobody knows
    bytes[160 + 153 + 136] = 'y';  // in the second
    folder.write("late.dat", bytes);
    std::vector<Block> left = kBlocks;
    left[0].data = "First";
    left.erase(left.begin() + 1);
    EXPECT_EQ(stateOf(name), TarvFileRead::ChecksumsCurrent);
    EXPECT_EQ(fetched(name, kBlocks), left);
}

}  // namespace
