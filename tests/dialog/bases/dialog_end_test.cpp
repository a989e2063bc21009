// Dialogs whose object or window goes in the middle of anything.
#include <memory>

#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

using DialogEnd = DialogFixture;

TEST_F(DialogEnd, TakesNoHandlesAlong) {
    const auto handles = [] {
        return GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS) +
               GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    };
    const auto open = [&](int count) {
        for (int i = 0; i < count; ++i) {
            TestDialog dialog;
            EXPECT_NE(dialog.open(owner), nullptr);
            if (i % 2) DestroyWindow(dialog.getHWND());
        }
    };
    open(20);
    const DWORD before = handles();
    open(1000);
    EXPECT_LE(handles(), before + 2);
}

}  // namespace
