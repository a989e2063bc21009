// A dialog's controls, while the user sizes it. All controls of one parent move in one step, and
// what they cover is not erased before: nothing flickers.
#include "dialog/layout/sizer_win32.h"

#include <algorithm>

#include "dialog/common_controls.h"
#include "dialog/layout/screens_win32.h"

namespace toolbox::dialog {
namespace {

bool isClass(HWND window, const char* name) {
    char found[32] = "";
    return GetClassNameA(window, found, sizeof found) && lstrcmpiA(found, name) == 0;
}

LONG styleOf(HWND window) {
    return static_cast<LONG>(GetWindowLongPtrA(window, GWL_STYLE));
}

/// A frame around other controls, which paints only its edge.
bool isFrame(HWND control) {
    const LONG style = styleOf(control);
    if (isClass(control, "Button")) return (style & BS_TYPEMASK) == BS_GROUPBOX;
    if (!isClass(control, "Static")) return false;
    const LONG type = style & SS_TYPEMASK;
    return (type >= SS_BLACKFRAME && type <= SS_WHITEFRAME) || type == SS_ETCHEDFRAME;
}

Box boxIn(HWND parent, HWND control) {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&area), 2);
    return boxOf(area);
}

/// The height of a combo box that opens a list is that of the list, when it is set.
int heightToSet(HWND control, const Box& box) {
    RECT dropped{};
    if (isClass(control, "ComboBox") && (styleOf(control) & CBS_DROPDOWN) &&
        SendMessageA(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped)))
        return std::max(boxOf(dropped).height(), box.height());
    return box.height();
}

struct Search {
    int id;
    HWND found;
};

BOOL CALLBACK takeControl(HWND window, LPARAM data) {
    auto* const search = reinterpret_cast<Search*>(data);
    if (GetDlgCtrlID(window) == search->id) search->found = window;
    return !search->found;
}

/// A control of the dialog, or of a child window inside of it.
HWND findControl(HWND dialog, int id) {
    if (const HWND control = GetDlgItem(dialog, id)) return control;
    Search search{id, nullptr};
    EnumChildWindows(dialog, takeControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// Paints a size grip. What the system paints may be a theme's, of which some have no such picture.
LRESULT CALLBACK paintGrip(HWND grip, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR) {
    if (message != WM_PAINT) return DefSubclassProc(grip, message, wParam, lParam);
    PAINTSTRUCT paint{};
    const HDC device = BeginPaint(grip, &paint);
    RECT area{};
    GetClientRect(grip, &area);
    FillRect(device, &area, GetSysColorBrush(COLOR_BTNFACE));
    DrawFrameControl(device, &area, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
    EndPaint(grip, &paint);
    return 0;
}

int depth(HWND window) {
    int levels = 0;
    for (; window; window = GetAncestor(window, GA_PARENT)) ++levels;
    return levels;
}

}  // namespace

Sizer::Sizer(HWND dialog, const TvDialogLayout& layout) : dialog_(dialog), outside_(boxOf(dialog)) {
    for (const TvDialogLayout::Shares& said : layout.controls()) {
        const HWND control = findControl(dialog, said.control);
        if (control) add(control, {said.left, said.top, said.right, said.bottom});
        growsWider_ = growsWider_ || said.left || said.right;
        growsHigher_ = growsHigher_ || said.top || said.bottom;
    }
    makeGrip();
    std::sort(parents_.begin(), parents_.end(),
              [](const Size& a, const Size& b) { return depth(a.window) < depth(b.window); });
}

Sizer::~Sizer() {
    if (grip_ && GetParent(grip_) == dialog_) DestroyWindow(grip_);
}

void Sizer::add(HWND control, const EdgeShares& shares) {
    const HWND parent = GetParent(control);
    items_.push_back({control, parent, boxIn(parent, control), shares});
    const auto isKnown = [=](const Size& each) { return each.window == parent; };
    if (std::any_of(parents_.begin(), parents_.end(), isKnown)) return;
    RECT inside{};
    GetClientRect(parent, &inside);
    parents_.push_back({parent, inside.right, inside.bottom});
}

void Sizer::makeGrip() {
    if (!(styleOf(dialog_) & WS_THICKFRAME)) return;  // a page, which another window sizes
    RECT inside{};
    GetClientRect(dialog_, &inside);
    grip_ = CreateWindowExA(
        0, "SCROLLBAR", "",
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBS_SIZEGRIP | SBS_SIZEBOXBOTTOMRIGHTALIGN, 0, 0,
        inside.right, inside.bottom, dialog_, nullptr, nullptr, nullptr);
    if (!grip_) return;
    SetWindowSubclass(grip_, paintGrip, 0, 0);
    // The controls come before it, in whose corner it may lie.
    SetWindowPos(grip_, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    const int wider = growsWider_ ? 100 : 0;
    const int higher = growsHigher_ ? 100 : 0;
    add(grip_, {wider, higher, wider, higher});
}

void Sizer::follow() {
    if (IsIconic(dialog_)) return;
    if (grip_) ShowWindow(grip_, IsZoomed(dialog_) ? SW_HIDE : SW_SHOWNA);
    for (const Size& parent : parents_)
        if (IsWindow(parent.window)) moveChildrenOf(parent);
}

void Sizer::moveChildrenOf(const Size& parent) {
    RECT inside{};
    GetClientRect(parent.window, &inside);
    HDWP moves = BeginDeferWindowPos(static_cast<int>(items_.size()));
    for (const Item& item : items_) {
        if (item.parent != parent.window || GetParent(item.control) != parent.window) continue;
        const Box before = boxIn(parent.window, item.control);
        const Box box = dialog::follow(item.box, item.shares, inside.right - parent.width,
                                       inside.bottom - parent.height);
        if (box == before) continue;
        UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
        if (isFrame(item.control)) {
            // What it does not paint itself: its old edge, and what was inside of it.
            for (const Box& old : {before, box}) {
                const RECT area{old.left, old.top, old.right, old.bottom};
                InvalidateRect(parent.window, &area, TRUE);
            }
        } else if (isClass(item.control, "Static")) {
            flags |= SWP_NOCOPYBITS;  // its text may lie elsewhere in it
        }
        const int height = heightToSet(item.control, box);
        if (moves)
            moves = DeferWindowPos(moves, item.control, nullptr, box.left, box.top, box.width(),
                                   height, flags);
        else
            SetWindowPos(item.control, nullptr, box.left, box.top, box.width(), height, flags);
    }
    if (moves) EndDeferWindowPos(moves);
}

void Sizer::limit(MINMAXINFO& limits) const {
    limits.ptMinTrackSize = {outside_.width(), outside_.height()};
    if (!growsWider_) limits.ptMaxTrackSize.x = outside_.width();
    if (!growsHigher_) limits.ptMaxTrackSize.y = outside_.height();
}

void Sizer::excludeControls(HDC context) const {
    for (HWND child = GetWindow(dialog_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const bool seesThrough = (GetWindowLongPtrA(child, GWL_EXSTYLE) & WS_EX_TRANSPARENT) != 0;
        if (!IsWindowVisible(child) || seesThrough || isFrame(child)) continue;
        const Box box = boxIn(dialog_, child);
        ExcludeClipRect(context, box.left, box.top, box.right, box.bottom);
    }
}

}  // namespace toolbox::dialog
