// An owner, and dialogs whose operations are told by the test.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "dialog_test.h"
#include "support/window_kit.h"
#include "toolbox/dialogs.h"
#include "toolbox/messages.h"

/// Notes each operation, and does in it, once, what the test put under its name.
class TestDialog : public TvDialog {
  public:
    explicit TestDialog(const toolbox::ResourceName& name = IDD_PLAIN) : TvDialog(name) {}
    ~TestDialog() override {
        if (whenDeleted) whenDeleted();
    }
    TestDialog(const TestDialog&) = delete;
    TestDialog& operator=(const TestDialog&) = delete;

    std::map<std::string, std::function<void()>> inside;
    std::string log;
    int confirms = 1, cancels = 1, helps = 1;
    std::function<void()> whenDeleted;

  protected:
    void opened() override { note("opened"); }
    int command(int control, int) override {
        note("command " + std::to_string(control));
        return 0;
    }
    LRESULT notified(NMHDR& header) override {
        note("notified");
        return header.code == kQuestion ? 4711 : 0;
    }
    int confirmed() override {
        const int answer = confirms;
        note("confirmed");
        return answer;
    }
    int cancelled() override {
        const int answer = cancels;
        note("cancelled");
        return answer;
    }
    int help(int control) override {
        const int answer = helps;
        note("help " + std::to_string(control));
        return answer;
    }
    void destroyed() override { note("destroyed"); }
    int handleMessage(UINT message, WPARAM, LPARAM, LRESULT& result) override {
        if (message == WM_ACTIVATE) note("activated");
        result = 12;
        return message == kOwnMessage;
    }

  public:
    static constexpr UINT kOwnMessage = WM_APP + 3;
    static constexpr UINT kQuestion = 77;

  private:
    /// The last thing that an operation does: the object may be gone.
    void note(const std::string& what) {
        if (what != "activated" && what.rfind("command", 0) != 0) log += what + " ";
        const auto found = inside.find(what);
        if (found == inside.end()) return;
        const auto action = std::move(found->second);
        inside.erase(found);
        action();
    }
};

class DialogFixture : public ::testing::Test {
  protected:
    DialogFixture() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
    }
    ~DialogFixture() override {
        if (IsWindow(owner)) DestroyWindow(owner);
        toolbox::testing::pumpMessages();
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    GMSG service;
    HWND owner = CreateWindowExA(0, "STATIC", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200,
                                 500, 400, nullptr, nullptr, nullptr, nullptr);
};
