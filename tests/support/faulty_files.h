// A file system whose calls fail when a test says so; everything else reaches the real one.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string>

#include "toolbox/platform.h"

/// The calls that can be made to fail; `look` stands for those that only find out something.
enum class FileCall {
    createLike,
    read,
    readAt,
    write,
    seek,
    size,
    flush,
    flushFolder,
    replace,
    renameNew,
    open,
    close,
    copy,
    remove,
    change,
    look
};

/// In use from its construction to its end, for files that are open already as well:
///
///     FaultyFiles faults;
///     faults.fail(FileCall::write, 3, ERROR_DISK_FULL);  // the third write from now on
class FaultyFiles final : public toolbox::platform::FileSystem {
    using ErrorCode = toolbox::platform::ErrorCode;
    using FileHandle = toolbox::platform::FileHandle;
    using SeekFrom = toolbox::platform::SeekFrom;
    using FoundFile = toolbox::platform::FoundFile;

  public:
    FaultyFiles() : real_(*toolbox::platform::current().files), guard_(slot(), *this) {}

    /// Makes the `nth` call from now on, counted from 1, fail; those after it work again unless
    /// `forGood`. A failing write does nothing at all.
    void fail(FileCall call, int nth, ErrorCode error, bool forGood = false) {
        plan(call) = {made(call) + nth, error, 0, false, forGood};
    }
    /// Makes the `nth` read or write succeed with at most `bytes` bytes, as a full disk may do.
    void shorten(FileCall call, int nth, std::uint32_t bytes, bool forGood = false) {
        plan(call) = {made(call) + nth, 0, bytes, true, forGood};
    }
    /// Calls made so far, failed ones included.
    [[nodiscard]] int made(FileCall call) const { return made_[index(call)]; }
    /// Runs before the n-th call is passed on, say to change the file without the caller's
    /// knowledge.
    std::function<void(FileCall, int)> before;
    /// Bytes that still fit on the disk: a write that does not fit is cut, the next one refused.
    std::optional<std::uint32_t> room;
    /// The share modes of files mean nothing, as on some network folders.
    bool ignoresShares = false;

