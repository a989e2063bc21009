// Window objects live as long as their windows.
#include <gtest/gtest.h>

#include "toolbox/windowing.h"

namespace {

int living = 0;

struct Object : WindowObject {
    Object() { ++living; }
    ~Object() override { --living; }

    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        EXPECT_TRUE(WindowDict::find(getHWND()) == this) << message;
        if (message == refused) return message == WM_CREATE ? -1 : 0;
        if (message == WM_USER) {
            DestroyWindow(getHWND());
            return 5;
        }
        if (message == WM_USER + 1) {
            delete this;
            return 6;
        }
        if (message == WM_CREATE && inner) innerResult = inner->make();
        return WindowObject::handleMessage(message, wParam, lParam);
    }
    int make(const char* className = "TestObject") {
        return create(className, "object", WS_POPUP, 1, 2, 30, 40, nullptr, nullptr, nullptr);
    }

    UINT refused = 0;
    Object* inner = nullptr;
    int innerResult = 0;
};

struct WindowObjectTest : ::testing::Test {
    WindowObjectTest() {
        living = 0;
        WindowDict::initStaticVars();
        WNDCLASSA objects{};
        objects.lpfnWndProc = WindowObject::StdWinProc;
        objects.hInstance = WindowObject::getLibraryInstance();
        objects.lpszClassName = "TestObject";
        RegisterClassA(&objects);
    }
    ~WindowObjectTest() override {
        UnregisterClassA("TestObject", WindowObject::getLibraryInstance());
        WindowDict::destroyStaticVars();
    }
};

TEST_F(WindowObjectTest, MayDestroyItsWindowOrItselfInAMessage) {
    for (const UINT message : {WM_USER, WM_USER + 1}) {
        auto* const object = new Object;
        object->make();
        const HWND window = object->getHWND();
        EXPECT_EQ(SendMessageA(window, message, 0, 0), message == WM_USER ? 5 : 6);
        EXPECT_EQ(living, 0);
        EXPECT_EQ(WindowDict::find(window), nullptr);
        EXPECT_EQ(IsWindow(window) != 0, message != WM_USER);
        DestroyWindow(window);  // without its object
    }
}

TEST_F(WindowObjectTest, IsGoneWhenItsWindowRefusedItself) {
    for (const UINT message : {WM_NCCREATE, WM_CREATE}) {
        auto* const object = new Object;
        object->refused = message;
        EXPECT_EQ(object->make(), 0);
        EXPECT_EQ(living, 0);
    }
}

TEST_F(WindowObjectTest, StaysTheCallersWithoutWindow) {
    Object object;
    EXPECT_EQ(object.make("NoSuchClass"), 0);
    EXPECT_EQ(object.getHWND(), nullptr);

    // The next window is not taken for the one that failed.
    const HWND stranger = CreateWindowExA(0, "TestObject", "", WS_POPUP, 0, 0, 9, 9, nullptr,
                                          nullptr, WindowObject::getLibraryInstance(), nullptr);
    ASSERT_NE(stranger, nullptr);
    EXPECT_EQ(object.getHWND(), nullptr);
    EXPECT_EQ(WindowDict::find(stranger), nullptr);
    DestroyWindow(stranger);
}

TEST_F(WindowObjectTest, MayCreateAnotherWhileItIsCreated) {
    auto* const outer = new Object;
    outer->inner = new Object;
    EXPECT_EQ(outer->make(), 1);
    EXPECT_EQ(outer->innerResult, 1);
    EXPECT_EQ(WindowDict::find(outer->getHWND()), outer);
    EXPECT_EQ(WindowDict::find(outer->inner->getHWND()), outer->inner);
    DestroyWindow(outer->inner->getHWND());
    DestroyWindow(outer->getHWND());
}

}  // namespace
