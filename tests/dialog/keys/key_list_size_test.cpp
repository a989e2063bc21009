// The list of keys when there are many of them, and when it is opened often.
#include "key_list_fixture.h"

namespace {

TEST_F(KeyList, OfTenThousandAsksForTheValuesOfRowsInSightOnly) {
    manager.freeUDApp();
    for (UINT id = 0; id < 10000; ++id)
        manager.declare<RealFormat>(id + 10, ("KEY_" + std::to_string(id)).c_str(),
                                    "A measured quantity", 10, 2, Right);
    manager.initUDApp();
    manager.asked = 0;
    ASSERT_NE(dialog->open(owner), nullptr);
    pumpMessages();
    EXPECT_GT(manager.asked, 0);
    EXPECT_LT(manager.asked, 100);
}

TEST_F(KeyList, LeavesNothingBehind) {
    expectNoHandlesLeft(200, [&] {
        ASSERT_NE(dialog->open(owner), nullptr);
        select({4});
        push(IDC_KEY_LIST_UP);
        dialog->close(0);
        pump();
    });
}

}  // namespace
