// What a field shows besides its text: units and the mark of a wrong entry in its right margin, the
// cue of an empty one. Colours are the system's, and the mark is a sign: it is seen under every
// choice of colours.
#include "dialog/controls/edit_state_win32.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr int kGap = 3;  // at 96 DPI, around what is in the margin

int gap() {
    return MulDiv(kGap, screenDpi(), 96);
}

/// The background of a field, as its parent wants it.
HBRUSH background(HWND field, HDC context) {
    const bool isPlain =
        IsWindowEnabled(field) && !(GetWindowLongA(field, GWL_STYLE) & ES_READONLY);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageA(GetParent(field), isPlain ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC,
                     reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(field)));
    return brush ? brush : GetSysColorBrush(isPlain ? COLOR_WINDOW : COLOR_BTNFACE);
}

}  // namespace

bool TvEdit::hasMargin() const {
    return getHWND() && !(GetWindowLongA(getHWND(), GWL_STYLE) & ES_MULTILINE);
}

/// Makes room in the margin for what it shows.
void TvEdit::layOut() {
    if (!hasMargin()) return;
    const State& state = *state_;
    const FontContext font(getHWND());
    int margin = state.marginBefore;
    if (!state.units.empty()) margin += font.width(state.units.view()) + gap();
    if (!state.fault.empty()) margin += font.height() + gap();
    pass(EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(0, margin));
    InvalidateRect(getHWND(), nullptr, TRUE);
}

LRESULT TvEdit::painted(UINT message, WPARAM wParam, LPARAM lParam) {
    const Watch self(life_);
    const LRESULT result = pass(message, wParam, lParam);
    if (self.gone() || !getHWND()) return result;
    const HDC context = message == WM_PRINTCLIENT ? reinterpret_cast<HDC>(wParam) : nullptr;
    if (hasMargin()) drawMargin(context);
    if (!self.gone() && getHWND()) drawCue(context);
    return result;
}

void TvEdit::drawMargin(HDC given) {
    const State& state = *state_;
    if (state.units.empty() && state.fault.empty()) return;
    const FontContext font(getHWND(), given);
    const HDC context = font.context();
    const Watch self(life_);
    const HBRUSH brush = background(getHWND(), context);
    if (self.gone() || !getHWND()) return;
    RECT area{};
    GetClientRect(getHWND(), &area);
    RECT inside{};
    pass(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
    area.left = area.right - HIWORD(pass(EM_GETMARGINS, 0, 0));
    FillRect(context, &area, brush);
    area.right -= state.marginBefore;
    area.top = inside.top;  // on the line of the text
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    const std::string& units = state.units.str();
    DrawTextA(context, units.c_str(), static_cast<int>(units.size()), &area,
              DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX | DT_TOP);
    if (state.fault.empty()) return;
    const int size = font.height();
    DrawIconEx(context, area.left + gap(), area.top,
               LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_HAND)), size, size, 0, nullptr,
               DI_NORMAL);
}

void TvEdit::drawCue(HDC given) {
    const State& state = *state_;
    if (!state.drawsCue || state.cue.empty() || GetFocus() == getHWND()) return;
    if (GetWindowTextLengthA(getHWND()) > 0) return;
    const FontContext font(getHWND(), given);
    RECT area{};
    pass(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    SetBkMode(font.context(), TRANSPARENT);
    SetTextColor(font.context(), GetSysColor(COLOR_GRAYTEXT));
    const LONG style = GetWindowLongA(getHWND(), GWL_STYLE);
    const UINT side = style & ES_RIGHT ? DT_RIGHT : style & ES_CENTER ? DT_CENTER : DT_LEFT;
    DrawTextA(font.context(), state.cue.c_str(), -1, &area,
              side | DT_NOPREFIX | DT_TOP | DT_END_ELLIPSIS);
}
