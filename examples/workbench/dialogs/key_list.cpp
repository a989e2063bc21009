// The list of keys, whose chosen ones are the columns of the table.
#include <memory>

#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/workbench_texts.h"
#include "toolbox/key_dialogs.h"

namespace {

class KeyList : public TvKeyListDialog {
  public:
    explicit KeyList(Workbench& workbench)
        : TvKeyListDialog(workbench.keys()), workbench_(workbench) {
        deleteWhenClosed();
    }

    static KeyList* theList;

  protected:
    int chooseKeys(const RWTValOrderedVector<UINT>& ids) override;
    CString sampleOf(UINT id) override;
    int editFormat(UINT id) override;
    void keysEdited(const RWTValOrderedVector<UINT>& ids) override;
    void destroyed() override {
        theList = nullptr;
        TvKeyListDialog::destroyed();
    }

  private:
    Workbench& workbench_;
};

KeyList* KeyList::theList = nullptr;

int KeyList::chooseKeys(const RWTValOrderedVector<UINT>& ids) {
    if (ids.isEmpty()) return 0;  // a table without columns would show nothing
    workbench_.keys().setSelection(ids);
    workbench_.keysChanged();
    return 1;
}

/// A value of a typical size: the manager's own are those of the beam shown last.
CString KeyList::sampleOf(UINT id) {
    ProjectKeys& keys = workbench_.keys();
    const UDKeyData key = keys.getKeyData(id);
    if (key.getFormat()->isReal()) {
        RealFormatedValue value;
        value = 1234.5678;
        return keys.shown(id, value);
    }
    if (key.getFormat()->isNumber()) {
        NumberFormatedValue value;
        value = 12;
        return keys.shown(id, value);
    }
    StringFormatedValue value;
    value = RWCString(text(kSampleValue));
    return keys.shown(id, value);
}

int KeyList::editFormat(UINT id) {
    const DialogPhase phase(workbench_);
    return TvKeyListDialog::editFormat(id);
}

void KeyList::keysEdited(const RWTValOrderedVector<UINT>& ids) {
    Workbench& workbench = workbench_;  // the list may go while a box is open
    for (const UINT id : ids)
        if (!workbench.keys().save(id))
            workbench.report(kKeyNotSaved, MB_ICONEXCLAMATION, workbench.keys().getKey(id));
    workbench.keysChanged();
}

}  // namespace

void showKeyList(Workbench& workbench) {
    if (KeyList::theList) {
        ShowWindow(KeyList::theList->getHWND(), SW_SHOW);
        SetActiveWindow(KeyList::theList->getHWND());
        return;
    }
    auto list = std::make_unique<KeyList>(workbench);
    if (list->open(Workbench::frame().getFrame())) KeyList::theList = list.release();
}

void closeKeyList() {
    if (KeyList::theList) KeyList::theList->close(0);
}

void refreshKeyList() {
    if (KeyList::theList) KeyList::theList->refresh();
}
