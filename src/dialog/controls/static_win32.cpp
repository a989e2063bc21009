// A static text that shows a value, a path or a link. A value is the window's text; paths and links
// are drawn here, since the window's text stays the whole one.
#include <algorithm>
#include <cstdlib>

#include "base/trimmed.h"
#include "dialog/controls/control_texts.h"
#include "dialog/controls/window_text_win32.h"
#include "toolbox/controls.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr LONG kLinkStyle = WS_TABSTOP | SS_NOTIFY;

bool hasStyle(HWND window, LONG style) {
    return (GetWindowLongA(window, GWL_STYLE) & style) == style;
}

UINT sideOf(HWND window) {
    switch (GetWindowLongA(window, GWL_STYLE) & SS_TYPEMASK) {
        case SS_RIGHT:
            return DT_RIGHT;
        case SS_CENTER:
            return DT_CENTER;
        default:
            return DT_LEFT;
    }
}

int lightness(COLORREF colour) {
    return (GetRValue(colour) * 3 + GetGValue(colour) * 6 + GetBValue(colour)) / 10;
}

/// The system's colour of links, or another one of its colours where nobody could read that.
COLORREF linkColour(COLORREF behind) {
    constexpr int kReadable = 80;
    for (const int choice : {COLOR_HOTLIGHT, COLOR_HIGHLIGHT})
        if (std::abs(lightness(GetSysColor(choice)) - lightness(behind)) >= kReadable)
            return GetSysColor(choice);
    return GetSysColor(COLOR_BTNTEXT);
}

/// The window's font, underlined, for as long as it lives.
class Underlined {
  public:
    explicit Underlined(HDC context) : context_(context) {
        LOGFONTA font{};
        GetObjectA(GetCurrentObject(context, OBJ_FONT), sizeof font, &font);
        font.lfUnderline = TRUE;
        font_ = CreateFontIndirectA(&font);
        before_ = SelectObject(context, font_);
    }
    ~Underlined() {
        SelectObject(context_, before_);
        DeleteObject(font_);
    }
    Underlined(const Underlined&) = delete;
    Underlined& operator=(const Underlined&) = delete;

  private:
    HDC context_;
    HFONT font_;
    HGDIOBJ before_;
};

}  // namespace

struct TvStatic::State {
    enum Kind : int { plain, path, link };

    [[nodiscard]] std::string shown(HWND window, const FontContext& font) const;
    [[nodiscard]] RECT linkArea(HWND window) const;

    int kind = plain;
    std::function<void()> follow;
    LONG addedStyle = 0;
    TvToolTip tip;
};

TvStatic::TvStatic() : state_(std::make_unique<State>()) {}

TvStatic::~TvStatic() {
    detach();
}

int TvStatic::accepts(const char* className) const {
    return lstrcmpiA(className, "Static") == 0;
}

void TvStatic::detaching() {
    become(State::plain);
}

/// The window's text, shortened where it is a path that is too long.
std::string TvStatic::State::shown(HWND window, const FontContext& font) const {
    std::string text = windowText(window);
    if (kind != path) return text;
    RECT area{};
    GetClientRect(window, &area);
    return shortenedPath(text, area.right, [&](std::string_view part) { return font.width(part); });
}

/// Where the text of a link stands, in the window's client area.
RECT TvStatic::State::linkArea(HWND window) const {
    RECT area{};
    GetClientRect(window, &area);
    const FontContext font(window);
    const int width = std::min<int>(font.width(windowText(window)), area.right);
    const int height = std::min<int>(font.height(), area.bottom);
    const UINT side = sideOf(window);
    const int left = side == DT_RIGHT    ? area.right - width
                     : side == DT_CENTER ? (area.right - width) / 2
                                         : 0;
    const int top = hasStyle(window, SS_CENTERIMAGE) ? (area.bottom - height) / 2 : 0;
    return {left, top, left + width, top + height};
}

void TvStatic::become(int kind) {
    const HWND window = getHWND();
    State& state = *state_;
    if (state.addedStyle)
        SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) & ~state.addedStyle);
    state.addedStyle = 0;
    state.tip.detach();
    state.follow = nullptr;
    state.kind = kind;
    if (kind == State::link) {
        const LONG style = GetWindowLongA(window, GWL_STYLE);
        state.addedStyle = kLinkStyle & ~style;
        SetWindowLongA(window, GWL_STYLE, style | kLinkStyle);
    }
    InvalidateRect(window, nullptr, TRUE);
}

int TvStatic::setValue(FormatedValue& value, const CString& units) {
    if (!getHWND()) return 0;
    const Watch self(life_);
    const RWCString printed = value.getStringValue();
    if (self.gone() || !getHWND()) return 0;
    if (state_->kind != State::plain) become(State::plain);
    std::string text(toolbox::base::trimmed(printed.view()));
    if (!units.empty()) text += " " + units.str();
    setWindowText(getHWND(), hasStyle(getHWND(), SS_NOPREFIX) ? text : withoutMnemonics(text));
    return 1;
}

