// What the user does to an edit field. Every way in which characters come from the user is looked
// at: keys, the clipboard by its key, by its older key, by the menu and by the message, and the
// message that what is dropped is inserted with. What the program sets is free.
#include "base/template_text.h"
#include "dialog/controls/edit_state_win32.h"
#include "text/text_resources.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr unsigned int kCharacterRefused = 1360;
constexpr unsigned int kPasteRefused = 1361;
constexpr std::size_t kShownOfPaste = 40;
constexpr int kPage = 10;          // steps
constexpr UINT kNoteShown = 5000;  // ms

bool isDown(int key) {
    return GetKeyState(key) < 0;
}

/// The byte of a WM_CHAR; none for a character that the code page does not have.
std::string typedCharacter(HWND window, WPARAM character) {
    if (!IsWindowUnicode(window)) return {static_cast<char>(character)};
    const wchar_t wide = static_cast<wchar_t>(character);
    const std::string bytes = bytesOf({&wide, 1});
    return bytes.size() == 1 ? bytes : std::string(1, '\x01');
}

bool isPointerOver(HWND window) {
    POINT pointer{};
    GetCursorPos(&pointer);
    return WindowFromPoint(pointer) == window;
}

int stepsOf(WPARAM key) {
    switch (key) {
        case VK_UP:
            return 1;
        case VK_DOWN:
            return -1;
        case VK_PRIOR:
            return kPage;
        case VK_NEXT:
            return -kPage;
        default:
            return 0;
    }
}

}  // namespace

LRESULT TvEdit::input(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CHAR:
            return typed(wParam, lParam);
        case WM_KEYDOWN:
            if (pressed(wParam)) return 0;
            return edited(message, wParam, lParam);
        case WM_MOUSEWHEEL:
            if (!state_->move || GetFocus() != getHWND() || !isPointerOver(getHWND())) break;
            if (const int notches = state_->wheel.add(wParam)) step(notches);
            return 0;
        case WM_COMMAND:  // of the field's own menu
            if (lParam || LOWORD(wParam) != WM_PASTE) return edited(message, wParam, lParam);
            [[fallthrough]];
        case WM_PASTE:
            paste(clipboardText(getHWND()));
            return 0;
        case EM_REPLACESEL:
            if (!wParam) return edited(message, wParam, lParam);
            paste(messageText(getHWND(), lParam));
            return 0;
        case WM_SETTEXT:
        case WM_CUT:
        case WM_CLEAR:
        case WM_UNDO:
        case EM_UNDO:
        case WM_IME_CHAR:
            return edited(message, wParam, lParam);
        case WM_LBUTTONDOWN:
            state_->note.hide();
            break;
        default:
            break;
    }
    return pass(message, wParam, lParam);
}

LRESULT TvEdit::typed(WPARAM character, LPARAM data) {
    const std::string c = typedCharacter(getHWND(), character);
    const bool isKey = character < ' ' || character == '\x7F';
    const bool isReadOnly = GetWindowLongA(getHWND(), GWL_STYLE) & ES_READONLY;
    if (!isKey && !isReadOnly && !state_->rule.mayType(beforeSelection(), c[0])) {
        refuse(kCharacterRefused, c == "\x01" ? "?" : c);
        return 0;
    }
    return edited(WM_CHAR, character, data);
}

/// True when the key has had its effect.
bool TvEdit::pressed(WPARAM key) {
    if (key == VK_INSERT && isDown(VK_SHIFT) && !isDown(VK_CONTROL)) {
        paste(clipboardText(getHWND()));
        return true;
    }
    const int steps = stepsOf(key);
    if (!steps || !state_->move || isDown(VK_SHIFT) || isDown(VK_CONTROL) || isDown(VK_MENU))
        return false;
    step(steps);
    return true;
}

std::string TvEdit::beforeSelection() const {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageA(getHWND(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    return windowText(getHWND()).substr(0, from);
}

void TvEdit::paste(const std::string& text) {
    const LONG style = GetWindowLongA(getHWND(), GWL_STYLE);
    if (style & ES_READONLY) return;
    DWORD from = 0;
    DWORD to = 0;
    pass(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const auto stays = static_cast<std::size_t>(GetWindowTextLengthA(getHWND())) - (to - from);
    const auto most = static_cast<std::size_t>(pass(EM_GETLIMITTEXT, 0, 0));
    const std::string before = beforeSelection();
    const Insertion where{before, most > stays ? most - stays : 0, (style & ES_MULTILINE) != 0};
    const auto inserted = state_->rule.pasted(text, where, state_->units.view());
    if (!inserted) {
        refuse(kPasteRefused, text.substr(0, kShownOfPaste));
        return;
    }
    if (inserted->empty() && !text.empty()) MessageBeep(MB_OK);
    if (!inserted->empty()) insert(*inserted);
}

/// Replaces the selection as the user does.
void TvEdit::insert(std::string_view text) {
    const std::string bytes(text);
    const std::wstring wide = wideOf(bytes);
    const bool isUnicode = IsWindowUnicode(getHWND());
    edited(EM_REPLACESEL, TRUE,
           isUnicode ? reinterpret_cast<LPARAM>(wide.c_str())
                     : reinterpret_cast<LPARAM>(bytes.c_str()));
}

void TvEdit::refuse(unsigned int reason, const std::string& what) {
    MessageBeep(MB_OK);
    const std::string text = toolbox::text::loadText(reason);
    toolbox::text::MessageBuffer shown;
    toolbox::base::printTemplate(shown, sizeof shown, text.c_str(), what.c_str());
    RECT place{};
    GetWindowRect(getHWND(), &place);
    if (shown[0] && state_->note.show(getHWND(), shown, place))
        SetTimer(getHWND(), state_->noteTimer(), kNoteShown, nullptr);
}

/// Passes a message on that may change the text. A change ends the mark, unless who was told of it
/// set one, and begins the pause.
LRESULT TvEdit::edited(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!state_->check && state_->fault.empty() && state_->cue.empty())
        return pass(message, wParam, lParam);
    const Watch self(life_);
    const std::string before = windowText(getHWND());
    const unsigned int faults = state_->faults;
    const LRESULT result = pass(message, wParam, lParam);
    if (self.gone() || !getHWND() || windowText(getHWND()) == before) return result;
    State& state = *state_;
    state.note.hide();
    if (state.faults != faults) return result;
    setFault(CString());
    if (state.check && message != WM_SETTEXT)
        SetTimer(getHWND(), state.timer(), state.pause, nullptr);
    if (before.empty() || GetWindowTextLengthA(getHWND()) == 0)
        if (state.drawsCue && !state.cue.empty()) InvalidateRect(getHWND(), nullptr, TRUE);
    return result;
}
