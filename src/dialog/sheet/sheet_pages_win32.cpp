// What a sheet does with its pages: storing all of them or none, and showing one.
#include <algorithm>
#include <utility>

#include "dialog/common_controls.h"
#include "dialog/sheet/open_sheets_win32.h"
#include "dialog/sheet/sheet_state.h"
#include "toolbox/exchange.h"

template <class Use>
bool TvPropertySheet::State::eachPage(Use use) {
    const std::vector<TvPropertyPage*> all = pages;
    for (TvPropertyPage* const page : all) {
        const bool isThere = std::ranges::find(pages, page) != pages.end();
        if (isThere && page->getHWND() && !use(*page)) return false;
        if (!isOpen()) return false;
    }
    return true;
}

bool TvPropertySheet::State::mayLeave() {
    const int index = current();
    return index < 0 ||
           (TvPropertyPage::Link::mayLeave(*pages[static_cast<std::size_t>(index)]) && isOpen());
}

void TvPropertySheet::State::tellEntered() {
    if (passing > 0 || isOpening || !isOpen()) return;
    if (TvPropertyPage* const page = std::exchange(entering, nullptr))
        TvPropertyPage::Link::tellEntered(*page);
}

bool TvPropertySheet::State::turnPage(const MSG& key) {
    if (!toolbox::dialog::turnsPages(key)) return false;
    const auto count = static_cast<int>(pages.size());
    const bool isBack =
        key.wParam == VK_PRIOR || (key.wParam == VK_TAB && GetKeyState(VK_SHIFT) < 0);
    const int next = (current() + (isBack ? count - 1 : 1)) % count;
    SendMessageA(window, PSM_SETCURSEL, static_cast<WPARAM>(next), 0);
    return true;
}

bool TvPropertySheet::State::storeOnce(bool closing) {
    // The system asks each page; the first answers for all.
    if (!roundIsOver) {
        isRoundStored = storeAll(closing);
        roundIsOver = true;
    }
    return isRoundStored;
}

bool TvPropertySheet::State::storeAll(bool closing) {
    const auto stored = [&](TvPropertyPage& page) {
        return TvPropertyPage::Link::store(page) || refuse(page);
    };
    const auto agreed = [&](TvPropertyPage& page) {
        return TvPropertyPage::Link::agrees(page) || refuse(page);
    };
    if (!eachPage(stored) || !eachPage(agreed)) return false;
    isStored = true;
    if (closing)
        others.switchOn();
    else
        eachPage([](TvPropertyPage& page) {
            TvPropertyPage::Link::refill(page);
            return true;
        });
    if (sheet && isOpen()) sheet->applied(closing);
    return isOpen();
}

bool TvPropertySheet::State::refuse(TvPropertyPage& page) {
    if (!isOpen()) return false;
    bool isThere = false;
    eachPage([&](TvPropertyPage& each) {
        isThere |= &each == &page;
        if (TvExchange* const fields = each.fields()) fields->takeBack();
        return true;
    });
    if (!isThere) return false;
    show(page);
    if (isOpen() && page.fields()) page.fields()->showFault();
    return false;
}

bool TvPropertySheet::State::mayCancel() {
    return eachPage([&](TvPropertyPage& page) {
        if (TvPropertyPage::Link::mayCancel(page)) return true;
        if (isOpen()) show(page);
        return false;
    });
}

int TvPropertySheet::State::current() const {
    const auto shown = isOpen() ? SendMessageA(window, PSM_GETCURRENTPAGEHWND, 0, 0) : 0;
    if (!shown) return -1;
    const auto found = std::ranges::find_if(pages, [=](const TvPropertyPage* page) {
        return page->getHWND() == reinterpret_cast<HWND>(shown);
    });
    return found == pages.end() ? -1 : static_cast<int>(found - pages.begin());
}

void TvPropertySheet::State::show(const TvPropertyPage& page) {
    const auto index = std::ranges::find(pages, &page) - pages.begin();
    if (index == current()) return;
    isAllowed = true;  // the user does not leave the other page
    SendMessageA(window, PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
    isAllowed = false;
    tellEntered();
}

void TvPropertySheet::State::remove(TvPropertyPage& page) {
    const std::shared_ptr<State> self = std::move(page.link_->sheet);
    std::erase(pages, &page);
    std::ranges::replace(slots, &page, nullptr);
    if (entering == &page) entering = nullptr;
    isMute = window != nullptr;
    close(0);
}

int TvPropertySheet::apply() {
    const std::shared_ptr<State> state = state_;
    return state->isOpen() && SendMessageA(state->window, PSM_APPLY, 0, 0);
}

int TvPropertySheet::currentPage() const {
    return state_->current();
}

int TvPropertySheet::showPage(int index) {
    const std::shared_ptr<State> state = state_;
    if (!state->isOpen() || index < 0 || index >= static_cast<int>(state->pages.size())) return 0;
    if (index != state->current())
        SendMessageA(state->window, PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
    return state->current() == index;
}
