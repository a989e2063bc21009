// A folder for settings of one test, with files of given bytes.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "support/temp_folder.h"
#include "toolbox/platform.h"

class SettingsFixture : public ::testing::Test {
  protected:
#if !defined(_WIN32)
    SettingsFixture() {
        ::setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1);
    }
#endif

    [[nodiscard]] static toolbox::platform::ProfileStore& profiles() {
        return *toolbox::platform::current().profiles;
    }
    [[nodiscard]] static toolbox::platform::RegistryStore& registry() {
        return *toolbox::platform::current().registry;
    }

    /// A new file, under a name that the system cannot remember anything of.
    [[nodiscard]] std::string profileHolding(std::string_view bytes) {
        const std::string name = folder_ / ("profile" + std::to_string(++files_) + ".ini");
        folder_.write(name, bytes);
        return name;
    }

    /// The text of an entry; "<none>" when the file does not have it.
    [[nodiscard]] static std::string read(const std::string& file, const char* section,
                                          const char* entry) {
        char text[200];
        return profiles().read(file.c_str(), section, entry, "ignored", text, sizeof text)
                   ? text
                   : "<none>";
    }

    TempFolder folder_;
    int files_ = 0;
};
