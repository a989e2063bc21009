// Locks of programs that end in the middle, and of many that want one at once.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <tuple>

#include "file/document/lock_kit.h"
#include "support/child_program.h"

using namespace lock_kit;
using namespace std::chrono_literals;

namespace {

/// Whether share modes mean nothing, and whether a lock of a crash is there before.
class LockRace : public testing::TestWithParam<std::tuple<bool, bool>> {
  protected:
    LockRace() { files.ignoresShares = isBlind; }
    void prepare() const {
        if (isLeft) folder.write("plan.dat.lock", toolbox::locks::textOf(leftBehind()));
    }
    void expectOnlyTheDocument() const {
        EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
    }

    const bool isBlind = std::get<0>(GetParam());
    const bool isLeft = std::get<1>(GetParam());
    TempFolder folder;
    FaultyFiles files;
    const std::string name = folder.write("plan.dat", "x");
};

TEST_P(LockRace, IsTakenOverWhereverItsHolderWasKilled) {
    int call = 1 - kStep;
    for (int status = 9; status != 0;) {
        SCOPED_TRACE(call += kStep);
        prepare();
        status = runBeside("document_locker",
                           {name, std::to_string(call), isBlind ? "blind" : "sighted"});
        ASSERT_TRUE(status == 9 || status == 0) << status;
        toolbox::DocumentLock lock;
        const LockOutcome outcome = lock.take(name).outcome;
        ASSERT_TRUE(outcome == LockOutcome::taken || outcome == LockOutcome::takenOver);
        ASSERT_TRUE(lock.isStillOurs());
        lock.release();
        expectOnlyTheDocument();
    }
    EXPECT_GT(call, 15);
}

TEST_P(LockRace, GoesToOneOfTen) {
    constexpr std::size_t kPrograms = 10;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        prepare();
        const TempFolder reports;
        std::vector<std::thread> programs;
        for (std::size_t each = 0; each < kPrograms; ++each)
            programs.emplace_back([&] {
                (void)runBeside("document_locker",
                                {name, "0", reports.path(), isBlind ? "blind" : "sighted"});
            });
        while (reports.names().size() < kPrograms) std::this_thread::sleep_for(5ms);
        const auto told = reports.names();
        reports.write("all", "");
        for (std::thread& program : programs) program.join();
        EXPECT_EQ(std::ranges::count_if(
                      told, [](const std::string& each) { return each.starts_with("has-"); }),
                  1);
        expectOnlyTheDocument();
    }
}

std::string nameOf(const testing::TestParamInfo<std::tuple<bool, bool>>& info) {
    const auto [isBlind, isLeft] = info.param;
    return std::string(isBlind ? "WithoutShareModes" : "WithShareModes") +
           (isLeft ? "AfterACrash" : "Fresh");
}

INSTANTIATE_TEST_SUITE_P(Folders, LockRace, testing::Combine(testing::Bool(), testing::Bool()),
                         nameOf);

}  // namespace
