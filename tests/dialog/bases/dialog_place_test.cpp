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
        sizes.share(IDC_INSIDE, 0, 0, 50, 0);
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
    const auto middle = [&] {
        TestDialog dialog;
        RECT at{};
        GetWindowRect(dialog.open(owner), &at);
        RECT seen{};
        EXPECT_TRUE(IntersectRect(&seen, &at, &work));
        expectSame(seen, at);
        return middleOf(at);
    };
    RECT over{};
    GetWindowRect(owner, &over);
    EXPECT_NEAR(middle().x, middleOf(over).x, 1);
    EXPECT_NEAR(middle().y, middleOf(over).y, 1);

    const POINT screen = middleOf(work);
    ShowWindow(owner, SW_HIDE);
    EXPECT_NEAR(middle().x, screen.x, 1) << "a hidden owner";
    ShowWindow(owner, SW_SHOWMINIMIZED);
    EXPECT_NEAR(middle().x, screen.x, 1) << "a minimized owner";
    EXPECT_NEAR(middle().y, screen.y, 1);
    ShowWindow(owner, SW_RESTORE);
    SetWindowPos(owner, nullptr, work.right - 30, work.bottom - 20, 0, 0, SWP_NOSIZE);
    EXPECT_LT(middle().x, work.right) << "an owner that is nearly off the screen";
}

TEST_F(DialogPlace, IsKeptOnceTheUserHasMovedIt) {
    RWCString kept;
    const auto isKept = [&] { return GMSG::getProfile("Places", "Test", kept, RWCString()) == 1; };
    { PlacedDialog(IDD_PLAIN).open(owner); }
    EXPECT_FALSE(isKept());
    RECT moved{};
    {
        PlacedDialog dialog(IDD_PLAIN);
        SetWindowPos(dialog.open(owner), nullptr, 77, 55, 0, 0, SWP_NOSIZE);
        moved = dialog.place();
    }
    EXPECT_TRUE(isKept());
    PlacedDialog again(IDD_PLAIN);
    again.open(owner);
    expectSame(again.place(), moved);
}

TEST_F(DialogPlace, StaysKeptWhileItsScreenIsMissing) {
    for (const char* kept : {"5000 4000 700 500 96", "-3000 20 700 500 96 max"}) {
        GMSG::writeProfile("Places", "Test", kept);
        const auto now = [] {
            RWCString text;
            GMSG::getProfile("Places", "Test", text, RWCString());
            return text;
        };
        PlacedDialog dialog(IDD_SIZABLE, true);
        ASSERT_NE(dialog.open(owner), nullptr);
        RECT seen{};
        const RECT at = dialog.place();
        EXPECT_TRUE(IntersectRect(&seen, &at, &work));
        expectSame(seen, at);
        EXPECT_EQ(at.right - at.left, 700);
        dialog.close(0);
        EXPECT_EQ(now(), kept) << "the user has not touched it";

        dialog.open(owner);
        SetWindowPos(dialog.getHWND(), nullptr, 50, 40, 0, 0, SWP_NOSIZE);
        dialog.close(0);
        EXPECT_EQ(now().view().substr(0, 14), "50 40 700 500 ");
    }
}

TEST_F(DialogPlace, IsThatOfANormalWindowWhateverItIs) {
    TvWindowPlace place("Frame");
    EXPECT_EQ(place.restore(owner, 1), 0);
    for (const int state : {SW_SHOWNORMAL, SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED}) {
        ShowWindow(owner, SW_SHOWNORMAL);
        SetWindowPos(owner, nullptr, 120, 90, 400, 300, SWP_NOZORDER);
        ShowWindow(owner, state);
        EXPECT_EQ(TvWindowPlace("Frame").save(owner), 1);
        RWCString text;
        GMSG::getProfile("Places", "Frame", text, RWCString());
        EXPECT_EQ(text.view().substr(0, 15), "120 90 400 300 ") << state;
        ShowWindow(owner, SW_SHOWNORMAL);
        TvWindowPlace again("Frame");
        SetWindowPos(owner, nullptr, 1, 2, 300, 200, SWP_NOZORDER);
        EXPECT_EQ(again.restore(owner, 1), 1);
        EXPECT_EQ(again.wasMaximized(), state == SW_SHOWMAXIMIZED);
        EXPECT_EQ(IsZoomed(owner) != 0, state == SW_SHOWMAXIMIZED);
    }
    EXPECT_EQ(place.restore(nullptr, 1), 0);
    EXPECT_EQ(place.save(nullptr), 0);
}