int TvStatic::setPath(const CString& path) {
    if (!getHWND()) return 0;
    if (state_->kind != State::path) {
        become(State::path);
        state_->tip.attach(getHWND());
        state_->tip.add(getHWND(), TvTip([this] {
                            const std::string whole = windowText(getHWND());
                            const FontContext font(getHWND());
                            return CString(state_->shown(getHWND(), font) == whole ? "" : whole);
                        }));
    }
    SetWindowTextA(getHWND(), path.c_str());
    return 1;
}

int TvStatic::setLink(const CString& text, std::function<void()> follow) {
    if (!getHWND()) return 0;
    become(State::link);
    state_->follow = std::move(follow);
    SetWindowTextA(getHWND(), text.c_str());
    return 1;
}

/// Calls what follows the link, or tells the parent.
void TvStatic::go() {
    const HWND window = getHWND();
    if (const auto follow = state_->follow) {
        follow();  // the object may go
        return;
    }
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), STN_CLICKED),
                 reinterpret_cast<LPARAM>(window));
}

void TvStatic::draw(HDC context) {
    const HWND window = getHWND();
    const State& state = *state_;
    RECT area{};
    GetClientRect(window, &area);
    const FontContext font(window, context);
    const Watch self(life_);
    const auto brush = reinterpret_cast<HBRUSH>(SendMessageA(GetParent(window), WM_CTLCOLORSTATIC,
                                                             reinterpret_cast<WPARAM>(context),
                                                             reinterpret_cast<LPARAM>(window)));
    if (self.gone() || !getHWND()) return;
    FillRect(context, &area, brush ? brush : GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(context, TRANSPARENT);
    const bool isLink = state.kind == State::link;
    if (!IsWindowEnabled(window))
        SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    else if (isLink)
        SetTextColor(context, linkColour(GetBkColor(context)));
    const std::string text = state.shown(window, font);
    const UINT middle = hasStyle(window, SS_CENTERIMAGE) ? DT_VCENTER : DT_TOP;
    const UINT how = sideOf(window) | middle | DT_SINGLELINE | DT_NOPREFIX;
    if (!isLink) {
        DrawTextA(context, text.c_str(), -1, &area, how);
        return;
    }
    {
        const Underlined underlined(context);
        DrawTextA(context, text.c_str(), -1, &area, how);
    }
    const RECT link = state.linkArea(window);
    if (GetFocus() == window) DrawFocusRect(context, &link);
}

LRESULT TvStatic::painted(UINT message, WPARAM context) {
    if (message == WM_PRINTCLIENT) {
        draw(reinterpret_cast<HDC>(context));
        return 0;
    }
    const HWND window = getHWND();  // painting ends, whatever becomes of the object
    PAINTSTRUCT paint{};
    BeginPaint(window, &paint);
    draw(paint.hdc);
    EndPaint(window, &paint);
    return 0;
}

LRESULT TvStatic::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (state_->kind == State::plain) return pass(message, wParam, lParam);
    const HWND window = getHWND();
    switch (message) {
        case WM_PAINT:
        case WM_PRINTCLIENT:
            return painted(message, wParam);
        case WM_ERASEBKGND:
            return 1;  // drawn over as a whole
        case WM_SETTEXT:
        case WM_ENABLE:
        case WM_SETFONT:
        case WM_SIZE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS: {
            // A static may draw its text at once.
            const LRESULT result = pass(message, wParam, lParam);
            InvalidateRect(window, nullptr, FALSE);
            return result;
        }
        default:
            break;
    }
    return state_->kind == State::link ? linked(message, wParam, lParam)
                                       : hit(message, wParam, lParam);
}

/// A static is transparent to the pointer: where it shows something it is not.
LRESULT TvStatic::hit(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCHITTEST) return HTCLIENT;
    return pass(message, wParam, lParam);
}

LRESULT TvStatic::linked(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = getHWND();
    const auto isOn = [&](POINT point) {
        const RECT area = state_->linkArea(window);
        return PtInRect(&area, point) != 0;
    };
    POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    switch (message) {
        case WM_NCHITTEST:
            ScreenToClient(window, &point);
            return isOn(point) ? HTCLIENT : HTTRANSPARENT;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT) break;
            SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
            return TRUE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SetFocus(window);
            if (getHWND()) SetCapture(window);
            return 0;
        case WM_LBUTTONUP:
            if (GetCapture() != window) return 0;
            ReleaseCapture();
            if (getHWND() && isOn(point)) go();
            return 0;
        case WM_GETDLGCODE: {
            const auto* const key = reinterpret_cast<const MSG*>(lParam);
            const bool isOurs = key && (key->wParam == VK_RETURN || key->wParam == VK_SPACE);
            return isOurs ? DLGC_WANTMESSAGE : DLGC_STATIC;
        }
        case WM_KEYDOWN:
            if (wParam != VK_RETURN && wParam != VK_SPACE) break;
            go();
            return 0;
        default:
            break;
    }
    return pass(message, wParam, lParam);
}
