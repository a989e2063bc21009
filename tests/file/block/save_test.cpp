#include <gtest/gtest.h>

#include <filesystem>

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
    const std::vector<Block> fresh = newBlocks();
};

TEST_F(BlockSave, FailsAndTellsWhenAnyWriteOrSeekFails) {
    const std::string old = folder.read("plan.dat");
    enum Fault { Error, Short, ShortForGood };
    for (const bool safely : {false, true}) {
        for (const Fault fault : {Error, Short, ShortForGood}) {
            for (int nth = 1;; ++nth) {
                folder.write("plan.dat", old);
                FaultyFiles faults;
                if (fault == Error)
                    faults.fail(FileCall::write, nth, ERROR_DISK_FULL);
                else
                    faults.shorten(FileCall::write, nth, 100, fault == ShortForGood);
                told.boxes.clear();
                const int result = save(name, fresh, safely);
                if (faults.made(FileCall::write) < nth) {
                    EXPECT_EQ(result, 1);
                    EXPECT_GT(nth, 5);
                    break;
                }
                ASSERT_EQ(result, 0) << nth;
                EXPECT_FALSE(told.boxes.empty()) << nth;
                EXPECT_TRUE(folder.read("plan.bak") == old) << nth;
                if (safely) {
                    EXPECT_TRUE(folder.read("plan.dat") == old) << nth;
                    EXPECT_EQ(folder.read("plan.dat.~save"), "<none>");
                }
            }
        }
    }
    FaultyFiles faults;
    for (int nth = 1; nth <= 2; ++nth) {
        faults.fail(FileCall::seek, nth, ERROR_INVALID_HANDLE);
        EXPECT_EQ(save(name, fresh), 0);
    }
}

TEST_F(BlockSave, StaysFailedAfterAFailedWriteAndClosingTellsOfLostBlocks) {
    const Block small{4, "four"};
    const Block large{3, std::string(20000, 'x')};
    const struct {
        const char* what;
        std::vector<Block> taken;
        std::vector<Block> refused;
        int closed;
    } cases[] = {{"refused, not lost", {}, {large, small}, 1},
                 {"lost by the next block", {small}, {large}, 0},
                 {"lost by closing", {small}, {}, 0}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        TarvFileWrite file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        FaultyFiles faults;
        faults.fail(FileCall::write, 1, ERROR_DISK_FULL);
        for (const Block& block : each.taken) EXPECT_EQ(file.writeBloc(made(block)), 1);
        for (const Block& block : each.refused) EXPECT_EQ(file.writeBloc(made(block)), 0);
        if (!each.refused.empty()) {
            EXPECT_EQ(file.commit(), 0);
        }
        EXPECT_EQ(file.close(), each.closed);
        EXPECT_EQ(faults.made(FileCall::write), 1);
    }
    for (const int blocks : {0, 1}) {  // a failed commit loses the blocks gathered before it
        TarvFileWrite file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        FaultyFiles faults;
        faults.fail(FileCall::write, 1, ERROR_DISK_FULL);
        if (blocks) {
            EXPECT_EQ(file.writeBloc(made(small)), 1);
        }
        EXPECT_EQ(file.commit(), 0);
        EXPECT_EQ(file.close(), blocks ? 0 : 1);
    }
}

TEST_F(BlockSave, MakesABackupAndGoesOnWithoutOne) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(save(name, fresh), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "0");
    EXPECT_EQ(fetched(folder / "plan.bak", kOld), kOld);
    FaultyFiles faults;
    for (const bool safely : {false, true}) {
        faults.fail(FileCall::copy, 1, ERROR_DISK_FULL);
        EXPECT_EQ(save(name, fresh, safely), 1);
        EXPECT_EQ(fetched(folder / "plan.bak", kOld), kOld);
        EXPECT_EQ(fetched(name, fresh), fresh);
    }
}

TEST_F(BlockSave, SafelyPutsTheFileInPlaceOnlyWhenItIsWhole) {
    const std::string old = folder.read("plan.dat");
    using Spoil = void (*)(FaultyFiles&);
    const Spoil spoils[] = {
        [](FaultyFiles& f) { f.fail(FileCall::flush, 1, ERROR_DISK_FULL); },
        [](FaultyFiles& f) { f.fail(FileCall::replace, 2, ERROR_ACCESS_DENIED); },  // 1: the backup
        [](FaultyFiles& f) { f.fail(FileCall::readAt, 1, ERROR_READ_FAULT); },
        [](FaultyFiles& f) { f.shorten(FileCall::readAt, 2, 100, true); },
        [](FaultyFiles& f) { f.shorten(FileCall::readAt, 4, 11, true); },
        [](FaultyFiles& f) { f.fail(FileCall::open, 2, ERROR_SHARING_VIOLATION); },
    };
    for (const Spoil& spoil : spoils) {
        FaultyFiles faults;
        spoil(faults);
        EXPECT_EQ(save(name, fresh, true), 0) << &spoil - spoils;
        EXPECT_TRUE(folder.read("plan.dat") == old);
        EXPECT_EQ(folder.read("plan.dat.~save"), "<none>");
    }
    TarvFileWrite abandoned;
    abandoned.setSafeSave(1);
    ASSERT_EQ(abandoned.open(name.c_str()), 1);
    EXPECT_EQ(abandoned.writeBloc(made(fresh[0])), 1);
    EXPECT_EQ(abandoned.close(), 0);
    EXPECT_TRUE(folder.read("plan.dat") == old);

    EXPECT_EQ(save(name, fresh, true), 1);
    EXPECT_EQ(fetched(name, fresh), fresh);
    EXPECT_TRUE(folder.read("plan.bak") == old);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"plan.bak", "plan.dat"}));
}

TEST_F(BlockSave, NeverGrowsPastWhatSeekToTakes) {
    const unsigned long most = 0x7FFFFFFF;
    const unsigned long index = 148 + 8;
    const struct {
        unsigned long at;
        int result;
    } cases[] = {{most - 152 - index, 1}, {most - 152 - index + 1, 0}, {most, 0}};
    // A system without a text for this error, Wine for one, leaves nothing to tell.
    auto* const system = toolbox::platform::current().system;
    const std::size_t tells = system->errorText(ERROR_FILE_TOO_LARGE).empty() ? 0 : 1;
    for (const auto& each : cases) {
        std::filesystem::remove(name);  // or its backup would have 2 GiB, no longer sparse
        TarvFileWrite file;
        ASSERT_EQ(file.open(name.c_str()), 1);
        ASSERT_EQ(file.getFile()->SeekTo(static_cast<long>(each.at)), 1);
        FaultyFiles calls;
        told.boxes.clear();
        EXPECT_EQ(file.writeBloc(made({9, "four"})), each.result);
        EXPECT_EQ(file.getIndex()->getOffset(9), each.result ? each.at : 0);
        EXPECT_EQ(calls.made(FileCall::write), each.result);
        EXPECT_EQ(told.boxes.size(), each.result ? 0 : tells);
        calls.fail(FileCall::write, 1, ERROR_DISK_FULL);  // nothing is to be 2 GiB long here
        if (each.at == most) {
            EXPECT_EQ(file.commit(), 0);
        }
    }
}

}  // namespace
