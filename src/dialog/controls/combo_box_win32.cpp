// A combo box: its entries, the completion of what is typed into its field, its recent entries. The
// field is a window of its own, with an object of its own attached to it.
#include <algorithm>

#include "dialog/controls/control_texts.h"
#include "dialog/controls/window_text_win32.h"
#include "text/text_resources.h"
#include "toolbox/controls.h"
#include "toolbox/keys.h"
#include "toolbox/messages.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr UINT kNoKey = 0xFFFFFFFF;  // also of an item without data
constexpr WPARAM kFromTheStart = static_cast<WPARAM>(-1);
constexpr int kMostRecent = 50;

LPARAM dataOf(UINT key) {
    return static_cast<LPARAM>(key);
}

/// An entry with the data of its item, which is a key's number or the application's own.
struct Entry {
    std::string text;
    LPARAM data = dataOf(kNoKey);
};

int find(HWND combo, UINT how, const std::string& text) {
    return static_cast<int>(
        SendMessageA(combo, how, kFromTheStart, reinterpret_cast<LPARAM>(text.c_str())));
}

/// In characters of the combo box: nothing is converted on the way.
template <class Character>
std::basic_string<Character> rawEntryAt(HWND combo, WPARAM index, decltype(SendMessageA)& send) {
    const LRESULT length = send(combo, CB_GETLBTEXTLEN, index, 0);
    if (length <= 0) return {};
    std::basic_string<Character> text(static_cast<std::size_t>(length) + 1, Character());
    const LRESULT copied = send(combo, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(std::max<LRESULT>(copied, 0)));
    return text;
}

std::string entryAt(HWND combo, int index) {
    const auto at = static_cast<WPARAM>(index);
    if (!IsWindowUnicode(combo)) return rawEntryAt<char>(combo, at, SendMessageA);
    return bytesOf(rawEntryAt<wchar_t>(combo, at, SendMessageW));
}

bool hasTexts(HWND combo) {
    const LONG style = GetWindowLongA(combo, GWL_STYLE);
    return !(style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) || (style & CBS_HASSTRINGS);
}

bool hasField(HWND combo) {
    return (GetWindowLongA(combo, GWL_STYLE) & CBS_DROPDOWNLIST) != CBS_DROPDOWNLIST;
}

FieldText fieldText(HWND field) {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    return {windowText(field), from, to};
}

/// The wheel over a closed combo box goes to what it lies in.
bool leavesWheel(HWND combo) {
    if ((GetWindowLongA(combo, GWL_STYLE) & CBS_DROPDOWNLIST) == CBS_SIMPLE) return false;
    return !SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0);
}

/// The field of a combo box.
class Field : public TvControl {
  public:
    ~Field() override { detach(); }
    bool completes = true;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        const HWND combo = GetParent(getHWND());
        if (message == WM_MOUSEWHEEL && leavesWheel(combo))
            return SendMessageA(GetParent(combo), message, wParam, lParam);
        if (message != WM_CHAR || wParam < ' ' || !completes) return pass(message, wParam, lParam);
        const Watch self(life_);
        const FieldText before = fieldText(getHWND());
        const LRESULT result = pass(message, wParam, lParam);
        if (!self.gone() && getHWND()) complete(combo, before);
        return result;
    }

  private:
    void complete(HWND combo, const FieldText& before) {
        const HWND field = getHWND();
        const FieldText typed = fieldText(field);
        if (!isInsertionAtEnd(before, typed) || find(combo, CB_FINDSTRINGEXACT, typed.text) >= 0)
            return;
        const int found = find(combo, CB_FINDSTRING, typed.text);
        if (found < 0) return;
        const std::string entry = entryAt(combo, found);
        if (entry.size() <= typed.text.size()) return;
        const std::string rest = entry.substr(typed.text.size());
        SendMessageA(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(rest.c_str()));
        SendMessageA(field, EM_SETSEL, typed.text.size(), -1);
    }
};

}  // namespace

struct TvComboBox::State {
    int show(HWND combo);
    void adopt(HWND combo);
    [[nodiscard]] std::vector<Entry> shown() const;

