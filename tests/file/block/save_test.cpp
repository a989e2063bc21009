#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "file/block/block_kit.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"

using namespace block_kit;

namespace {

const std::vector<Block> kOld = {{1, "the old file."}};

/// Several pieces of gathered blocks and a large one.
std::vector<Block> newBlocks() {
    std::vector<Block> blocks = {{2, "small"}, {3, std::string(100000, 'L')}};
    for (std::uint32_t i = 10; i < 60; ++i) blocks.push_back({i, std::string(12000, 's')});
    return blocks;
}

class BlockSave : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(save(name, kOld), 1); }

    TempFolder folder;
    std::string name = folder / "plan.dat";
    toolbox::testing::RecordingPrompt told;
    const std::vector<std::string> both{"plan.bak", "plan.dat"};
    const std::vector<Block> fresh = newBlocks();
};

TEST_F(BlockSave, FailsAndTellsWhenAnyWriteFails) {
    const std::string old = folder.read("plan.dat");
    enum Fault { Error, Short, ShortForGood };
    for (const bool safely : {false, true}) {
        folder.write("plan.dat", old);
        FaultyFiles counted;
        ASSERT_EQ(save(name, fresh, safely), 1);
        const int writes = counted.made(FileCall::write);
        ASSERT_GT(writes, 5);
        const int backup = safely ? writes : 1;  // its failure alone stops nothing
        for (const Fault fault : {Error, Short, ShortForGood}) {
            for (int nth = 1; nth <= writes; ++nth) {
                if (nth == backup) continue;
                folder.write("plan.dat", old);
                FaultyFiles faults;
                if (fault == Error)
                    faults.fail(FileCall::write, nth, ERROR_DISK_FULL);
                else
                    faults.shorten(FileCall::write, nth, 100, fault == ShortForGood);
                told.boxes.clear();
                EXPECT_EQ(save(name, fresh, safely), 0) << nth;
                EXPECT_FALSE(told.boxes.empty()) << nth;
                EXPECT_TRUE(folder.read(safely ? "plan.dat" : "plan.bak") == old) << nth;
                EXPECT_EQ(folder.names(), both) << nth;
            }
        }
    }
}

TEST_F(BlockSave, StaysFailedAfterAFailedWriteAndClosingTellsOfLostBlocks) {
    const Block small{4, "four"};
    const Block large{3, std::string(20000, 'x')};
    using Blocks = std::vector<Block>;
    const std::tuple<const char*, Blocks, Blocks, bool, int> cases[] = {
        {"refused, not lost", {}, {large, small}, true, 1},
        {"lost by the next block", {small}, {large}, true, 0},
        {"lost by the index", {small}, {}, true, 0},
        {"only the index, which commit tells", {}, {}, true, 1},
        {"lost by closing", {small}, {}, false, 0}};
    for (const auto& [what, taken, refused, commits, closed] : cases) {
        SCOPED_TRACE(what);
        TarvFileWrite file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        FaultyFiles faults;
        faults.fail(FileCall::write, 1, ERROR_DISK_FULL);
        for (const Block& block : taken) EXPECT_EQ(file.writeBloc(made(block)), 1);
        for (const Block& block : refused) EXPECT_EQ(file.writeBloc(made(block)), 0);
        if (commits) {
            EXPECT_EQ(file.commit(), 0);
        }
        EXPECT_EQ(file.close(), closed);
        EXPECT_EQ(faults.made(FileCall::write), 1);
    }
}

TEST_F(BlockSave, MakesABackupAndGoesOnWithoutOne) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(save(name, fresh), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "0");
    EXPECT_EQ(fetched(folder / "plan.bak", kOld), kOld);
    FaultyFiles faults;
    for (const bool safely : {false, true}) {
        faults.fail(FileCall::createLike, safely ? 2 : 1, ERROR_DISK_FULL);
        EXPECT_EQ(save(name, fresh, safely), 1);
        EXPECT_EQ(fetched(folder / "plan.bak", kOld), kOld);
        EXPECT_EQ(fetched(name, fresh), fresh);
    }
}

TEST_F(BlockSave, SafelyPutsTheFileInPlaceOnlyWhenItIsWhole) {
    const std::string old = folder.read("plan.dat");
    using Spoil = void (*)(FaultyFiles&);
    const Spoil spoils[] = {
        [](FaultyFiles& f) { f.fail(FileCall::createLike, 1, ERROR_ACCESS_DENIED); },
        [](FaultyFiles& f) { f.fail(FileCall::flush, 1, ERROR_DISK_FULL); },
        [](FaultyFiles& f) { f.fail(FileCall::readAt, 1, ERROR_READ_FAULT); },
        [](FaultyFiles& f) { f.shorten(FileCall::readAt, 2, 100, true); },
        [](FaultyFiles& f) { f.shorten(FileCall::readAt, 4, 11, true); },
    };
    for (const Spoil& spoil : spoils) {
        FaultyFiles faults;
        spoil(faults);
        EXPECT_EQ(save(name, fresh, true), 0) << &spoil - spoils;
        EXPECT_TRUE(folder.read("plan.dat") == old);
        EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
    }
    std::string order;
    FaultyFiles calls;
    calls.before = [&](FileCall call, int) {
        if (call == FileCall::flush) order += "file ";
        if (call == FileCall::replace) order += "rename ";
        if (call == FileCall::flushFolder) order += "folder ";
    };
    EXPECT_EQ(save(name, fresh, true), 1);
    EXPECT_EQ(order, "file rename rename folder ");  // the backup is renamed first
    EXPECT_EQ(fetched(name, fresh), fresh);
    EXPECT_TRUE(folder.read("plan.bak") == old);
    EXPECT_EQ(folder.names(), both);
}

