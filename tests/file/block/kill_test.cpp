// Saves that end in the middle, and in the middle of another.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "file/block/block_kit.h"
#include "support/child_program.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"

using namespace block_kit;
using namespace std::chrono_literals;

namespace {

TEST(SafeSave, LeavesOneWholeFileWhereverItEnds) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    int call = 0;
    for (int status = 9; status != 0;) {
        status = runBeside("block_saver", {name, std::to_string(++call)});
        ASSERT_TRUE(status == 9 || status == 0) << status;
        const auto blocks = fetched(name, generation(0));
        ASSERT_TRUE(blocks == generation(status == 0 ? 1 : 0) || blocks == generation(1)) << call;
        EXPECT_EQ(save(name, generation(0), true), 1) << "what was left is no obstacle";
    }
    EXPECT_GT(call, 20);
}

TEST(SafeSave, IsNotTouchedByAnotherOfTheSameFile) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    FaultyFiles calls;
    calls.before = [&](FileCall call, int nth) {
        if (call != FileCall::replace || nth != 2) return;  // 1: the backup
        EXPECT_EQ(save(name, generation(1), true), 1);
        EXPECT_EQ(fetched(name, generation(1)), generation(1));
    };
    EXPECT_EQ(save(name, generation(5), true), 1);
    EXPECT_EQ(fetched(name, generation(5)), generation(5));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"plan.bak", "plan.dat"}));
}

#if defined(_WIN32)
TEST(SafeSave, WaitsForAReaderAMomentAndThenKeepsTheFile) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    TarvFileRead reader;
    ASSERT_EQ(reader.open(name.c_str()), 1);
    std::thread leaving([&] {
        std::this_thread::sleep_for(200ms);
        reader.close();
    });
    EXPECT_EQ(save(name, generation(1), true), 1);
    leaving.join();

    ASSERT_EQ(reader.open(name.c_str()), 1);
    const toolbox::testing::RecordingPrompt told;
    EXPECT_EQ(save(name, generation(2), true), 0);
    TarvBlocFile out;
    EXPECT_EQ(reader.getBloc(1000, out), 1);
    EXPECT_EQ(folder.names().size(), 3u) << "what was saved is kept beside";
}
#endif

}  // namespace