TEST_F(DialogPlace, IsLeftAloneByASettingThatIsNone) {
    GMSG::writeProfile("Places", "Test", "12 13 nonsense");
    PlacedDialog dialog(IDD_PLAIN);
    dialog.open(owner);
    RECT over{};
    GetWindowRect(owner, &over);
    EXPECT_NEAR(middleOf(dialog.place()).x, middleOf(over).x, 1);
}

TEST_F(DialogPlace, MovesTheControlsWithTheEdges) {
    PlacedDialog dialog(IDD_SIZABLE, true);
    const HWND window = dialog.open(owner);
    ASSERT_NE(window, nullptr);
    const RECT before = dialog.place();
    const int ids[] = {IDC_BOX, IDC_INSIDE, IDC_WIDTH, IDC_LIST, IDOK};
    std::map<int, RECT> at;
    for (const int id : ids) at[id] = dialog.placeOf(id);
    RECT list{};
    SendMessageA(dialog.control(IDC_WIDTH), CB_GETDROPPEDCONTROLRECT, 0,
                 reinterpret_cast<LPARAM>(&list));
    const LONG listHeight = list.bottom - list.top;

    SetWindowPos(window, nullptr, 0, 0, before.right - before.left + 100,
                 before.bottom - before.top + 60, SWP_NOMOVE);
    const struct {
        int id;
        LONG left, top, right, bottom;
    } gained[] = {{IDC_BOX, 0, 0, 50, 60},
                  {IDC_INSIDE, 0, 0, 50, 0},
                  {IDC_WIDTH, 0, 0, 50, 0},
                  {IDC_LIST, 50, 0, 100, 60},
                  {IDOK, 100, 60, 100, 60}};
    for (const auto& c : gained) {
        const RECT& was = at[c.id];
        expectSame(dialog.placeOf(c.id), {was.left + c.left, was.top + c.top, was.right + c.right,
                                          was.bottom + c.bottom});
    }
    SendMessageA(dialog.control(IDC_WIDTH), CB_GETDROPPEDCONTROLRECT, 0,
                 reinterpret_cast<LPARAM>(&list));
    EXPECT_EQ(list.bottom - list.top, listHeight) << "the list of a combo box keeps its height";

    SetWindowPos(window, nullptr, 0, 0, 20, 20, SWP_NOMOVE);
    EXPECT_EQ(dialog.place().right - dialog.place().left, before.right - before.left)
        << "the template's size is the smallest";
    for (const int id : ids) expectSame(dialog.placeOf(id), at[id]);
    ShowWindow(window, SW_MAXIMIZE);
    ShowWindow(window, SW_RESTORE);
    for (const int id : ids) expectSame(dialog.placeOf(id), at[id]);
}

TEST_F(DialogPlace, IsOfOneSizeWithoutALayout) {
    PlacedDialog fixed(IDD_SIZABLE);
    const HWND window = fixed.open(owner);
    EXPECT_EQ(GetWindowLongPtrA(window, GWL_STYLE) & WS_THICKFRAME, 0);
    GMSG::writeProfile("Places", "Test", "60 70 900 800 96");
    const LONG width = fixed.place().right - fixed.place().left;
    fixed.close(0);
    PlacedDialog again(IDD_SIZABLE);
    again.open(owner);
    EXPECT_EQ(again.place().left, 60);
    EXPECT_EQ(again.place().right - again.place().left, width) << "the size is not its own to keep";
}

}  // namespace
