// The message service in English and a visible window that owns what a test opens (Windows only).
#pragma once

#include <gtest/gtest.h>

#include "support/window_kit.h"
#include "toolbox/messages.h"

namespace toolbox::testing {

inline HWND makeOwner() {
    return CreateWindowExA(0, "STATIC", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 500,
                           400, nullptr, nullptr, nullptr, nullptr);
}

class OwnerFixture : public ::testing::Test {
  protected:
    OwnerFixture() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
    }
    ~OwnerFixture() override {
        if (IsWindow(owner)) DestroyWindow(owner);
        pumpMessages();
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    GMSG service;
    HWND owner = makeOwner();
};

}  // namespace toolbox::testing
