// Facts about a system that a test makes up.
#pragma once

#include <limits>
#include <string>

#include "toolbox/platform.h"

/// In use from its construction to its end.
struct FakeSystem final : toolbox::platform::SystemInfo {
    std::string textOfError1;  ///< other errors have none
    toolbox::platform::LocalDate date{2000, 1, 1};
    std::uint64_t memory = std::numeric_limits<std::uint64_t>::max();
    std::uint32_t milliseconds = 0;
    std::time_t seconds = 0;
    std::string program;

    std::string errorText(toolbox::platform::ErrorCode code) override {
        return code == 1 ? textOfError1 : "";
    }
    toolbox::platform::LocalDate today() override { return date; }
    std::uint64_t availableVirtualMemory() override { return memory; }
    std::uint32_t clockMilliseconds() override { return milliseconds; }
    std::time_t now() override { return seconds; }
    std::string programPath() override { return program; }

  private:
    toolbox::platform::Replaced<toolbox::platform::SystemInfo> guard_{
        toolbox::platform::current().system, *this};
};
