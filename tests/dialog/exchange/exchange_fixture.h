// A dialog window with a control of each kind, whose procedure does nothing.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "exchange_test.h"
#include "support/owner_fixture.h"
#include "toolbox/exchange.h"

// After windows.h.
#include <commctrl.h>

class ExchangeFixture : public toolbox::testing::OwnerFixture {
  protected:
    ExchangeFixture() {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_DATE_CLASSES};
        InitCommonControlsEx(&classes);
        dialog = make();
        fields = std::make_unique<TvExchange>(dialog);
        for (const char* entry : {"red", "green", "Green", "blue"}) {
            for (const int combo : {IDC_DROPDOWN, IDC_CHOICE}) send(combo, CB_ADDSTRING, 0, entry);
            send(IDC_LIST, LB_ADDSTRING, 0, entry);
        }
    }
    ~ExchangeFixture() override {
        fields.reset();
        DestroyWindow(dialog);
    }

    static HWND make() {
        return CreateDialogParamA(nullptr, MAKEINTRESOURCEA(IDD_FIELDS), nullptr, procedure, 0);
    }
    LRESULT send(int id, UINT message, WPARAM word = 0, const void* data = nullptr) const {
        return SendDlgItemMessageA(dialog, id, message, word, reinterpret_cast<LPARAM>(data));
    }
    void type(int id, const std::string& text) const {
        toolbox::testing::setText(dialog, id, text.c_str());
    }
    [[nodiscard]] std::string shown(int id) const { return toolbox::testing::textOf(dialog, id); }
    [[nodiscard]] HWND control(int id) const { return GetDlgItem(dialog, id); }

    HWND dialog;
    std::unique_ptr<TvExchange> fields;

  private:
    static INT_PTR CALLBACK procedure(HWND, UINT message, WPARAM, LPARAM) {
        return message == WM_INITDIALOG;
    }
};
