// Windows that are there already and get an object: they can be sized while they have it.
#include <memory>

#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

INT_PTR CALLBACK leaveAll(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

/// Its field grows with it.
struct GrowingDialog : TvDialog {
    GrowingDialog() : TvDialog(IDD_PLAIN) {}
    using TvDialog::adopt;
    void layout(TvDialogLayout& sizes) override {
        sizes.follow(IDC_NAME, TvDialogLayout::Left | TvDialogLayout::Right);
    }
};

RECT areaOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

LONG widthOf(HWND window) {
    return areaOf(window).right - areaOf(window).left;
}

/// What the user has under the pointer in the lower right corner.
LRESULT inCorner(HWND window) {
    const RECT area = areaOf(window);
    return SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(area.right - 1, area.bottom - 6));
}

TEST_F(DialogFixture, IsSizedWhileItHasAnObject) {
    const HWND window =
        CreateDialogParamA(nullptr, MAKEINTRESOURCEA(IDD_PLAIN), owner, leaveAll, 0);
    ASSERT_NE(window, nullptr);
    const HWND field = GetDlgItem(window, IDC_NAME);
    const LONG outside = widthOf(window), inside = widthOf(field);
    RECT client{}, kept{};
    GetClientRect(window, &client);
    auto object = std::make_unique<GrowingDialog>();
    ASSERT_EQ(object->adopt(window), 1);
    GetClientRect(window, &kept);
    EXPECT_TRUE(EqualRect(&client, &kept));
    EXPECT_EQ(inCorner(window), HTBOTTOMRIGHT);
    const LONG framed = widthOf(window);
    const RECT area = areaOf(window);
    MoveWindow(window, area.left, area.top, framed + 100, area.bottom - area.top, TRUE);
    EXPECT_EQ(widthOf(field), inside + 100);
    MoveWindow(window, area.left, area.top, framed, area.bottom - area.top, TRUE);
    object.reset();
    EXPECT_EQ(widthOf(window), outside);
    EXPECT_EQ(FindWindowExA(window, nullptr, "ScrollBar", nullptr), nullptr) << "the size grip";
    EXPECT_EQ(GetWindowLongPtrA(window, GWL_STYLE) & WS_THICKFRAME, 0);
    DestroyWindow(window);
}

TEST_F(DialogFixture, IsSizedWithTheFrameOfAModalDialog) {
    GrowingDialog dialog;
    const HWND window = dialog.open(owner);
    EXPECT_NE(GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_DLGMODALFRAME, 0) << "no icon";
    EXPECT_EQ(inCorner(window), HTBOTTOMRIGHT);
}

}  // namespace