    ErrorCode open(const char* name, std::uint32_t access, std::uint32_t share,
                   std::uint32_t disposition, FileHandle& out) override {
        out = toolbox::platform::kNoFile;
        if (const Plan* fault = due(FileCall::open)) return fault->error;
        return real_.open(name, access, shared(share), disposition, out);
    }
    ErrorCode close(FileHandle file) override {
        due(FileCall::close);
        return real_.close(file);
    }
    ErrorCode read(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t& got) override {
        return transfer(FileCall::read, n, got,
                        [&](std::uint32_t most) { return real_.read(file, buffer, most, got); });
    }
    ErrorCode readAt(FileHandle file, std::uint64_t offset, void* buffer, std::uint32_t n,
                     std::uint32_t& got) override {
        return transfer(FileCall::readAt, n, got, [&](std::uint32_t most) {
            return real_.readAt(file, offset, buffer, most, got);
        });
    }
    ErrorCode write(FileHandle file, const void* buffer, std::uint32_t n,
                    std::uint32_t& written) override {
        return transfer(FileCall::write, n, written, [&](std::uint32_t most) {
            if (room && *room == 0 && n > 0) return ErrorCode{ERROR_DISK_FULL};
            if (room) most = std::min(most, *room);
            const ErrorCode error = real_.write(file, buffer, most, written);
            if (room) *room -= written;
            return error;
        });
    }
    ErrorCode seek(FileHandle file, std::int64_t distance, SeekFrom from,
                   std::uint64_t& position) override {
        if (const Plan* fault = due(FileCall::seek)) return fault->error;
        return real_.seek(file, distance, from, position);
    }
    ErrorCode size(FileHandle file, std::uint64_t& bytes) override {
        if (const Plan* fault = due(FileCall::size)) return fault->error;
        return real_.size(file, bytes);
    }
    ErrorCode flush(FileHandle file) override {
        if (const Plan* fault = due(FileCall::flush)) return fault->error;
        return real_.flush(file);
    }
    bool exists(const char* name) override { return looked().exists(name); }
    bool isReadableAndWritable(const char* name) override {
        return looked().isReadableAndWritable(name);
    }
    std::vector<FoundFile> find(const char* pattern) override { return looked().find(pattern); }
    ErrorCode fullName(const char* name, std::string& full) override {
        return looked().fullName(name, full);
    }
    bool isSameFile(const char* one, const char* other) override {
        return looked().isSameFile(one, other);
    }
    ErrorCode copy(const char* from, const char* to, bool failIfExists) override {
        if (const Plan* fault = due(FileCall::copy)) return fault->error;
        return real_.copy(from, to, failIfExists);
    }
    ErrorCode renameNew(const char* from, const char* to) override {
        if (const Plan* fault = due(FileCall::renameNew)) return fault->error;
        return real_.renameNew(from, to);
    }
    ErrorCode replace(const char* from, const char* to) override {
        if (const Plan* fault = due(FileCall::replace)) return fault->error;
        return real_.replace(from, to);
    }
    ErrorCode followLinks(const char* name, std::string& target) override {
        return looked().followLinks(name, target);
    }
    ErrorCode createLike(const char* name, const char* like, std::uint32_t share,
                         FileHandle& out) override {
        out = toolbox::platform::kNoFile;
        if (const Plan* fault = due(FileCall::createLike)) return fault->error;
        return real_.createLike(name, like, shared(share), out);
    }
    ErrorCode copyFacts(FileHandle from, FileHandle to) override {
        due(FileCall::change);
        return real_.copyFacts(from, to);
    }
    ErrorCode flushFolderOf(const char* name) override {
        if (const Plan* fault = due(FileCall::flushFolder)) return fault->error;
        return real_.flushFolderOf(name);
    }
    ErrorCode remove(const char* name) override {
        if (const Plan* fault = due(FileCall::remove)) return fault->error;
        return real_.remove(name);
    }
    ErrorCode createFolder(const char* name) override {
        if (const Plan* fault = due(FileCall::change)) return fault->error;
        return real_.createFolder(name);
    }
    ErrorCode createTemporary(const char* prefix, std::string& name) override {
        return real_.createTemporary(prefix, name);
    }
    ErrorCode attributes(const char* name, std::uint32_t& out) override {
        return looked().attributes(name, out);
    }
    ErrorCode setAttributes(const char* name, std::uint32_t attributes) override {
        if (const Plan* fault = due(FileCall::change)) return fault->error;
        return real_.setAttributes(name, attributes);
    }
    std::string currentFolder() override { return real_.currentFolder(); }
    ErrorCode setCurrentFolder(const char* name) override { return real_.setCurrentFolder(name); }
    ErrorCode diskFree(const char* root, std::uint32_t& sectorsPerCluster,
                       std::uint32_t& bytesPerSector, std::uint32_t& freeClusters) override {
        return real_.diskFree(root, sectorsPerCluster, bytesPerSector, freeClusters);
    }
    std::int32_t expandCopy(const char* from, const char* to) override {
        return real_.expandCopy(from, to);
    }

  private:
    struct Plan {
        int nth = 0;  ///< 0: none
        ErrorCode error = 0;
        std::uint32_t bytes = 0;
        bool shortens = false;
        bool forGood = false;
    };
    static constexpr std::size_t kCalls = static_cast<std::size_t>(FileCall::look) + 1;

    static toolbox::platform::FileSystem*& slot() { return toolbox::platform::current().files; }
    static std::size_t index(FileCall call) { return static_cast<std::size_t>(call); }
    /// For a call that finds out something; it may be counted and not fail.
    toolbox::platform::FileSystem& looked() {
        due(FileCall::look);
        return real_;
    }
    [[nodiscard]] std::uint32_t shared(std::uint32_t share) const {
        constexpr std::uint32_t kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        return ignoresShares ? kAll : share;
    }
    Plan& plan(FileCall call) { return plans_[index(call)]; }

    /// Makes `call` of at most `n` bytes, fewer where that is planned.
    template <class Call>
    ErrorCode transfer(FileCall kind, std::uint32_t n, std::uint32_t& done, const Call& call) {
        done = 0;
        const Plan* fault = due(kind);
        if (fault && !fault->shortens) return fault->error;
        return call(fault ? std::min(n, fault->bytes) : n);
    }
    /// Counts a call; the fault that is due in it, or null.
    const Plan* due(FileCall call) {
        const int now = ++made_[index(call)];
        if (before) before(call, now);
        const Plan& planned = plan(call);
        const bool hits = planned.forGood ? now >= planned.nth : now == planned.nth;
        return planned.nth > 0 && hits ? &planned : nullptr;
    }

    toolbox::platform::FileSystem& real_;
    std::array<int, kCalls> made_{};
    std::array<Plan, kCalls> plans_{};
    toolbox::platform::Replaced<toolbox::platform::FileSystem> guard_;
};
