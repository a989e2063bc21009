// A tool bar as a tool. The bar notifies itself, so that its clicks come here, wherever it lies;
// who lies inside notifies its parent.
#include <algorithm>

#include "dialog/controls/window_text_win32.h"
#include "toolbox/command_manager.h"
#include "toolbox/controls.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

// Around a picture in its button, at 96 DPI.
constexpr int kAcross = 7;
constexpr int kDown = 6;

/// A memory context with a bitmap in it, for as long as it lives.
class BitmapContext {
  public:
    explicit BitmapContext(HBITMAP bitmap)
        : context_(CreateCompatibleDC(nullptr)), before_(SelectObject(context_, bitmap)) {}
    ~BitmapContext() {
        SelectObject(context_, before_);
        DeleteDC(context_);
    }
    BitmapContext(const BitmapContext&) = delete;
    BitmapContext& operator=(const BitmapContext&) = delete;
    [[nodiscard]] HDC get() const { return context_; }

  private:
    HDC context_;
    HGDIOBJ before_;
};

/// The pictures of a strip, each enlarged by itself so that none shows an edge of its neighbour.
/// Null when there is no memory.
HIMAGELIST enlarged(HBITMAP strip, SIZE from, SIZE to, int count) {
    const HDC screen = GetDC(nullptr);
    const HBITMAP wide = CreateCompatibleBitmap(screen, to.cx * count, to.cy);
    ReleaseDC(nullptr, screen);
    COLORREF transparent = CLR_NONE;
    if (wide) {
        const BitmapContext source(strip);
        const BitmapContext target(wide);
        SetStretchBltMode(target.get(), COLORONCOLOR);  // the transparent colour stays what it is
        transparent = GetPixel(source.get(), 0, 0);
        for (int i = 0; i < count; ++i)
            StretchBlt(target.get(), i * to.cx, 0, to.cx, to.cy, source.get(), i * from.cx, 0,
                       from.cx, from.cy, SRCCOPY);
    }
    const HIMAGELIST list =
        wide ? ImageList_Create(to.cx, to.cy, ILC_COLOR24 | ILC_MASK, count, 0) : nullptr;
    if (list) ImageList_AddMasked(list, wide, transparent);
    if (wide) DeleteObject(wide);
    return list;
}

/// Lets a bar follow the width of what it lies in.
class Parent : public TvControl {
  public:
    ~Parent() override { detach(); }
    HWND bar = nullptr;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_SIZE) return pass(message, wParam, lParam);
        const Watch self(life_);
        SendMessageA(bar, TB_AUTOSIZE, 0, 0);
        return self.gone() ? 0 : pass(message, wParam, lParam);
    }
};

/// The bar's window.
class Bar : public TvControl {
  public:
    ~Bar() override { detach(); }

    void placeTips();

    bool hasOwnGround = false;  // not that of the window it lies in
    std::vector<std::pair<int, TvTip>> tips;
    TvToolTip tip;
    Parent parent;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int accepts(const char* className) const override {
        return lstrcmpiA(className, TOOLBARCLASSNAMEA) == 0;
    }
    void attached() override;
    void detaching() override;

  private:
    bool notified(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
};

void Bar::attached() {
    SendMessageA(getHWND(), TB_SETPARENT, reinterpret_cast<WPARAM>(getHWND()), 0);
    tip.attach(getHWND());
    parent.bar = getHWND();
    parent.attach(GetParent(getHWND()));
}

void Bar::detaching() {
    SendMessageA(getHWND(), TB_SETPARENT, reinterpret_cast<WPARAM>(GetParent(getHWND())), 0);
    tip.detach();
    parent.detach();
}

/// Each tip is where its button is.
void Bar::placeTips() {
    for (const auto& [command, text] : tips) {
        RECT place{};
        const LRESULT at =
            SendMessageA(getHWND(), TB_COMMANDTOINDEX, static_cast<WPARAM>(command), 0);
        if (at >= 0 && SendMessageA(getHWND(), TB_GETITEMRECT, static_cast<WPARAM>(at),
                                    reinterpret_cast<LPARAM>(&place)))
            tip.addArea(command, place, text);
    }
}

/// What the bar and the windows in it tell it. False for another message.
bool Bar::notified(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const HWND bar = getHWND();
    switch (message) {
        case WM_COMMAND: {
            if (reinterpret_cast<HWND>(lParam) != bar) {
                result = SendMessageA(GetParent(bar), message, wParam, lParam);
                return true;
            }
            const GCOMMBase* const manager = Tool::getGCOMMBase();
            const HWND frame = manager ? manager->getFrame() : GetParent(bar);
            result = SendMessageA(frame, WM_COMMAND, LOWORD(wParam), 0);
            return true;
        }
        case WM_NOTIFY: {
            const bool isOwnNote = reinterpret_cast<const NMHDR*>(lParam)->hwndFrom == bar;
            result = isOwnNote ? 0 : SendMessageA(GetParent(bar), message, wParam, lParam);
            return true;
        }
        case WM_NOTIFYFORMAT:
            if (lParam != NF_QUERY) return false;
            result = NFR_ANSI;
            return true;
        default:
            return false;
    }
}

LRESULT Bar::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (notified(message, wParam, lParam, result)) return result;
    if (message == WM_ERASEBKGND && hasOwnGround) {
        RECT area{};
        GetClientRect(getHWND(), &area);
        FillRect(reinterpret_cast<HDC>(wParam), &area, GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    const Watch self(life_);
    result = pass(message, wParam, lParam);
    if (self.gone() || !getHWND()) return result;
    if (message == WM_SIZE || message == TB_AUTOSIZE) placeTips();
    return result;
}

}  // namespace

const int TvToolBar::classType = 0;

struct TvToolBar::State {
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        // After the window ceased to use it: it is the last that the bar is told.
        if (bar.getHWND() && pictures) SendMessageA(bar.getHWND(), TB_SETIMAGELIST, 0, 0);
        if (pictures) ImageList_Destroy(pictures);
    }

