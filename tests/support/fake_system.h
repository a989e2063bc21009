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

    std::string errorText(toolbox::platform::ErrorCode code) override {
        return code == 1 ? textOfError1 : "";
    }
    toolbox::platform::LocalDate today() override { return date; }
    std::uint64_t availableVirtualMemory() override { return memory; }

  private:
    toolbox::platform::Replaced<toolbox::platform::SystemInfo> guard_{
        toolbox::platform::current().system, *this};
};
