// Keys with values, an owner with an edit field, and the list of keys over it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "key_dialogs.h"
#include "support/owner_fixture.h"
#include "support/temp_folder.h"
#include "toolbox/key_dialogs.h"
#include "toolbox/platform.h"
// Needs the declarations of the system first.
#include <commctrl.h>

using namespace toolbox::testing;

/// Real keys have 2.5 times their id for a value, the others none.
struct KeyManager : UDManager {
    explicit KeyManager(std::string file) : profile(std::move(file)) {}
    RWCString getProfilePath() override { return RWCString(profile); }
    int getKeyValue(UINT id, FormatedValue* value) override {
        ++asked;
        if (!value->isReal()) return 0;
        static_cast<RealFormatedValue*>(value)->setValue(2.5 * id);
        return 1;
    }
    RWCString getKeyUnits(UINT id) override { return RWCString("u" + std::to_string(id)); }

    template <class Format>
    void declare(UINT id, const char* key, const char* description, auto... format) {
        UDKeyData data(key);
        data.setDescStr(description);
        data.setHeaderStr(RWCString("H" + std::to_string(id)));
        data.setUnitsStr(id == 1 ? "TVUNITS" : "mm");
        Format kind;
        kind.setFormat(format...);
        data.setFormat(kind);
        EXPECT_EQ(addKey(id, data), 1);
    }

    std::string profile;
    int asked = 0;
};

/// Does what the test says in the operation of that name, as the last thing.
struct TestKeyList : TvKeyListDialog {
    using TvKeyListDialog::TvKeyListDialog;
    std::function<void()> inSample, inChoose, inEdited, inFormat;
    int allows = 1;

    CString sampleOf(UINT id) override { return then(TvKeyListDialog::sampleOf(id), inSample); }
    int chooseKeys(const RWTValOrderedVector<UINT>& ids) override {
        return then(allows && TvKeyListDialog::chooseKeys(ids), inChoose);
    }
    void keysEdited(const RWTValOrderedVector<UINT>& ids) override {
        TvKeyListDialog::keysEdited(ids);
        then(0, inEdited);
    }
    int editFormat(UINT id) override {
        return inFormat ? then(1, inFormat) : TvKeyListDialog::editFormat(id);
    }

  private:
    template <class T>
    static T then(T result, const std::function<void()>& act) {
        const auto copy = act;
        if (copy) copy();
        return result;
    }
};

class KeyList : public OwnerFixture {
  protected:
    KeyList() : manager(folder / "keys.ini") {
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(folder / "settings.ini"));
        UDManager::initStaticVars();
        manager.declare<RealFormat>(1, "VOLT", "Tension \340 vide", 10, 2, Right);
        manager.declare<NumberFormat>(2, "COUNT", "Number of bars", 6, Right);
        manager.declare<StringFormat>(3, "NAME", "Name", 20, Left);
        manager.declare<RealFormat>(4, "FREQ", "Frequency", 8, 1, Right);
        manager.declare<RealFormat>(5, "MASS", "Mass", 8, 3, Right);
        manager.initUDApp();
        choose({4, 1, 5});
        dialog = std::make_unique<TestKeyList>(manager);
    }
    ~KeyList() override {
        dialog.reset();
        manager.freeUDApp();
        UDManager::destroyStaticVars();
        GMSG::setUseRegistry(1);
    }

    using Ids = std::vector<UINT>;
    void choose(const Ids& ids) { manager.setSelection(RWTValOrderedVector<UINT>(ids)); }
    static Ids idsOf(const RWTValOrderedVector<UINT>& ids) { return {ids.begin(), ids.end()}; }
    [[nodiscard]] Ids chosen() const { return idsOf(manager.getSelection()); }
    [[nodiscard]] Ids shown() const { return idsOf(dialog->getShownKeys()); }
    [[nodiscard]] Ids selected() const { return idsOf(dialog->getSelectedKeys()); }
    void select(const Ids& ids) {
        dialog->setSelectedKeys(RWTValOrderedVector<UINT>(ids));
        pump();
    }
    void open() {
        ASSERT_NE(dialog->open(owner), nullptr);
        pump();
    }
    /// Handles messages as a loop with dialogs does.
    void pump() {
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
            if (TvDialog::isDialogMessage(message)) continue;
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    bool pumpFor(const std::function<bool()>& condition) {
        for (int turn = 0; turn < 500; ++turn) {
            pump();
            if (condition()) return true;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return false;
    }
    [[nodiscard]] HWND list() const { return dialog->control(IDC_KEY_LIST); }
    [[nodiscard]] std::string cell(int row, int column) const {
        char text[200] = "";
        ListView_GetItemText(list(), row, column, text, sizeof text);
        return text;
    }
    void push(int button) {
        SendMessageA(dialog->getHWND(), WM_COMMAND, static_cast<WPARAM>(button), 0);
    }
    [[nodiscard]] bool isEnabled(int control) const {
        return IsWindowEnabled(dialog->control(control));
    }

    TempFolder folder;
    KeyManager manager;
    std::unique_ptr<TestKeyList> dialog;
};