    Bar bar;
    HIMAGELIST pictures = nullptr;
    int dpi = 0;
};

TvToolBar::TvToolBar(unsigned long id) : Tool(id), state_(std::make_unique<State>()) {}

TvToolBar::~TvToolBar() = default;

HWND TvToolBar::getHWND() const {
    return state_->bar.getHWND();
}

int TvToolBar::create(HWND parent, int controlId, int dpi) {
    if (getHWND() || !IsWindow(parent)) return 0;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND bar = CreateWindowExA(
        0, TOOLBARCLASSNAMEA, nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | CCS_TOP | CCS_NODIVIDER, 0, 0, 0,
        0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), nullptr, nullptr);
    if (!attach(bar)) {
        if (bar) DestroyWindow(bar);
        return 0;
    }
    state_->bar.hasOwnGround = true;
    if (dpi > 0) state_->dpi = dpi;
    return 1;
}

int TvToolBar::attach(HWND toolBar) {
    if (!state_->bar.attach(toolBar)) return 0;
    state_->dpi = screenDpi();
    SendMessageA(toolBar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    return 1;
}

int TvToolBar::setPictures(HINSTANCE module, int bitmap, int width) {
    if (!getHWND()) return 0;
    const auto strip = static_cast<HBITMAP>(
        LoadImageA(module, MAKEINTRESOURCEA(bitmap), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    BITMAP record{};
    if (!strip || !GetObjectA(strip, sizeof record, &record)) return 0;
    const SIZE from{width > 0 ? width : record.bmHeight, record.bmHeight};
    const SIZE to{MulDiv(from.cx, state_->dpi, 96), MulDiv(from.cy, state_->dpi, 96)};
    const int count = record.bmWidth / from.cx;
    const HIMAGELIST list = count > 0 ? enlarged(strip, from, to, count) : nullptr;
    DeleteObject(strip);
    if (!list) return 0;
    if (!setPictures(list)) {
        ImageList_Destroy(list);
        return 0;
    }
    state_->pictures = list;
    return 1;
}

int TvToolBar::setPictures(HIMAGELIST list) {
    int width = 0;
    int height = 0;
    if (!getHWND() || !ImageList_GetIconSize(list, &width, &height)) return 0;
    const int across = width + MulDiv(kAcross, state_->dpi, 96);
    const int down = height + MulDiv(kDown, state_->dpi, 96);
    SendMessageA(getHWND(), TB_SETBITMAPSIZE, 0, MAKELPARAM(width, height));
    SendMessageA(getHWND(), TB_SETBUTTONSIZE, 0, MAKELPARAM(across, down));
    SendMessageA(getHWND(), TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(list));
    SendMessageA(getHWND(), TB_AUTOSIZE, 0, 0);
    if (state_->pictures) ImageList_Destroy(state_->pictures);
    state_->pictures = nullptr;
    return 1;
}

int TvToolBar::addButton(int command, int picture, const TvTip& tip) {
    TBBUTTON button{};
    button.iBitmap = picture;
    button.idCommand = command;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON;
    if (!getHWND() ||
        !SendMessageA(getHWND(), TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button)))
        return 0;
    state_->bar.tips.emplace_back(command, tip);
    SendMessageA(getHWND(), TB_AUTOSIZE, 0, 0);
    return 1;
}

int TvToolBar::addSeparator() {
    TBBUTTON gap{};
    gap.fsStyle = BTNS_SEP;
    return getHWND() && SendMessageA(getHWND(), TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&gap));
}

void TvToolBar::setStatusBar(HWND bar) {
    state_->bar.tip.setStatusBar(bar);
}

int TvToolBar::refresh() {
    return showCommands();
}

int TvToolBar::setVisibleStatus(int visible, int) {
    const HWND bar = getHWND();
    if (!bar) return 0;
    const bool isShown = GetWindowLongA(bar, GWL_STYLE) & WS_VISIBLE;
    if (isShown == (visible != 0)) return 1;
    ShowWindow(bar, visible ? SW_SHOWNA : SW_HIDE);
    // What it lies in has more room or less.
    const HWND parent = GetParent(bar);
    RECT area{};
    GetClientRect(parent, &area);
    SendMessageA(parent, WM_SIZE, IsZoomed(parent) ? SIZE_MAXIMIZED : SIZE_RESTORED,
                 MAKELPARAM(area.right, area.bottom));
    return 1;
}

int TvToolBar::isVisible() const {
    return IsWindowVisible(getHWND());
}

int TvToolBar::setState(int commandId, BYTE bit, int status) {
    const HWND bar = getHWND();
    if (!bar || SendMessageA(bar, TB_COMMANDTOINDEX, static_cast<WPARAM>(commandId), 0) < 0)
        return 0;
    const auto before =
        static_cast<BYTE>(SendMessageA(bar, TB_GETSTATE, static_cast<WPARAM>(commandId), 0));
    const auto after = static_cast<BYTE>(status ? before | bit : before & ~bit);
    if (after != before)
        SendMessageA(bar, TB_SETSTATE, static_cast<WPARAM>(commandId), MAKELPARAM(after, 0));
    return 1;
}

int TvToolBar::setCommandCheckStatus(int commandId, int status) {
    return setState(commandId, TBSTATE_CHECKED, status);
}

int TvToolBar::setCommandEnableStatus(int commandId, int status) {
    return setState(commandId, TBSTATE_ENABLED, status);
}
