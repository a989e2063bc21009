#include <gtest/gtest.h>

#include "file/block/block_kit.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

using namespace block_kit;

namespace {

const std::vector<Block> kThree = {{7, "ten bytes.", "odd"},
                                   {0xFFFFFFFE, "", "empty", 1, 2},
                                   {3, std::string(70000, 'x'), "large"}};

class BlockFile : public testing::Test {
  protected:
    TempFolder folder;
    std::string name = folder / "plan.dat";
};

TEST_F(BlockFile, GivesBackEveryBlockInAnyOrder) {
    ASSERT_EQ(save(name, kThree), 1);
    const std::vector<Block> backwards(kThree.rbegin(), kThree.rend());
    EXPECT_EQ(fetched(name, backwards), backwards);
    TarvBlocFile out = made({99, "kept"});
    EXPECT_EQ(TarvFileRead().getBloc(7, out), 0);
    EXPECT_EQ(seen(out), (Block{99, "kept"}));
}

TEST_F(BlockFile, CommitsAgainAfterFurtherBlocksAndOverwritesNothing) {
    TarvFileWrite file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    EXPECT_EQ(file.open(name.c_str()), 0);
    for (const Block& block : kThree) {
        EXPECT_EQ(file.writeBloc(made(block)), 1);
        EXPECT_EQ(file.commit(), 1);
    }
    EXPECT_EQ(file.getHeader()->getMask(), 0u);  // not every block is whole words
    EXPECT_EQ(file.close(), 1);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.writeBloc(made(kThree[0])), 0);
    EXPECT_EQ(fetched(name, kThree), kThree);
}

TEST_F(BlockFile, FindsAnIdentifierAcrossTheChunksOfASearch) {
    const std::uint32_t chunk = 256 * 1024;
    for (std::uint32_t shift : {0u, 4u, 8u, 12u}) {
        const std::string bytes =
            std::string(chunk * 2 - 4 + shift, '\xFF') + word(0x12345678) + "tail";
        const std::string file = folder.write("scan.dat", bytes);
        TarvFileRead holder;
        holder.setFile(new APIFile(file.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
        TarvBlocFile block;
        EXPECT_EQ(block.findBloc(0x12345678, holder, 0), bytes.size() - 4);
        EXPECT_EQ(block.findBloc(0x12345678, holder, 2), 0u);
    }
}

/// A file whose bytes are all turned round.
class TurnedFile : public APIFile {
  public:
    using APIFile::APIFile;
    int read(void* buffer, unsigned long n) override {
        const int result = APIFile::read(buffer, n);
        turn(static_cast<char*>(buffer), n);
        return result;
    }
    int write(const void* bytes, unsigned long n) override {
        std::string turned(static_cast<const char*>(bytes), n);
        turn(turned.data(), n);
        return APIFile::write(turned.data(), n);
    }

  private:
    static void turn(char* bytes, unsigned long n) {
        for (unsigned long i = 0; i < n; ++i) bytes[i] = static_cast<char>(bytes[i] ^ 0xA5);
    }
};

TEST_F(BlockFile, GoesThroughTheFileOfTheApplication) {
    TarvFileWrite turned;
    const std::string other = folder / "turned.dat";
    turned.setFile(new TurnedFile(other.c_str(), GENERIC_WRITE, 0, CREATE_ALWAYS));
    ASSERT_EQ(turned.getFile()->SeekTo(30), 1);  // its header goes to the start all the same
    ASSERT_EQ(turned.open("unused"), 1);
    EXPECT_EQ(turned.writeBloc(made(kThree[2])), 1);
    EXPECT_EQ(turned.commit(), 1);
    EXPECT_EQ(turned.close(), 1);
    TarvFileRead back;
    back.setFile(new TurnedFile(other.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
    ASSERT_EQ(back.open("unused"), 1);
    TarvBlocFile out;
    EXPECT_EQ(back.getBloc(kThree[2].id, out), 1);
    EXPECT_EQ(seen(out), kThree[2]);
}

TEST_F(BlockFile, KeepsTheOrderWithWhatTheApplicationWritesItself) {
    TarvFileWrite file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    ASSERT_EQ(file.writeBloc(made({1, "one."})), 1);
    APIFile* own = file.getFile();
    ASSERT_EQ(own->write("spare", 5), 1);
    ASSERT_EQ(file.writeBloc(made({3, "three"})), 1);
    ASSERT_EQ(own->write("more", 4), 1);
    ASSERT_EQ(file.commit(), 1);
    file.close();
    EXPECT_EQ(folder.read("plan.dat").substr(160, 148 * 2 + 4 + 5 + 5 + 4),
              record(210, {1, "one."}) + "spare" + record(210, {3, "three"}) + "more");
    EXPECT_EQ(fetched(name, {{1, ""}, {3, ""}}), (std::vector<Block>{{1, "one."}, {3, "three"}}));
}

TEST_F(BlockFile, CopiesShareTheFileUntilTheLastLetsGo) {
    TarvFileWrite first;
    ASSERT_EQ(first.open(name.c_str()), 1);
    ASSERT_EQ(first.writeBloc(made({1, "one"})), 1);
    {
        TarvFileWrite second = first;
        EXPECT_EQ(second.writeBloc(made({1, "one"})), 0);
        EXPECT_EQ(second.writeBloc(made({2, "two"})), 1);
        EXPECT_EQ(first.close(), 1);
        EXPECT_EQ(second.commit(), 1);
    }
    EXPECT_EQ(fetched(name, {{2, ""}}), (std::vector<Block>{{2, "two"}}));
}

TEST_F(BlockFile, GivesNothingWhenTheFileIsShortenedWhileOpen) {
    ASSERT_EQ(save(name, kThree), 1);
    TarvFileRead file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    FaultyFiles faults;
    TarvBlocFile out;
    for (const std::uint32_t bytes : {0u, 100u, 70144u}) {
        faults.shorten(FileCall::readAt, 1, bytes, true);
        EXPECT_EQ(file.getBloc(3, out), 0) << bytes;
    }
    faults.shorten(FileCall::readAt, 1, 70145, true);  // of its terminator one byte
    EXPECT_EQ(file.getBloc(3, out), 1);
}

}  // namespace
