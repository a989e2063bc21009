// What a sheet holds while it is open. The window keeps it, so that it is there when the object is
// deleted from inside.
#pragma once

#include <memory>
#include <vector>

#include "dialog/common_controls.h"
#include "dialog/other_windows_win32.h"
#include "toolbox/detail/watch.h"
#include "toolbox/property_sheets.h"
#include "window/dialog_template.h"

/// What a page knows of its sheet, and how the sheet reaches it.
struct TvPropertyPage::Link {
    explicit Link(const toolbox::ResourceName& templateName) : name(templateName) {}

    /// Handles the page's window from the moment the system made it.
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                  UINT_PTR id, DWORD_PTR page);
    /// The answer to what the system's sheet tells a page.
    static LRESULT notified(TvPropertyPage& page, const NMHDR& note);
    static void showWhetherTouched(TvPropertyPage& page);

    // What the sheet asks of a page. False: the page refuses, or something went meanwhile.
    static bool store(TvPropertyPage& page);
    static bool agrees(TvPropertyPage& page);
    static bool mayLeave(TvPropertyPage& page);
    static bool mayCancel(TvPropertyPage& page);
    static void tellEntered(TvPropertyPage& page);
    static void refill(TvPropertyPage& page);

    toolbox::ResourceName name;
    CString title;
    std::shared_ptr<TvPropertySheet::State> sheet;
    bool isChanged = false;  // by changed()
    toolbox::detail::Watched<> life;
};

struct TvPropertySheet::State {
    /// Makes the window, of `self`. False when it was not made, which the user was told, or has
    /// gone already.
    static bool make(const std::shared_ptr<State>& self, HWND owner);
    [[nodiscard]] bool mayOpen() const { return !window && !isOpening && !pages.empty(); }
    bool describePages(std::vector<HPROPSHEETPAGE>& described, HWND owner);
    static int CALLBACK callback(HWND window, UINT message, LPARAM);
    void wasInitialized(HWND made);
    static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                  DWORD_PTR state);
    void ended();

    /// What the user or the program wants of the system's sheet.
    enum class Wish { none, ok, apply, cancel, turn };
    [[nodiscard]] static Wish wishOf(UINT message, WPARAM wParam, LPARAM lParam);
    /// Asks the pages first: what they do may end the window, which the system's sheet would not
    /// survive inside of its own notifications. False: it is refused, or the sheet was closed.
    bool allows(Wish wish);
    LRESULT pass(UINT message, WPARAM wParam, LPARAM lParam);
    /// Tells a page that it is shown, when the system's sheet has done with it.
    void tellEntered();
    bool turnPage(const MSG& key);

    /// The system's sheet has nothing to show any more: OK or Cancel was chosen.
    [[nodiscard]] bool isDone() const;
    /// Ends the window, at once or as soon as the system's sheet lets it.
    bool close(int outcome);
    bool mayLeave();
    /// Where the system asks page by page all the same: the first answers for all.
    bool storeOnce(bool closing);
    bool storeAll(bool closing);
    bool mayCancel();
    /// Gives the variables of the pages back what they had, and shows the page that refuses. False.
    bool refuse(TvPropertyPage& page);
    void show(const TvPropertyPage& page);
    [[nodiscard]] int current() const;  // page that is shown; -1 for none
    /// Calls `use` with each page that has a window and is still there, until it gives false. False
    /// then, and when the sheet was closed meanwhile.
    template <class Use>
    bool eachPage(Use use);
    void remove(TvPropertyPage& page);
    [[nodiscard]] bool isOpen() const { return window && !isClosing; }

    /// The system's sheet must not end inside of a notification to a page.
    class [[nodiscard]] Notice {
      public:
        explicit Notice(State& state);
        ~Notice();
        Notice(const Notice&) = delete;
        Notice& operator=(const Notice&) = delete;

      private:
        std::shared_ptr<State> state_;
    };

    inline static State* making = nullptr;  // the sheet that the system is making

    TvPropertySheet* sheet = nullptr;  // null when it was deleted
    CString title;
    std::vector<TvPropertyPage*> pages;
    int startPage = 0;

    HWND window = nullptr;
    std::shared_ptr<State> kept;  // this, while there is a window
    std::vector<toolbox::window::TemplateCopy> templates;
    std::vector<TvPropertyPage*> slots;  // what the system's pages point to; null: deleted
    toolbox::dialog::OtherWindowsOff others;
    bool isModal = false;
    bool wasMade = false;
    bool isOpening = false;  // inside the system's call that makes the window
    int passing = 0;         // inside of so many messages to the system's sheet
    bool isAllowed = false;  // the pages were asked about the message
    TvPropertyPage* entering = nullptr;
    int notices = 0;  // inside of so many of the system's notifications to a page
    bool isClosing = false;
    bool isPlaced = false;
    bool isStored = false;     // since OK or Apply was chosen
    bool roundIsOver = false;  // the pages were asked for the button chosen
    bool isRoundStored = false;
    bool isMute = false;  // a page was deleted, perhaps with the sheet: that is not told
    bool deletes = false;
    bool registered = false;
    int result = 0;
};
