// The list of all keys, in which users look them up, select, order and edit them (Windows only).
//
//     TvKeyListDialog list(manager);
//     list.addGroup(GROUP_LOADS, "Loads");
//     list.open(frame.getFrame());                 // or list.run(frame.getFrame())
//
// Each line shows a key's string, description, header, units and a sample: its value as its format
// prints it. The keys that are chosen come first, in their order: those of the manager's selection,
// unless the dialog derives and says otherwise; a table shows them as its columns, say. The user
// chooses them and orders them by dragging or with Alt+Up and Alt+Down.
//
// What its buttons do, the list's own menu does, too. The widths of the columns are kept from run
// to run, as the place is; the description takes what the others leave.
//
// The list shows one group or all, and the keys that have every word of the filter in their string
// or description, without regard to case and accents. It follows changes that are made by any
// manager; of new values it hears when it becomes the active window, or by refresh().
//
// Texts 1370 to 1389 and the dialogs DLG_KEY_LIST and DLG_KEY_DESCRIPTION are looked up in the
// application first: it may have its own. A control that its template lacks is done without, but
// for the list.
#pragma once

#include <memory>

#include "toolbox/dialogs.h"
#include "toolbox/keys.h"

/// The dialog. See the head of this file. The manager must outlive it.
class TB_API TvKeyListDialog : public TvDialog {
  public:
    /// What stands for all keys among the groups.
    static constexpr UINT kAllKeys = 0xFFFFFFFF;

    /// For the keys of the process; the selection is this manager's. No window yet.
    explicit TvKeyListDialog(UDManager& manager);
    ~TvKeyListDialog() override;

    /// The manager whose keys are shown.
    [[nodiscard]] UDManager& getManager() const;

    // At any time, before the dialog is open too.

    /// Offers a group of the manager under a name, after those offered before; a group that is
    /// offered already gets the new name.
    void addGroup(UINT gid, const CString& name);
    /// Shows only what is below a group, or all keys. 0 for a group that is not offered.
    int showGroup(UINT gid);
    /// kAllKeys while all are shown.
    [[nodiscard]] UINT getShownGroup() const;
    /// Shows only keys that have each of these words; empty: all.
    void setFilter(const CString& words);
    [[nodiscard]] CString getFilter() const;
    /// Reads keys, order and samples anew. What is selected stays selected. While the dialog is not
    /// open it does nothing.
    void refresh();

    // While the dialog is open, and after it what it was at the end.

    /// The keys of the lines, in their order.
    [[nodiscard]] RWTValOrderedVector<UINT> getShownKeys() const;
    /// The selected lines' keys, in the order of the lines.
    [[nodiscard]] RWTValOrderedVector<UINT> getSelectedKeys() const;
    /// Selects the lines of keys, and the first of them is brought into sight. Keys that are not
    /// shown are selected when they are; those that are none are ignored.
    void setSelectedKeys(const RWTValOrderedVector<UINT>& ids);

  protected:
    // What an application may do otherwise. Each may close the dialog or delete the object.

    /// The keys that come first, in their order: the manager's selection.
    virtual RWTValOrderedVector<UINT> chosenKeys();
    /// The user chose or ordered keys, which may be none: they become the manager's selection. 0:
    /// that is refused, and the list stays as it was.
    virtual int chooseKeys(const RWTValOrderedVector<UINT>& ids);
    /// The sample of a key: its value; where the application has none, 1234.5678, 1234 or "Sample
    /// text" as the key's format prints it. Asked for lines in sight only.
    virtual CString sampleOf(UINT id);
    /// Lets the user edit the format, and the description with it: in the dialog of the format's
    /// kind, over this one. 1 when the record was changed.
    virtual int editFormat(UINT id);
    /// Lets the user edit the description alone. 1 when the record was changed.
    virtual int editDescription(UINT id);
    /// Puts a record back to what was declared. 1 when it was.
    virtual int resetKey(UINT id);
    /// The user changed records: the manager saves them, and the user is told of those that could
    /// not be saved.
    virtual void keysEdited(const RWTValOrderedVector<UINT>& ids);
    /// Whether tokens can be inserted now: into the edit field, of any window of the program but
    /// this dialog, that had the focus when the dialog became the active window.
    virtual int canInsertTokens();
    /// Inserts tokens, "$VOLT$ $FREQ$", in place of what is selected in that field. 0: it could
    /// not.
    virtual int insertTokens(const CString& tokens);

    // What the dialog does itself. A derived class that replaces one calls it for what it leaves.
    void opened() override;
    int command(int control, int notification) override;
    LRESULT notified(NMHDR& note) override;
    int handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void destroyed() override;
    /// "KeyList".
    const char* placeName() override;
    /// The list grows, the buttons stay at its right.
    void layout(TvDialogLayout& sizes) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};
