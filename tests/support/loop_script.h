// Steps inside of a frame's message loop, for tests with real keys (Windows only).
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>

#include "toolbox/windowing.h"

namespace toolbox::testing {

/// Runs a frame's message loop and, from inside it, steps that each wait for their condition. The
/// loop ends after the last.
class LoopScript {
  public:
    explicit LoopScript(MDI& frame) : frame_(frame) {}

    LoopScript& run(std::function<void()> action) {
        return until([=] { return action(), true; });
    }
    LoopScript& until(std::function<bool()> condition) {
        steps_.push_back(std::move(condition));
        return *this;
    }
    /// The loop's result is 42 when all went well.
    void play() {
        active = this;
        giveUp_ = GetTickCount64() + 5000;
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, tick);
        EXPECT_EQ(frame_.run(SW_SHOWNORMAL), 42);
        KillTimer(nullptr, timer);
        active = nullptr;
        EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps left";
    }

  private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
        if (!active) return;  // a tick that came too late
        auto& steps = active->steps_;
        if (!steps.empty() && steps.front()()) steps.pop_front();
        if (steps.empty() || GetTickCount64() > active->giveUp_) PostQuitMessage(42);
    }

    static inline LoopScript* active = nullptr;
    MDI& frame_;
    std::deque<std::function<bool()>> steps_;
    ULONGLONG giveUp_ = 0;
};

}  // namespace toolbox::testing
