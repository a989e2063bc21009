// What every host's file system has to do, with the same answers.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/temp_folder.h"
#include "toolbox/platform.h"
#include "toolbox/win_types.h"

class HostFiles : public testing::Test {
  protected:
    using ErrorCode = toolbox::platform::ErrorCode;
    using FileHandle = toolbox::platform::FileHandle;
    using SeekFrom = toolbox::platform::SeekFrom;

    static constexpr auto kRead = static_cast<std::uint32_t>(GENERIC_READ);
    static constexpr auto kWrite = static_cast<std::uint32_t>(GENERIC_WRITE);
    static constexpr std::uint32_t kShareRead = FILE_SHARE_READ;
    static constexpr std::uint32_t kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE;

    ~HostFiles() override {
        for (const FileHandle handle : open_) files.close(handle);
    }

    /// Opens until the end of the test.
    ErrorCode open(const std::string& name, std::uint32_t access, std::uint32_t share,
                   std::uint32_t disposition) {
        const ErrorCode error = files.open(name.c_str(), access, share, disposition, last);
        EXPECT_EQ(error == ERROR_SUCCESS, last != toolbox::platform::kNoFile);
        if (error == ERROR_SUCCESS) open_.push_back(last);
        return error;
    }
    void closeAll() {
        for (const FileHandle handle : open_) EXPECT_EQ(files.close(handle), 0u);
        open_.clear();
    }

    toolbox::platform::FileSystem& files = *toolbox::platform::current().files;
    TempFolder folder;
    FileHandle last = toolbox::platform::kNoFile;

  private:
    std::vector<FileHandle> open_;
};
