// Opening and closing a sheet. It is the system's modeless one in any case, with a message loop of
// its own where it is modal: so it can end at any moment, and whatever ends it is handled once.
#include <algorithm>
#include <utility>

#include "dialog/common_controls.h"
#include "dialog/parent_scope.h"
#include "dialog/sheet/open_sheets_win32.h"
#include "dialog/sheet/sheet_state.h"
#include "toolbox/windowing.h"

using toolbox::dialog::ParentScope;

namespace {

constexpr unsigned short kNotMadeText = 1330;
constexpr unsigned short kCancelText = 1335;
constexpr unsigned short kApplyText = 1336;
constexpr int kApplyButton = 0x3021;  // of the system's sheet

constexpr UINT_PTR kSubclass = 1;

void reportNotMade(const CString& name, HWND owner) {
    const DWORD code = GetLastError();
    const ParentScope parent(owner);
    char reason[1024] = "";
    GMSG::getLastErrorMsg(code, reason);
    GMSG::errorMsg(kNotMadeText, MB_ICONEXCLAMATION, name, reason);
}

/// The system has its buttons in its own language.
void showButtonTexts(HWND sheet) {
    for (const auto& [button, id] :
         {std::pair{IDCANCEL, kCancelText}, std::pair{kApplyButton, kApplyText}}) {
        RWCString text;
        if (GMSG::getString(id, text)) SetDlgItemTextA(sheet, button, text);
    }
}
/// Over the middle of its owner, on a screen.
void place(HWND sheet) {
    RECT own{};
    GetWindowRect(sheet, &own);
    const HWND owner = GetWindow(sheet, GW_OWNER);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoA(MonitorFromWindow(owner ? owner : sheet, MONITOR_DEFAULTTONEAREST), &screen);
    RECT around = screen.rcWork;
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const RECT& limits = screen.rcWork;
    const LONG x = std::max(
        std::min((around.left + around.right - width) / 2, limits.right - width), limits.left);
    const LONG y = std::max(
        std::min((around.top + around.bottom - height) / 2, limits.bottom - height), limits.top);
    SetWindowPos(sheet, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Sent to a sheet that was closed while the system could not let it go.
UINT endMessage() {
    static const UINT message = RegisterWindowMessageA("toolbox.EndSheet");
    return message;
}

/// Takes the message back that ended() woke the loop with.
void removeWakeUp() {
    const auto ofThread = reinterpret_cast<HWND>(-1);
    MSG message{};
    while (PeekMessageA(&message, ofThread, endMessage(), endMessage(), PM_REMOVE)) {
        if (message.message != WM_QUIT) continue;  // that one passes any filter
        PostQuitMessage(static_cast<int>(message.wParam));
        return;
    }
}

}  // namespace

bool TvPropertySheet::State::describePages(std::vector<HPROPSHEETPAGE>& described, HWND owner) {
    templates.clear();
    templates.reserve(pages.size());
    slots = pages;
    for (TvPropertyPage*& slot : slots) {
        const TvPropertyPage::Link& link = *slot->link_;
        const auto found = toolbox::window::findTemplate(link.name.get());
        if (found) templates.emplace_back(found);
        PROPSHEETPAGEA asked{};
        asked.dwSize = PROPSHEETPAGEA_V2_SIZE;  // every version of the common controls takes it
        asked.dwFlags = PSP_DLGINDIRECT | (link.title.IsEmpty() ? 0u : DWORD{PSP_USETITLE});
        asked.hInstance = found.module;
        asked.pResource = found ? templates.back().get() : nullptr;
        asked.pszTitle = link.title;
        asked.pfnDlgProc = TvPropertyPage::Link::procedure;
        asked.lParam = reinterpret_cast<LPARAM>(&slot);
        described.push_back(found ? CreatePropertySheetPageA(&asked) : nullptr);
        if (described.back()) continue;
        reportNotMade(link.name.text(), owner);
        described.pop_back();
        for (const HPROPSHEETPAGE each : described) DestroyPropertySheetPage(each);
        return false;
    }
    return true;
}

bool TvPropertySheet::State::make(const std::shared_ptr<State>& self, HWND owner) {
    State& state = *self;
    MDI* const frame = MDIApplication::getPMDI();
    if (!owner && frame) owner = frame->getFrame();
    if (owner) owner = GetAncestor(owner, GA_ROOT);
    state.wasMade = state.isClosing = state.isPlaced = state.isStored = state.isMute = false;
    state.result = 0;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
    InitCommonControlsEx(&classes);
    std::vector<HPROPSHEETPAGE> described;
    if (!state.describePages(described, owner)) return false;

    PROPSHEETHEADERA header{};
    header.dwSize = PROPSHEETHEADERA_V1_SIZE;
    header.dwFlags = PSH_MODELESS | PSH_USECALLBACK | PSH_NOCONTEXTHELP;
    header.hwndParent = owner;
    header.pszCaption = state.title;
    header.nPages = static_cast<UINT>(described.size());
    header.nStartPage = static_cast<UINT>(state.startPage);
    header.phpage = described.data();
    header.pfnCallback = callback;
    state.isOpening = true;
    if (state.isModal) state.others.switchOff();
    State* const outer = std::exchange(making, &state);
    state.kept = self;
    PropertySheetA(&header);
    making = outer;
    state.isOpening = false;
    if (!state.wasMade) {
        state.kept.reset();
        state.others.switchOn();
        reportNotMade(state.title, owner);
        return false;
    }
    if (state.isClosing && state.window) DestroyWindow(state.window);
    if (state.window && !state.isModal && frame)
        state.registered = frame->registerModeless(state.window);
    state.tellEntered();
    if (!state.isOpen()) return false;
    return true;
}

int CALLBACK TvPropertySheet::State::callback(HWND window, UINT message, LPARAM) {
    if (message == PSCB_INITIALIZED && making) making->wasInitialized(window);
    return 0;
}

void TvPropertySheet::State::wasInitialized(HWND made) {
    if (window) return;  // another sheet, which a page opened
    window = made;
    wasMade = true;
    toolbox::dialog::enterSheet(made, isModal);
    SetWindowSubclass(made, watch, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK TvPropertySheet::State::watch(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam, UINT_PTR id, DWORD_PTR data) {
    const std::shared_ptr<State> state = reinterpret_cast<State*>(data)->kept;
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, watch, id);
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        state->ended();
        return result;
    }
    if (message == endMessage() && state->isClosing && state->notices == 0) {
        DestroyWindow(window);
        return 0;
    }
    if (message == WM_SHOWWINDOW && wParam && !state->isPlaced) {
        state->isPlaced = true;
        showButtonTexts(window);
        place(window);
    }
    return state->pass(message, wParam, lParam);
}

TvPropertySheet::State::Wish TvPropertySheet::State::wishOf(UINT message, WPARAM wParam,
                                                            LPARAM lParam) {
    constexpr WPARAM kSystemCommand = 0xFFF0;
    const auto ofButton = [](WPARAM button) {
        return button == PSBTN_OK         ? Wish::ok
               : button == PSBTN_APPLYNOW ? Wish::apply
               : button == PSBTN_CANCEL   ? Wish::cancel
                                          : Wish::none;
    };
    switch (message) {
        case WM_COMMAND:
            return wParam == IDOK           ? Wish::ok
                   : wParam == kApplyButton ? Wish::apply
                   : wParam == IDCANCEL     ? Wish::cancel
                                            : Wish::none;
        case WM_SYSCOMMAND:
            return (wParam & kSystemCommand) == SC_CLOSE ? Wish::cancel : Wish::none;
        case WM_CLOSE:
            return Wish::cancel;
        case PSM_PRESSBUTTON:
            return ofButton(wParam);
        case PSM_APPLY:
            return Wish::apply;
        case PSM_SETCURSEL:
        case PSM_SETCURSELID:
            return Wish::turn;
        case WM_NOTIFY:
            return reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGING ? Wish::turn
                                                                                   : Wish::none;
        default:
            return Wish::none;
    }
}

LRESULT TvPropertySheet::State::pass(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<State> self = kept;
    const HWND sheetWindow = window;
    if (message == PSM_ISDIALOGMESSAGE && turnPage(*reinterpret_cast<const MSG*>(lParam)))
        return TRUE;
    const Wish wish =
        isOpen() && !isOpening && !isAllowed ? wishOf(message, wParam, lParam) : Wish::none;
    if (wish != Wish::none && !allows(wish)) {
        // The tab control is answered that its tab stays.
        if (message == WM_NOTIFY && window) SetWindowLongPtrA(window, DWLP_MSGRESULT, TRUE);
        return message == WM_NOTIFY;
    }
    if (wish != Wish::none) isAllowed = true;
    ++passing;
    const LRESULT answer = DefSubclassProc(sheetWindow, message, wParam, lParam);
    --passing;
    if (wish == Wish::none) return answer;
    isAllowed = false;
    if (isOpen() && isDone())
        close(isStored);
    else
        tellEntered();
    return answer;
}

bool TvPropertySheet::State::allows(Wish wish) {
    switch (wish) {
        case Wish::ok:
        case Wish::apply:
            return mayLeave() && storeAll(wish == Wish::ok);
        case Wish::cancel:
            if (!mayCancel()) return false;
            others.switchOn();
            return true;
        default:
            return mayLeave();
    }
}

bool TvPropertySheet::State::isDone() const {
    return !isOpening && SendMessageA(window, PSM_GETCURRENTPAGEHWND, 0, 0) == 0;
}

bool TvPropertySheet::State::close(int outcome) {
    if (!isOpen()) return false;
    isClosing = true;
    result = outcome;
    // Before the window hides, so that the activation stays in the program.
    others.switchOn();
    if (isOpening) return true;
    if (notices == 0)
        DestroyWindow(window);
    else
        ShowWindow(window, SW_HIDE);
    return true;
}

void TvPropertySheet::State::ended() {
    MDI* const frame = MDIApplication::getPMDI();
    if (registered && frame) frame->unregisterModeless(window);
    toolbox::dialog::removeSheet(window);
    registered = false;
    window = nullptr;
    others.switchOn();
    templates.clear();
    entering = nullptr;
    // A sent message may have ended it, for which the loop of run() does not wake up.
    if (isModal) PostThreadMessageA(GetCurrentThreadId(), endMessage(), 0, 0);
    const std::shared_ptr<State> self = std::move(kept);
    if (sheet && !isMute) sheet->destroyed();
    if (sheet && !isMute && deletes && !window) delete sheet;
}

TvPropertySheet::State::Notice::Notice(State& state) : state_(state.kept) {
    ++state_->notices;
}

TvPropertySheet::State::Notice::~Notice() {
    if (--state_->notices == 0 && state_->isClosing && state_->window)
        PostMessageA(state_->window, endMessage(), 0, 0);
}

TvPropertySheet::TvPropertySheet(const CString& title) : state_(std::make_shared<State>()) {
    state_->sheet = this;
    state_->title = title;
}

TvPropertySheet::~TvPropertySheet() {
    const std::shared_ptr<State> state = state_;
    state->sheet = nullptr;
    for (TvPropertyPage* const page : state->pages) page->link_->sheet.reset();
    state->pages.clear();
    std::ranges::fill(state->slots, nullptr);
    state->close(0);
}

int TvPropertySheet::add(TvPropertyPage& page) {
    if (state_->window || state_->isOpening || page.link_->sheet) return 0;
    page.link_->sheet = state_;
    state_->pages.push_back(&page);
    return 1;
}

void TvPropertySheet::setStartPage(int index) {
    state_->startPage = std::clamp(index, 0, static_cast<int>(state_->pages.size()) - 1);
}

int TvPropertySheet::run(HWND owner) {
    const std::shared_ptr<State> state = state_;
    if (!state->mayOpen()) return 0;
    state->isModal = true;
    if (!State::make(state, owner)) return state->result;
    const ParentScope parent(state->window);
    MSG message{};
    BOOL got = TRUE;
    while (state->window && (got = GetMessageA(&message, nullptr, 0, 0)) > 0) {
        if (SendMessageA(state->window, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)))
            continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    const auto code = static_cast<int>(message.wParam);
    if (got <= 0) state->close(0);
    removeWakeUp();
    if (got == 0) PostQuitMessage(code);  // for the loop around this one
    return state->result;
}

HWND TvPropertySheet::open(HWND owner) {
    const std::shared_ptr<State> state = state_;
    if (!state->mayOpen()) return nullptr;
    state->isModal = false;
    return State::make(state, owner) ? state->window : nullptr;
}

int TvPropertySheet::close(int result) {
    return state_->close(result);
}

int TvPropertySheet::wasMade() const {
    return state_->wasMade;
}

int TvPropertySheet::isOpen() const {
    return state_->isOpen();
}

int TvPropertySheet::isModal() const {
    return state_->isOpen() && state_->isModal;
}

HWND TvPropertySheet::getHWND() const {
    return state_->isOpen() ? state_->window : nullptr;
}

void TvPropertySheet::deleteWhenClosed(int on) {
    state_->deletes = on != 0;
}

void TvPropertySheet::applied(int) {}

void TvPropertySheet::destroyed() {}
