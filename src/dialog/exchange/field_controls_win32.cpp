// Texts are read as the system keeps them, in UTF-16, so that no character becomes another unseen.
#include <algorithm>
#include <cstddef>

#include "dialog/common_controls.h"
#include "dialog/exchange/field_controls.h"
#include "dialog/exchange/field_text.h"

namespace toolbox::dialog {
namespace {

bool isOfClass(HWND control, const char* name) {
    char found[64] = "";
    RealGetWindowClassA(control, found, sizeof found);
    return lstrcmpiA(found, name) == 0;
}

DWORD styleOf(HWND control) {
    return static_cast<DWORD>(GetWindowLongPtrA(control, GWL_STYLE));
}

std::string toBytes(const std::wstring& wide) {
    if (wide.empty()) return {};
    const auto length = static_cast<int>(wide.size());
    std::string text(wide.size() * 2, '\0');  // no code page of the system's needs more
    const int bytes =
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, text.data(),
                            static_cast<int>(text.size()), &kForeign, nullptr);
    text.resize(static_cast<std::size_t>(std::max(bytes, 0)));
    return text;
}

WPARAM asWord(int number) {
    return static_cast<WPARAM>(number);
}

}  // namespace

std::string entryOf(HWND control) {
    const auto length = static_cast<std::size_t>(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0));
    std::wstring text(length + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return toBytes(text);
}

void showEntry(HWND control, const std::string& text) {
    if (entryOf(control) != text) SetWindowTextA(control, text.c_str());
}

void limitEntry(HWND control, int limit) {
    const bool isCombo = ChoiceControl(control).hasEditField();
    const auto length = static_cast<int>(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0));
    const WPARAM most = limit > 0 ? asWord(std::max(limit, length)) : 0;
    SendMessageA(control, isCombo ? CB_LIMITTEXT : EM_LIMITTEXT, most, 0);
}

bool hasSeveralLines(HWND control) {
    return isOfClass(control, WC_EDITA) && (styleOf(control) & ES_MULTILINE);
}

bool takesInput(HWND control) {
    return (styleOf(control) & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

void selectEntry(HWND control) {
    constexpr WORD kToTheEnd = 0xFFFF;
    if (ChoiceControl(control).hasEditField())
        SendMessageA(control, CB_SETEDITSEL, 0, MAKELPARAM(0, kToTheEnd));
    else if (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageA(control, EM_SETSEL, 0, -1);
}

ChoiceControl::ChoiceControl(HWND control) : control_(control) {
    constexpr DWORD kSeveral = LBS_MULTIPLESEL | LBS_EXTENDEDSEL;
    if (isOfClass(control, WC_COMBOBOXA))
        kind_ = Kind::combo;
    else if (isOfClass(control, WC_LISTBOXA) && !(styleOf(control) & kSeveral))
        kind_ = Kind::list;
}

LRESULT ChoiceControl::send(UINT toCombo, UINT toList, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(control_, kind_ == Kind::combo ? toCombo : toList, wParam, lParam);
}

bool ChoiceControl::hasTexts() const {
    const DWORD style = styleOf(control_);
    if (kind_ == Kind::combo)
        return !(style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) || (style & CBS_HASSTRINGS);
    return !(style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) || (style & LBS_HASSTRINGS);
}

bool ChoiceControl::hasEditField() const {
    constexpr DWORD kKinds = CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST;
    return kind_ == Kind::combo && (styleOf(control_) & kKinds) != CBS_DROPDOWNLIST;
}

int ChoiceControl::index() const {
    // What is typed chooses nothing in the list.
    if (hasEditField() && hasTexts()) return find(text());
    return static_cast<int>(send(CB_GETCURSEL, LB_GETCURSEL));
}

void ChoiceControl::choose(int index) const {
    if (index >= send(CB_GETCOUNT, LB_GETCOUNT)) index = -1;
    index = std::max(index, -1);
    if (index < 0 || this->index() != index)
        static_cast<void>(send(CB_SETCURSEL, LB_SETCURSEL, asWord(index)));
}

std::string ChoiceControl::text() const {
    if (hasEditField()) return entryOf(control_);
    const auto chosen = static_cast<int>(send(CB_GETCURSEL, LB_GETCURSEL));
    return chosen < 0 ? std::string() : textAt(chosen);
}

void ChoiceControl::chooseText(const std::string& text) const {
    const int found = find(text);
    if (found >= 0 || !hasEditField()) choose(found);
    if (hasEditField()) showEntry(control_, text);
}

std::string ChoiceControl::textAt(int index) const {
    const LRESULT length = send(CB_GETLBTEXTLEN, LB_GETTEXTLEN, asWord(index));
    if (length < 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied =
        send(CB_GETLBTEXT, LB_GETTEXT, asWord(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(std::clamp<LRESULT>(copied, 0, length)));
    return text;
}

int ChoiceControl::find(const std::string& text) const {
    // The system finds without regard to case, and begins anew at the end of the list.
    if (text.empty()) return -1;
    for (int last = -1;;) {
        const auto found =
            static_cast<int>(send(CB_FINDSTRINGEXACT, LB_FINDSTRINGEXACT, asWord(last),
                                  reinterpret_cast<LPARAM>(text.c_str())));
        if (found <= last) return -1;
        if (textAt(found) == text) return found;
        last = found;
    }
}

bool isButton(HWND control) {
    return SendMessageA(control, WM_GETDLGCODE, 0, 0) & (DLGC_BUTTON | DLGC_RADIOBUTTON);
}

bool isRadioButton(HWND control) {
    return SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON;
}

int chosenOf(const std::vector<HWND>& buttons) {
    const auto chosen = std::ranges::find_if(buttons, [](HWND button) {
        return SendMessageA(button, BM_GETCHECK, 0, 0) == BST_CHECKED;
    });
    return chosen == buttons.end() ? -1 : static_cast<int>(chosen - buttons.begin());
}

void chooseOf(const std::vector<HWND>& buttons, int chosen) {
    if (chosenOf(buttons) == chosen) return;
    int number = 0;
    for (const HWND button : buttons)
        SendMessageA(button, BM_SETCHECK, number++ == chosen ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool isDatePicker(HWND control) {
    return isOfClass(control, DATETIMEPICK_CLASSA);
}

TarvDate pickedDate(HWND picker) {
    SYSTEMTIME time{};
    const LRESULT kind =
        SendMessageA(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    return kind == GDT_VALID ? TarvDate(time.wYear, time.wMonth, time.wDay) : TarvDate(0, 0, 0);
}

void pickDate(HWND picker, const TarvDate& date) {
    SYSTEMTIME time{};
    GetLocalTime(&time);  // the picker keeps the time of day
    constexpr int kYears = 9999;
    const bool isShown = date.isValid() && date.getYear() <= kYears;
    time.wYear = static_cast<WORD>(date.getYear());
    time.wMonth = static_cast<WORD>(date.getMonth());
    time.wDay = static_cast<WORD>(date.getDay());
    SendMessageA(picker, DTM_SETSYSTEMTIME, isShown ? GDT_VALID : GDT_NONE,
                 reinterpret_cast<LPARAM>(&time));
}

}  // namespace toolbox::dialog
