// What a list of keys has while it is open, and what it was told before.
#pragma once

#include <unordered_map>
#include <vector>

#include "dialog/keys/focused_field_win32.h"
#include "dialog/keys/key_drag_win32.h"
#include "dialog/keys/key_filter_field_win32.h"
#include "toolbox/detail/watch.h"
#include "toolbox/key_dialogs.h"

/// Operations that call the application look afterwards whether this is still there: `life` is
/// watched.
struct TvKeyListDialog::State : private toolbox::KeyWatcher {
    using Ids = toolbox::keys::Ids;

    /// What is done once the messages at hand are.
    enum Work : WPARAM { kRefresh = 1, kFill = 2, kShowButtons = 4 };
    /// A group that is offered.
    struct Group {
        UINT id;
        CString name;
    };
    /// What the application says of a key.
    struct Said {
        CString units;
        CString sample;
        unsigned age = 0;  ///< of a former one it is shown until there is another
    };

    State(TvKeyListDialog& owner, UDManager& keys);

    /// Asks for work, once for each kind.
    void post(Work work);
    void doWork(WPARAM work);
    [[nodiscard]] static UINT workMessage();

    // Rows.

    void refresh();
    void setGroupMembers();
    void fillGroups();
    /// Arranges the rows anew and shows them.
    void showRows();
    /// Brings what the user selected into the model.
    void takeSelection();
    /// The texts of the rows in sight that are not known yet.
    void fill();
    void answerText(NMLVDISPINFOA& note);
    [[nodiscard]] CString textOf(UINT id, int column);
    [[nodiscard]] CString saidOf(UINT id, int column);
    /// Values may have changed.
    void ageSamples();
    [[nodiscard]] LRESULT find(const NMLVFINDITEMA& note);

    // What the user does.

    [[nodiscard]] Ids selection();
    void showButtons();
    void choose(const std::optional<Ids>& order);
    void shift(int by);
    void toggleChosen();
    void edit(bool format);
    void reset();
    [[nodiscard]] CString tokens();
    void copyTokens();
    void insertTokens();
    void enterFromFilter();
    /// The menu of the list: what the buttons do. (-1, -1): asked for by a key.
    void openMenu(POINT screen);
    /// False for a control that is not a button of the list.
    bool clicked(int button);
    void filterTyped();
    void groupChosen();

    TvKeyListDialog& dialog;
    UDManager& manager;
    toolbox::keys::KeyListModel model;
    toolbox::keys::KeyListView list;
    toolbox::keys::KeyFilterField filterField;
    toolbox::keys::KeyDrag drag{list, model};
    toolbox::keys::FocusedField field;
    std::vector<Group> groups;
    UINT group = kAllKeys;
    CString filter;
    UINT focused = kAllKeys;
    bool selectionIsNew = false;  ///< the user changed it
    WPARAM posted = 0;
    std::unordered_map<UINT, Said> said;
    unsigned age = 0;  ///< values may have changed when this has
    toolbox::detail::Watched<> life;

  private:
    void keysChanged() override { post(kRefresh); }
};
