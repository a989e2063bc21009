// A tool for tests that keeps what it is told.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "toolbox/commands.h"

struct ToldTool : Tool {
    using Tool::Tool;
    const int* getClassType() const override { return nullptr; }
    int setVisibleStatus(int, int) override { return 0; }
    int isVisible() const override { return 0; }
    int setCommandCheckStatus(int id, int status) override { return tell('c', id, status); }
    int setCommandEnableStatus(int id, int status) override { return tell('e', id, status); }

    /// Since the last call: "c7=1 " for a check status, "e7=0 " for an enable status.
    std::string take() { return std::exchange(told_, {}); }

    std::function<void()> action;  ///< done once, the next time that it is told

  private:
    int tell(char what, int id, int status) {
        told_ += what + std::to_string(id) + "=" + std::to_string(status) + " ";
        if (const auto now = std::exchange(action, nullptr)) now();
        return 1;
    }
    std::string told_;
};
