// The files that the program reads and makes, by names of any characters.
//
// Every failure is thrown as Failure, which names the file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "system/access.h"
#include "toolbox/block_frames.h"

namespace tbfile {

using Path = std::filesystem::path;

/// Names in UTF-8, as arguments, texts and JSON have them.
[[nodiscard]] Path pathOf(std::string_view utf8);
[[nodiscard]] std::string nameOf(const Path& path);

/// The system's reason for a failure: an error number of the C library, on Windows of the system.
[[nodiscard]] std::string reasonOf(int code);
[[nodiscard]] std::string reasonOf(const std::error_code& error);
/// What the two are made of: the reason of an error number of the C library, and of one that has no
/// text here. The C library's own texts are English, and shown to who reads English.
[[nodiscard]] std::string reasonOfErrno(const std::error_code& error);
[[nodiscard]] std::string otherReason(int code, const std::string& english);

/// The number of this process.
[[nodiscard]] unsigned long processNumber();

enum class Links { follow, refuse };

/// A regular file open for reading; others may read it too. Nothing else is opened: a pipe that
/// nobody writes to does not keep the program waiting.
class InputFile final : public toolbox::FileSource {
  public:
    /// `links`: whether the name itself may be a link.
    explicit InputFile(Path path, Links links = Links::follow);
    ~InputFile() override;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    [[nodiscard]] std::uint64_t size() const override { return size_; }
    std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const override;
    [[nodiscard]] const Path& path() const { return path_; }
    [[nodiscard]] const Access& access() const { return access_; }

  private:
    friend class OutputFile;

    Path path_;
    std::intptr_t handle_ = -1;
    std::uint64_t size_ = 0;
    Access access_;
};

/// Told how far a copy has come, in bytes from the start of the file that is read.
using Watch = std::function<void(std::uint64_t)>;

/// A file that is written under a temporary name beside its own and gets that once it is whole and
/// on the device. Until then nothing under its own name changes; without finish() what was written
/// is removed. copy() and finish() throw Failure when the user wants the program to end.
///
/// It is made for its owner alone, and before the first byte gets the access given, that of the
/// file that it is made of. Where it replaces a file, it gets only what both allow.
class OutputFile {
  public:
    /// `replaces`: an existing file may lose its place. `watch` is told of what copy() does.
    OutputFile(Path target, Access access, bool replaces, Watch watch = {});
    /// A file of a folder that is not in place yet. It has its name from the start, and finish()
    /// leaves it to syncFiles() that it gets to the device. `replaced` is the file that it will
    /// replace, where there is one.
    OutputFile(Path target, Access access, Path replaced, Watch watch);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Appends.
    void write(const void* bytes, std::size_t n);
    /// Appends bytes of a file, inside the system where it can.
    void copy(const InputFile& from, std::uint64_t offset, std::uint64_t n);
    /// Overwrites bytes at the start; write() goes on at the end.
    void rewriteStart(const void* bytes, std::size_t n);
    /// Puts the file in place.
    void finish();

    [[nodiscard]] const Path& target() const { return target_; }

  private:
    /// False when the name is taken.
    [[nodiscard]] bool create(const Path& name);
    void takeAccess();
    /// Throws Failure when what was written is lost.
    void close();
    void putInPlace();
    void copyThrough(const InputFile& from, std::uint64_t offset, std::uint64_t n);
    void copied(std::uint64_t upTo) const;

    Path target_;
    Access access_;
    Path replaced_;
    Path written_;  ///< its name until finish()
    bool replaces_ = false;
    bool inFolder_ = false;
    Watch watch_;
    std::intptr_t handle_ = -1;
};

/// Offers temporary names beside a target until one is not taken: until `make` returns true.
void makeBeside(const Path& target, const std::function<bool(const Path&)>& make);

/// Waits until files of a folder are on the device.
void syncFiles(const Path& folder, const std::vector<std::string>& names);
/// Waits until the device knows that a file or folder has its name.
void syncFolderOf(const Path& file);

/// Refuses an output that is the input, that is something else than a file, or that exists and may
/// not be replaced.
void checkTarget(const Path& target, const Path& input, bool replaces);

}  // namespace tbfile
