// A frame with an application and documents that keep a log of what they are asked and told.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/window_kit.h"
#include "toolbox/text.h"
#include "toolbox/windowing.h"
#include "window_test.h"

using Log = std::vector<std::string>;

struct LoggingApplication : MDIApplication {
    explicit LoggingApplication(Log& l) : log(l) {}

    int canClose() override { return note("canClose", mayClose); }
    void frameDestroyed() override { note("frameDestroyed"); }
    int frameCreated(HWND frame, HINSTANCE instance) override {
        return note(IsWindowVisible(frame) && instance ? "frameCreated" : "hidden", 1);
    }
    void classRegistered(HINSTANCE) override { note("classRegistered"); }
    int command(HWND child, WPARAM wParam, LPARAM) override {
        return note("command " + std::to_string(wParam) + (child ? " child" : ""));
    }
    int privateMessage(HWND, UINT, WPARAM, LPARAM) override { return 0; }
    void systemCommand(HWND, WPARAM, LPARAM) override { note("system command"); }
    void childActivated(HWND) override { ADD_FAILURE(); }
    void frameMoved(int reserved) override { note("moved " + std::to_string(reserved)); }
    void childClosed(HWND) override { ADD_FAILURE(); }

    int note(const std::string& what, int answer = 0) {
        log.push_back(what);
        if (action) action();
        return answer;
    }

    Log& log;
    std::function<void()> action;  ///< done inside every call
    int mayClose = 1;
};

/// A document named by its title; it logs under that name.
struct Document : MDIWindowObject {
    explicit Document(Log& l) : log(l) {}
    ~Document() override { log.push_back(name + " deleted"); }

    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (vanishes && message == WM_QUERYENDSESSION) {
            destroy();
            return 1;
        }
        if (message == WM_QUERYENDSESSION || message == WM_ENDSESSION || message == WM_COMMAND ||
            message == WM_CLOSE) {
            log.push_back(name + " " + std::to_string(message) + " " + std::to_string(wParam));
            if (message == WM_QUERYENDSESSION) return agrees;
        }
        return MDIWindowObject::handleMessage(message, wParam, lParam);
    }

    Log& log;
    std::string name;
    int agrees = 1;
    bool vanishes = false;  ///< when it is asked
};

struct TestFrame : MDI {
    using MDI::doFrameCommand;
    using MDI::MDI;
    HWND createFramePane() override {
        if (!withPane) return nullptr;
        return CreateWindowExA(0, "STATIC", "pane", WS_CHILD | WS_BORDER, 0, 0, 500, 42, getFrame(),
                               nullptr, getInstance(), nullptr);
    }
    bool withPane = false;
};

struct FrameTest : ::testing::Test {
    FrameTest() {
        WindowDict::initStaticVars();
        WNDCLASSA documents{};
        documents.lpfnWndProc = WindowObject::StdWinProc;
        documents.hInstance = instance;
        documents.lpszClassName = "TestDocument";
        RegisterClassA(&documents);
    }
    ~FrameTest() override {
        if (frame.getFrame()) DestroyWindow(frame.getFrame());
        toolbox::testing::pumpMessages();  // the quit message too
        UnregisterClassA("MDIFrame", instance);
        UnregisterClassA("TestDocument", instance);
        WindowDict::destroyStaticVars();
    }

    /// Opens the frame; the log starts afterwards.
    void open() {
        ASSERT_EQ(frame.initMainWindow(SW_SHOWNORMAL), 1);
        EXPECT_EQ(frame.initMainWindow(SW_SHOWNORMAL), 0) << "once";
        EXPECT_EQ(log.front(), "classRegistered");
        EXPECT_EQ(log.back(), "frameCreated");
        MoveWindow(frame.getFrame(), 20, 20, 700, 600, TRUE);
        toolbox::testing::pumpMessages();
        log.clear();
    }
    Document& addDocument(const char* name) {
        auto* const document = new Document(log);
        document->name = name;
        const short place = MDI::kDefaultPlace;
        EXPECT_EQ(document->create("TestDocument", name, WS_VISIBLE | WS_OVERLAPPEDWINDOW, place,
                                   place, place, place, 0),
                  1);
        toolbox::testing::pumpMessages();
        return *document;
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessageA(frame.getFrame(), message, wParam, lParam);
    }
    /// The log so far, which is empty afterwards.
    Log taken() { return std::exchange(log, {}); }

    static MDI::ConstructInfo info() {
        return {.title = "Ponts",
                .menuId = IDM_TEST_FRAME,
                .acceleratorId = IDA_TEST_FRAME,
                .iconId = 12002,
                .windowMenuItemId = ID_TEST_TILE,
                .firstChildId = 5000};
    }

    HINSTANCE instance = GetModuleHandleA(nullptr);
    Log log;
    LoggingApplication application{log};
    TestFrame frame{instance, nullptr, info(), &application};
};
