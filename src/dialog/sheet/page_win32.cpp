// A page is a dialog that the system's sheet creates. Its window is watched before the dialog's own
// procedure sees a message: the system's notifications are the page's, not its controls'.
#include "dialog/common_controls.h"
#include "dialog/sheet/sheet_state.h"
#include "toolbox/exchange.h"

using toolbox::detail::Watch;

namespace {

constexpr UINT_PTR kSubclass = 1;

bool isSheetCode(UINT code) {
    return code <= PSN_FIRST && code >= PSN_LAST;
}

/// OK or Cancel by a key in a page that has no such button: it is the sheet's.
bool isSheetCommand(HWND page, WPARAM wParam) {
    const int id = LOWORD(wParam);
    return (id == IDOK || id == IDCANCEL) && !GetDlgItem(page, id);
}

}  // namespace

TvPropertyPage::TvPropertyPage(const toolbox::ResourceName& name)
    : TvDialog(name), link_(std::make_unique<Link>(name)) {}

TvPropertyPage::~TvPropertyPage() {
    deleteWhenClosed(0);  // it is being deleted
    if (const HWND window = getHWND()) RemoveWindowSubclass(window, Link::watch, kSubclass);
    if (link_->sheet) link_->sheet->remove(*this);
}

void TvPropertyPage::setTitle(const CString& title) {
    link_->title = title;
}

TvPropertySheet* TvPropertyPage::getSheet() const {
    return link_->sheet ? link_->sheet->sheet : nullptr;
}

void TvPropertyPage::changed() {
    link_->isChanged = true;
    if (getHWND()) Link::showWhetherTouched(*this);
}

int TvPropertyPage::close(int result) {
    TvPropertySheet* const sheet = getSheet();
    return sheet ? sheet->close(result) : 0;
}

void TvPropertyPage::entered() {}

int TvPropertyPage::leaving() {
    return 1;
}

INT_PTR CALLBACK TvPropertyPage::Link::procedure(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_INITDIALOG) return FALSE;
    const auto& described = *reinterpret_cast<const PROPSHEETPAGEA*>(lParam);
    TvPropertyPage* const page = *reinterpret_cast<TvPropertyPage* const*>(described.lParam);
    if (!page) return FALSE;
    const Watch self(page->link_->life);
    page->link_->isChanged = false;
    // The dialog hears of everything else itself.
    if (page->adopt(window) && !self.gone())
        SetWindowSubclass(window, watch, kSubclass, reinterpret_cast<DWORD_PTR>(page));
    return FALSE;
}

LRESULT CALLBACK TvPropertyPage::Link::watch(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam, UINT_PTR id, DWORD_PTR data) {
    auto* const page = reinterpret_cast<TvPropertyPage*>(data);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, watch, id);
    if (message == WM_NOTIFY) {
        const auto& note = *reinterpret_cast<const NMHDR*>(lParam);
        if (isSheetCode(note.code)) return notified(*page, note);
    }
    if (message == WM_COMMAND && isSheetCommand(window, wParam)) {
        const WPARAM button = LOWORD(wParam) == IDOK ? PSBTN_OK : PSBTN_CANCEL;
        PostMessageA(GetParent(window), PSM_PRESSBUTTON, button, 0);
        return 0;
    }
    const Watch self(page->link_->life);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if ((message == WM_COMMAND || message == WM_NOTIFY) && !self.gone()) showWhetherTouched(*page);
    return result;
}

LRESULT TvPropertyPage::Link::notified(TvPropertyPage& page, const NMHDR& note) {
    const std::shared_ptr<TvPropertySheet::State> sheet = page.link_->sheet;
    if (!sheet || !sheet->isOpen()) return 0;
    const TvPropertySheet::State::Notice notice(*sheet);
    switch (note.code) {
        case PSN_SETACTIVE:
            sheet->entering = &page;
            return 0;
        case PSN_KILLACTIVE:
            sheet->roundIsOver = false;
            return !sheet->isAllowed && !mayLeave(page);
        case PSN_APPLY: {
            if (sheet->isAllowed) return PSNRET_NOERROR;
            const bool closing = reinterpret_cast<const PSHNOTIFY&>(note).lParam != 0;
            return sheet->storeOnce(closing) ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
        }
        case PSN_QUERYCANCEL:
            return !sheet->isAllowed && !sheet->mayCancel();
        case PSN_RESET:
            sheet->others.switchOn();
            return 0;
        case PSN_HELP:
            page.help(0);
            return 0;
        default:
            return 0;
    }
}

void TvPropertyPage::Link::showWhetherTouched(TvPropertyPage& page) {
    const std::shared_ptr<TvPropertySheet::State> sheet = page.link_->sheet;
    const HWND window = page.getHWND();
    if (!sheet || !sheet->isOpen() || !window) return;
    const bool touched = page.link_->isChanged || (page.fields() && page.fields()->isTouched());
    SendMessageA(sheet->window, touched ? PSM_CHANGED : PSM_UNCHANGED,
                 reinterpret_cast<WPARAM>(window), 0);
}

bool TvPropertyPage::Link::store(TvPropertyPage& page) {
    TvExchange* const fields = page.fields();
    return !fields || fields->read([&page](TvExchange& all) { page.exchange(all); });
}

bool TvPropertyPage::Link::agrees(TvPropertyPage& page) {
    const Watch self(page.link_->life);
    const int confirmed = page.confirmed();
    if (self.gone() || !confirmed) return false;
    return !page.fields() || page.fields()->faultControl() == 0;
}

bool TvPropertyPage::Link::mayLeave(TvPropertyPage& page) {
    const Watch self(page.link_->life);
    TvExchange* const fields = page.fields();
    if (fields && !fields->verify([&page](TvExchange& all) { page.exchange(all); })) return false;
    return !self.gone() && page.leaving();
}

void TvPropertyPage::Link::tellEntered(TvPropertyPage& page) {
    page.entered();
}

bool TvPropertyPage::Link::mayCancel(TvPropertyPage& page) {
    return page.cancelled() != 0;
}

void TvPropertyPage::Link::refill(TvPropertyPage& page) {
    const Watch self(page.link_->life);
    page.link_->isChanged = false;
    TvExchange* const fields = page.fields();
    if (fields) fields->fill([&page](TvExchange& all) { page.exchange(all); });
    if (!self.gone()) showWhetherTouched(page);
}