    std::vector<Entry> entries;
    std::vector<std::string> recent;
    std::string section;
    std::string name;
    int most = 0;
    int widest = 0;
    LRESULT count = 0;  // of the entries that were put into the list
    bool isFilling = false;
    Field field;
};

TvComboBox::TvComboBox() : state_(std::make_unique<State>()) {}

TvComboBox::~TvComboBox() {
    detach();
}

int TvComboBox::accepts(const char* className) const {
    return lstrcmpiA(className, "ComboBox") == 0;
}

void TvComboBox::attached() {
    if (hasField(getHWND()))
        state_->field.attach(FindWindowExA(getHWND(), nullptr, "Edit", nullptr));
    widen();
}

void TvComboBox::detaching() {
    state_->field.detach();
}

/// The recent entries, then the others.
std::vector<Entry> TvComboBox::State::shown() const {
    std::vector<Entry> all;
    const auto named = [](const std::vector<Entry>& in, const std::string& text) {
        return std::find_if(in.begin(), in.end(),
                            [&](const Entry& entry) { return entry.text == text; });
    };
    for (const std::string& text : recent) {
        const auto own = named(entries, text);
        all.push_back({text, own != entries.end() ? own->data : dataOf(kNoKey)});
    }
    const std::vector<Entry> first = all;
    for (const Entry& entry : entries)
        if (named(first, entry.text) == first.end()) all.push_back(entry);
    return all;
}

/// Entries that the application put into the list itself are kept.
void TvComboBox::State::adopt(HWND combo) {
    const LRESULT now = SendMessageA(combo, CB_GETCOUNT, 0, 0);
    if (now == count) return;
    std::vector<Entry> found;
    for (int i = 0; i < now; ++i) {
        const std::string text = entryAt(combo, i);
        const bool isRecent = count > 0 && std::count(recent.begin(), recent.end(), text) > 0;
        const bool isOwn = std::any_of(entries.begin(), entries.end(),
                                       [&](const Entry& entry) { return entry.text == text; });
        if (isRecent && !isOwn) continue;
        found.push_back({text, SendMessageA(combo, CB_GETITEMDATA, static_cast<WPARAM>(i), 0)});
    }
    entries = std::move(found);
}

/// Puts the entries into the list; the text stays.
int TvComboBox::State::show(HWND combo) {
    const std::string text = windowText(combo);
    SendMessageA(combo, WM_SETREDRAW, FALSE, 0);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    int all = 1;
    for (const Entry& entry : shown()) {
        const LRESULT at =
            SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.text.c_str()));
        if (at < 0)
            all = 0;
        else
            SendMessageA(combo, CB_SETITEMDATA, static_cast<WPARAM>(at), entry.data);
    }
    count = SendMessageA(combo, CB_GETCOUNT, 0, 0);
    const int at = find(combo, CB_FINDSTRINGEXACT, text);
    if (at >= 0 && entryAt(combo, at) == text)
        SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
    else
        SetWindowTextA(combo, text.c_str());
    SendMessageA(combo, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(combo, nullptr, TRUE);
    return all;
}

int TvComboBox::put() {
    if (!getHWND()) return 0;
    const Watch self(life_);
    state_->isFilling = true;
    const int all = state_->show(getHWND());
    if (self.gone()) return 0;
    state_->isFilling = false;
    widen();
    return all;
}

int TvComboBox::fill(const std::vector<CString>& texts) {
    if (!getHWND()) return 0;
    state_->entries.clear();
    for (const CString& text : texts) state_->entries.push_back({text.str()});
    return put();
}

int TvComboBox::fill(unsigned short resource) {
    const std::string text = toolbox::text::loadText(resource);
    if (!getHWND() || text.empty()) return 0;
    state_->entries.clear();
    for (std::string& entry : entriesOf(text)) state_->entries.push_back({std::move(entry)});
    return put();
}

int TvComboBox::fill(UDManager& keys) {
    if (!getHWND()) return 0;
    state_->entries.clear();
    const RWTValOrderedVector<UINT> ids = keys.getMatching();
    for (std::size_t i = 0; i < ids.entries(); ++i) {
        const UINT id = ids[i];
        const RWCString description = keys.getKeyDesc(id);
        state_->entries.push_back(
            {(description.empty() ? keys.getKey(id) : description).str(), dataOf(id)});
    }
    return put();
}