TEST_F(BlockSave, SafelyReadsEveryBlockBackBeforeItPutsTheFileInPlace) {
    const std::string old = folder.read("plan.dat");
    const long second = 160 + 148 + 4;
    const std::tuple<const char*, long, std::uint32_t, int> cases[] = {
        {"the data, which nothing tells", second + 136, 5, 1},
        {"an identifier", second, 4, 0},
        {"a length", second + 132, 400, 0},
        {"a terminator", second + 148, 0xFFFFFFFE, 0},
        {"nothing at all, without commit", -1, 0, 0}};
    for (const auto& [what, at, value, result] : cases) {
        SCOPED_TRACE(what);
        folder.write("plan.dat", old);
        TarvFileWrite file;
        file.setSafeSave(1);
        ASSERT_EQ(file.open(name.c_str()), 1);
        EXPECT_EQ(file.writeBloc(made({1, "one."})), 1);
        EXPECT_EQ(file.writeBloc(made({2, "two."})), 1);
        if (at >= 0) {
            EXPECT_EQ(file.commit(), 1);
            ASSERT_EQ(file.getFile()->SeekTo(at), 1);
            ASSERT_EQ(file.getFile()->write(word(value).data(), 4), 1);
        }
        EXPECT_EQ(file.close(), result);
        EXPECT_EQ(folder.read("plan.dat") == old, result == 0);
    }
}

TEST_F(BlockSave, SafelyKeepsWhatCouldNotBePutInPlace) {
    const std::string old = folder.read("plan.dat");
    {
        FaultyFiles faults;
        faults.fail(FileCall::replace, 2, ERROR_SHARING_VIOLATION);  // 1: the backup
        EXPECT_EQ(save(name, fresh, true), 1);                       // for a moment only
        EXPECT_TRUE(told.boxes.empty());
    }
    folder.write("plan.dat", old);
    FaultyFiles faults;
    faults.fail(FileCall::replace, 2, ERROR_WRITE_FAULT);
    EXPECT_EQ(save(name, fresh, true), 0);
    EXPECT_TRUE(folder.read("plan.dat") == old);
    std::vector<std::string> names = folder.names();
    ASSERT_EQ(names.size(), 3u);
    EXPECT_TRUE(names[2].starts_with("plan.dat.saved-"));
    EXPECT_EQ(fetched(folder / names[2], fresh), fresh);
    ASSERT_EQ(told.boxes.size(), 1u);
    EXPECT_NE(told.boxes[0].text.find(names[2]), std::string::npos);

    auto& files = *toolbox::platform::current().files;
    files.setAttributes(name.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(save(name, fresh, true), 0);  // refused at once
    EXPECT_EQ(folder.names(), names);
    files.setAttributes(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(save(name, fresh, true), 1);
    EXPECT_EQ(folder.names(), names);  // what was kept is no leftover
}

#if !defined(_WIN32)
TEST_F(BlockSave, SafelyKeepsLinksAndRights) {
    namespace fs = std::filesystem;
    fs::create_directory(folder / "real");
    const std::string real = folder / "real/plan.dat";
    fs::rename(name, real);
    fs::create_symlink("real/plan.dat", name);
    fs::permissions(real, fs::perms(04640));
    EXPECT_EQ(save(name, fresh, true), 1);
    EXPECT_TRUE(fs::is_symlink(name));
    EXPECT_EQ(fetched(real, fresh), fresh);
    EXPECT_EQ(fs::status(real).permissions(), fs::perms(0640));
    EXPECT_EQ(fs::status(folder / "plan.bak").permissions(), fs::perms(0640));
}
#endif

TEST_F(BlockSave, NeverGrowsPastWhatSeekToTakes) {
    const unsigned long most = 0x7FFFFFFF;
    constexpr unsigned long kIndex = 148 + 8, kList = 180 + 2 * 16;
    const struct {
        unsigned long at;
        int sums;
        int result;
    } cases[] = {{most - 152 - kIndex, 0, 1},
                 {most - 152 - kIndex + 1, 0, 0},
                 {most, 0, 0},
                 {most - 152 - kIndex - 8 - kList, 1, 1},
                 {most - 152 - kIndex - 8 - kList + 1, 1, 0}};
    for (const auto& [at, sums, result] : cases) {
        std::filesystem::remove(name);  // or its backup would have 2 GiB, no longer sparse
        TarvFileWrite file;
        file.setChecksums(sums);
        ASSERT_EQ(file.open(name.c_str()), 1);
        ASSERT_EQ(file.getFile()->SeekTo(static_cast<long>(at)), 1);
        FaultyFiles calls;
        EXPECT_EQ(file.writeBloc(made({9, "four"})), result);
        EXPECT_EQ(file.getIndex()->getOffset(9), result ? at : 0);
        EXPECT_EQ(calls.made(FileCall::write), result);
        calls.fail(FileCall::write, 1, ERROR_DISK_FULL);  // nothing is to be 2 GiB long here
        if (at == most) {
            EXPECT_EQ(file.commit(), 0);
        }
    }
}

}  // namespace
