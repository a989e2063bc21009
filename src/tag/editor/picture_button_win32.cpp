// A picture is an icon: where nothing is drawn the button shows through, but for one that is
// chosen. That has the colours of a selection, since the face of a pressed button can have any.
#include "tag/editor/picture_button_win32.h"

namespace toolbox::tag {
namespace {

/// A bitmap to draw on, in one colour or in all.
class Sheet {
  public:
    Sheet(SIZE size, bool inColours) : context_(CreateCompatibleDC(nullptr)) {
        const HDC screen = GetDC(nullptr);
        bitmap_ = inColours ? CreateCompatibleBitmap(screen, size.cx, size.cy)
                            : CreateBitmap(size.cx, size.cy, 1, 1, nullptr);
        ReleaseDC(nullptr, screen);
        before_ = SelectObject(context_, bitmap_);
    }
    ~Sheet() {
        SelectObject(context_, before_);
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    /// Draws on a paper with an ink.
    void draw(const PictureButton::Draw& draw, SIZE size, COLORREF paper, COLORREF ink,
              bool isShape) const {
        const int saved = SaveDC(context_);
        const HPEN pen = CreatePen(PS_SOLID, 1, ink);
        SelectObject(context_, pen);
        SelectObject(context_, GetStockObject(NULL_BRUSH));
        SetTextColor(context_, ink);
        SetBkColor(context_, paper);
        const RECT all{0, 0, size.cx, size.cy};
        ExtTextOutA(context_, 0, 0, ETO_OPAQUE, &all, "", 0, nullptr);  // fills
        draw(context_, size, isShape);
        RestoreDC(context_, saved);
        DeleteObject(pen);
    }
    /// To be made an icon of: out of the context.
    HBITMAP release() const {
        SelectObject(context_, before_);
        return bitmap_;
    }

  private:
    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

}  // namespace

PictureButton::~PictureButton() {
    detach();
}

void PictureButton::setPicture(Draw draw) {
    draw_ = std::move(draw);
    refresh();
}

void PictureButton::refresh() {
    if (getHWND() && draw_) show(make());
}

HICON PictureButton::make() const {
    RECT area{};
    GetClientRect(getHWND(), &area);
    const int edge = 2 * GetSystemMetrics(SM_CXEDGE) + 2;
    const SIZE size{area.right - 2 * edge, area.bottom - 2 * edge};
    if (size.cx <= 0 || size.cy <= 0) return nullptr;
    const bool isChosen = SendMessageA(getHWND(), BM_GETCHECK, 0, 0) == BST_CHECKED;
    const COLORREF black = RGB(0, 0, 0);
    const Sheet shape(size, false);
    shape.draw(draw_, size, isChosen ? black : RGB(255, 255, 255), black, true);
    const Sheet colours(size, true);
    colours.draw(draw_, size, isChosen ? GetSysColor(COLOR_HIGHLIGHT) : black,
                 GetSysColor(isChosen ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT), false);
    ICONINFO info{TRUE, 0, 0, shape.release(), colours.release()};
    return CreateIconIndirect(&info);
}

void PictureButton::show(HICON icon) {
    SendMessageA(getHWND(), BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    if (icon_) DestroyIcon(icon_);
    icon_ = icon;
}

void PictureButton::detaching() {
    if (IsWindow(getHWND())) show(nullptr);
}

LRESULT PictureButton::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const toolbox::detail::Watch self(life_);
    const LRESULT result = pass(message, wParam, lParam);
    const bool changes = message == WM_SIZE || message == BM_SETCHECK || message == BM_CLICK ||
                         message == WM_LBUTTONUP || message == WM_KEYUP || message == WM_SETFOCUS;
    if (changes && !self.gone()) refresh();
    return result;
}

void PictureRadioButton::setTable(int first, int index, int count, int columns) {
    first_ = first;
    index_ = index;
    count_ = count;
    columns_ = columns;
}

int PictureRadioButton::neighbour(WPARAM key) const {
    const int column = index_ % columns_;
    int index = -1;
    if (key == VK_LEFT && column > 0) index = index_ - 1;
    if (key == VK_RIGHT && column + 1 < columns_) index = index_ + 1;
    if (key == VK_UP) index = index_ - columns_;
    if (key == VK_DOWN) index = index_ + columns_;
    return index >= 0 && index < count_ ? index : -1;
}

LRESULT PictureRadioButton::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isArrow = wParam >= VK_LEFT && wParam <= VK_DOWN;
    if (message == WM_GETDLGCODE && isArrow)
        return PictureButton::handleMessage(message, wParam, lParam) | DLGC_WANTARROWS;
    if (message != WM_KEYDOWN || !isArrow)
        return PictureButton::handleMessage(message, wParam, lParam);
    const int index = neighbour(wParam);
    const HWND dialog = GetParent(getHWND());
    const HWND next = index < 0 ? nullptr : GetDlgItem(dialog, first_ + index);
    if (next) {
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
        SendMessageA(next, BM_CLICK, 0, 0);
    }
    return 0;
}

}  // namespace toolbox::tag
