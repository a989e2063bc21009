// Where dialogs stand, and how they are sized.
#include "dialog_fixture.h"
#include "support/temp_folder.h"

using namespace toolbox::testing;

namespace {

/// Its place is kept, and its controls follow.
class PlacedDialog : public TestDialog {
  public:
    explicit PlacedDialog(const toolbox::ResourceName& name, bool isSizable = false)
        : TestDialog(name), isSizable_(isSizable) {}

    [[nodiscard]] RECT place() const {
        RECT at{};
        GetWindowRect(getHWND(), &at);
        return at;
    }
    [[nodiscard]] RECT placeOf(int id) const {
        RECT at{};
        GetWindowRect(control(id), &at);
        MapWindowPoints(nullptr, getHWND(), reinterpret_cast<POINT*>(&at), 2);
        return at;
    }

  protected:
    const char* placeName() override { return "Test"; }
    void layout(TvDialogLayout& sizes) override {
        if (!isSizable_) return;
        sizes.share(IDC_BOX, 0, 0, 50, 100);
        sizes.share(IDC_WIDTH, 0, 0, 50, 0);
        sizes.share(IDC_LIST, 50, 0, 100, 100);
        sizes.follow(IDOK, TvDialogLayout::Right | TvDialogLayout::Bottom);
        sizes.follow(4711, TvDialogLayout::Right);  // not in the template
    }

  private:
    bool isSizable_;
};

class DialogPlace : public DialogFixture {
  protected:
    DialogPlace() {
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(folder_ / "places.ini"));
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    }
    ~DialogPlace() override { GMSG::setUseRegistry(1); }
    /// The setting of that name.
    static std::string kept(const char* name) {
        RWCString text;
        GMSG::getProfile("Places", name, text, RWCString());
        return text.str();
    }

    void expectSeen(const RECT& at) const {
        RECT seen{};
        EXPECT_TRUE(IntersectRect(&seen, &at, &work));
        EXPECT_TRUE(EqualRect(&seen, &at)) << at.left << " " << at.top;
    }

    TempFolder folder_;
    RECT work{};
};

POINT middleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

void expectSame(const RECT& a, const RECT& b) {
    EXPECT_TRUE(EqualRect(&a, &b))
        << a.left << " " << a.top << " " << a.right << " " << a.bottom << ", " << b.left << " "
        << b.top << " " << b.right << " " << b.bottom;
}

TEST_F(DialogPlace, IsTheMiddleOfTheOwnerAsFarAsTheScreenAllows) {
    RECT over{};
    GetWindowRect(owner, &over);
    for (const int state : {SW_SHOWNORMAL, SW_HIDE, SW_SHOWMINIMIZED}) {
        ShowWindow(owner, state);
        // A setting that cannot be read is none.
        GMSG::writeProfile("Places", "Test", "12 13 nonsense");
        PlacedDialog dialog(IDD_PLAIN);
        dialog.open(owner);
        const POINT wanted = middleOf(state == SW_SHOWNORMAL ? over : work);
        EXPECT_NEAR(middleOf(dialog.place()).x, wanted.x, 1) << state;
        EXPECT_NEAR(middleOf(dialog.place()).y, wanted.y, 1) << state;
    }
    ShowWindow(owner, SW_RESTORE);
    SetWindowPos(owner, nullptr, work.right - 30, work.bottom - 20, 0, 0, SWP_NOSIZE);
    PlacedDialog dialog(IDD_PLAIN);
    dialog.open(owner);
    expectSeen(dialog.place());
}

TEST_F(DialogPlace, StaysKeptWhileItsScreenIsMissing) {
    for (const char* const away : {"5000 4000 700 500 96", "-3000 20 700 500 96 max"}) {
        GMSG::writeProfile("Places", "Test", away);
        PlacedDialog dialog(IDD_SIZABLE, true);
        ASSERT_NE(dialog.open(owner), nullptr);
        expectSeen(dialog.place());
        EXPECT_EQ(dialog.place().right - dialog.place().left, 700);
        dialog.close(0);
        EXPECT_EQ(kept("Test"), away) << "the user has not touched it";

        dialog.open(owner);
        SetWindowPos(dialog.getHWND(), nullptr, 50, 40, 0, 0, SWP_NOSIZE);
        dialog.close(0);
        EXPECT_EQ(kept("Test").substr(0, 14), "50 40 700 500 ");
        dialog.open(owner);
        EXPECT_EQ(dialog.place().left, 50);
    }
}

TEST_F(DialogPlace, MovesTheControlsWithTheEdges) {
    PlacedDialog dialog(IDD_SIZABLE, true);
    const HWND window = dialog.open(owner);
    ASSERT_NE(window, nullptr);
    const RECT before = dialog.place();
    const LONG width = before.right - before.left, height = before.bottom - before.top;
    const std::pair<int, RECT> gained[] = {{IDC_BOX, {0, 0, 50, 60}},
                                           {IDC_WIDTH, {0, 0, 50, 0}},
                                           {IDC_LIST, {50, 0, 100, 60}},
                                           {IDOK, {100, 60, 100, 60}}};
    std::map<int, RECT> at;
    for (const auto& [id, gain] : gained) at[id] = dialog.placeOf(id);
    SetWindowPos(window, nullptr, 0, 0, width + 100, height + 60, SWP_NOMOVE);
    for (const auto& [id, gain] : gained) {
        const RECT& was = at[id];
        expectSame(dialog.placeOf(id), {was.left + gain.left, was.top + gain.top,
                                        was.right + gain.right, was.bottom + gain.bottom});
    }
    SetWindowPos(window, nullptr, 0, 0, 20, 20, SWP_NOMOVE);
    EXPECT_EQ(dialog.place().right - dialog.place().left, width)
        << "the template's size is the smallest";
    for (const auto& [id, gain] : gained) expectSame(dialog.placeOf(id), at[id]);
}

}  // namespace
