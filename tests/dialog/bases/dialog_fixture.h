// An owner, and dialogs whose operations are told by the test.
#pragma once

#include <string>

#include "dialog_test.h"
#include "support/actions.h"
#include "support/owner_fixture.h"
#include "toolbox/dialogs.h"

class TestDialog : public TvDialog, public toolbox::testing::Actions {
  public:
    explicit TestDialog(const toolbox::ResourceName& name = IDD_PLAIN) : TvDialog(name) {}
    ~TestDialog() override {
        if (whenDeleted) whenDeleted();
    }
    TestDialog(const TestDialog&) = delete;
    TestDialog& operator=(const TestDialog&) = delete;

    static constexpr UINT kOwnMessage = WM_APP + 3;
    static constexpr UINT kQuestion = 77;
    int confirms = 1, cancels = 1, helps = 1;
    std::function<void()> whenDeleted;

  protected:
    void opened() override { act("opened"); }
    int command(int control, int) override {
        carryOut("command " + std::to_string(control));
        return 0;
    }
    LRESULT notified(NMHDR& header) override {
        return act("notified", header.code == kQuestion ? 4711 : 0);
    }
    int confirmed() override { return act("confirmed", confirms); }
    int cancelled() override { return act("cancelled", cancels); }
    int help(int control) override { return act("help " + std::to_string(control), helps); }
    void destroyed() override { act("destroyed"); }
    int handleMessage(UINT message, WPARAM, LPARAM, LRESULT& result) override {
        result = 12;
        if (message == WM_ACTIVATE) carryOut("activated");
        return message == kOwnMessage;
    }
};

using DialogFixture = toolbox::testing::OwnerFixture;
