// The list of keys when there are many of them, and when it is opened often.
#include "key_list_fixture.h"

namespace {

/// Seconds of this thread's work; what other programs do meanwhile does not count.
double secondsOfWork() {
    FILETIME made{}, ended{};
    ULARGE_INTEGER kernel{}, user{};
    FILETIME inKernel{}, inUser{};
    EXPECT_TRUE(GetThreadTimes(GetCurrentThread(), &made, &ended, &inKernel, &inUser));
    kernel.LowPart = inKernel.dwLowDateTime;
    kernel.HighPart = inKernel.dwHighDateTime;
    user.LowPart = inUser.dwLowDateTime;
    user.HighPart = inUser.dwHighDateTime;
    return static_cast<double>(kernel.QuadPart + user.QuadPart) / 1e7;
}

/// What it takes on average until the list is open and its first rows are there.
double secondsToOpen(UDManager& manager, HWND owner) {
    constexpr int kTurns = 10;
    double all = 0;
    for (int turn = 0; turn < kTurns; ++turn) {
        TvKeyListDialog dialog(manager);
        const double begin = secondsOfWork();
        EXPECT_NE(dialog.open(owner), nullptr);
        pumpMessages();
        all += secondsOfWork() - begin;
    }
    return all / kTurns;
}

TEST_F(KeyList, OfTenThousandOpensLikeOneOfTen) {
    const double few = secondsToOpen(manager, owner);
    EXPECT_GT(few, 0) << "the clock works";
    manager.freeUDApp();
    for (UINT id = 0; id < 10000; ++id)
        manager.declare<RealFormat>(id + 10, ("KEY_" + std::to_string(id)).c_str(),
                                    "A measured quantity", 10, 2, Right);
    manager.initUDApp();
    manager.asked = 0;
    const double many = secondsToOpen(manager, owner);
    std::printf("work: %.1f ms with 5 keys, %.1f ms with 10,000\n", 1000 * few, 1000 * many);
    EXPECT_LT(many - few, 0.1);
    EXPECT_GT(manager.asked, 0);
    EXPECT_LT(manager.asked, 500) << "values of the rows in sight only";
}

TEST_F(KeyList, LeavesNothingBehind) {
    const auto handles = [] {
        return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) +
               GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    };
    const auto openAndClose = [&] {
        ASSERT_NE(dialog->open(owner), nullptr);
        select({4});
        push(IDC_KEY_LIST_UP);
        dialog->close(0);
        pump();
    };
    for (int warm = 0; warm < 5; ++warm) openAndClose();
    const DWORD before = handles();
    for (int turn = 0; turn < 200; ++turn) openAndClose();
    EXPECT_EQ(handles(), before);
}

}  // namespace