UINT TvComboBox::getKey() const {
    if (!getHWND()) return kNoKey;
    auto at = static_cast<int>(SendMessageA(getHWND(), CB_GETCURSEL, 0, 0));
    if (at < 0) at = find(getHWND(), CB_FINDSTRINGEXACT, windowText(getHWND()));
    if (at < 0) return kNoKey;
    return static_cast<UINT>(SendMessageA(getHWND(), CB_GETITEMDATA, static_cast<WPARAM>(at), 0));
}

int TvComboBox::setKey(UINT id) {
    if (!getHWND() || id == kNoKey) return 0;
    const LRESULT count = SendMessageA(getHWND(), CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
        if (static_cast<UINT>(SendMessageA(getHWND(), CB_GETITEMDATA, i, 0)) != id) continue;
        SendMessageA(getHWND(), CB_SETCURSEL, i, 0);
        return 1;
    }
    return 0;
}

void TvComboBox::setCompletion(int on) {
    state_->field.completes = on != 0;
}

void TvComboBox::setRecent(const toolbox::SettingName& section, const CString& entry, int most) {
    State& state = *state_;
    if (getHWND()) state.adopt(getHWND());
    state.section = section.text().str();
    state.name = entry.str();
    state.most = std::clamp(most, 1, kMostRecent);
    state.recent.clear();
    for (int i = state.most; i > 0; --i) {
        RWCString text;
        const std::string name = state.name + std::to_string(i);
        if (GMSG::getProfile(state.section.c_str(), name.c_str(), text, RWCString()) &&
            canBeKept(text.view()))
            state.recent = withNewest(state.recent, text.str(), kMostRecent);
    }
    put();
}

int TvComboBox::remember() {
    State& state = *state_;
    if (!getHWND() || state.most == 0) return 0;
    const std::string text = windowText(getHWND());
    if (!canBeKept(text)) return 0;
    state.adopt(getHWND());
    state.recent = withNewest(state.recent, text, static_cast<std::size_t>(state.most));
    int stored = 1;
    for (std::size_t i = 0; i < state.recent.size(); ++i)
        stored &=
            GMSG::writeProfile(state.section.c_str(), (state.name + std::to_string(i + 1)).c_str(),
                               state.recent[i].c_str());
    const Watch self(life_);
    put();
    return !self.gone() && stored;
}

/// Makes the list as wide as its longest entry, within the screen.
void TvComboBox::widen() {
    const HWND combo = getHWND();
    if (!combo || !hasTexts(combo)) return;
    state_->widest = 0;
    const FontContext font(combo);
    const LRESULT count = SendMessageA(combo, CB_GETCOUNT, 0, 0);
    for (int i = 0; i < count; ++i)
        state_->widest = std::max(state_->widest, font.width(entryAt(combo, i)));
    setListWidth();
}

void TvComboBox::setListWidth() {
    const HWND combo = getHWND();
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoA(MonitorFromWindow(combo, MONITOR_DEFAULTTONEAREST), &screen);
    const int around = GetSystemMetrics(SM_CXVSCROLL) + 4 * GetSystemMetrics(SM_CXEDGE) +
                       2 * GetSystemMetrics(SM_CXBORDER);
    const int most = screen.rcWork.right - screen.rcWork.left;
    pass(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(state_->widest + around, most)), 0);
}

LRESULT TvComboBox::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEWHEEL && leavesWheel(getHWND()))
        return SendMessageA(GetParent(getHWND()), message, wParam, lParam);
    const Watch self(life_);
    const LRESULT result = pass(message, wParam, lParam);
    if (self.gone() || !getHWND() || state_->isFilling) return result;
    switch (message) {
        case CB_ADDSTRING:
        case CB_INSERTSTRING:
            if (!hasTexts(getHWND())) break;
            state_->widest = std::max(state_->widest,
                                      FontContext(getHWND()).width(messageText(getHWND(), lParam)));
            setListWidth();
            break;
        case CB_RESETCONTENT:
        case WM_SETFONT:
            widen();
            break;
        default:
            break;
    }
    return result;
}
