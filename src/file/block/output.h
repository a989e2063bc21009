// Blocks on their way to a file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "file/block/checksums.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// Writes blocks at a file's position, each in one piece; when it gathers, small ones leave
/// together. Nothing is written that would end past blocks::kMostBytes. After a failed write
/// nothing further is written. Failures are shown to the user.
class BlockOutput {
  public:
    /// `keptAlive` is what keeps `file` alive.
    BlockOutput(APIFile& file, std::shared_ptr<OwnedFile> keptAlive, bool gathers);
    ~BlockOutput();
    BlockOutput(const BlockOutput&) = delete;
    BlockOutput& operator=(const BlockOutput&) = delete;

    [[nodiscard]] bool write(const TarvBlocFile& block);
    [[nodiscard]] bool write(const char* bytes, std::uint32_t n);
    /// Writes what was gathered.
    [[nodiscard]] bool flush();

    /// Where the next byte goes.
    [[nodiscard]] std::optional<std::uint32_t> position();
    [[nodiscard]] bool seekToBegin();
    [[nodiscard]] bool seekToEnd();

    /// Whether `bytes` more may be written at `position`; otherwise the user is told.
    [[nodiscard]] static bool mayGrow(std::uint32_t position, std::uint64_t bytes);

    /// Keeps the sum of every block from now on.
    void keepSums();
    /// Null while none are kept.
    [[nodiscard]] const blocks::KeptSums* sums() const { return sums_.get(); }

    /// Somebody else may use the file from now on: gathers no more.
    void share();
    /// Whether a block is lost that write() had accepted: it was gathered when a write failed. The
    /// index does not count, for which commit answers.
    [[nodiscard]] bool lostBlocks() const { return lostBlocks_; }

  private:
    [[nodiscard]] char* reserve(std::uint32_t n);
    [[nodiscard]] bool send(const char* bytes, std::uint32_t n);
    [[nodiscard]] bool sought(int result);

    APIFile& file_;
    std::shared_ptr<OwnedFile> keptAlive_;
    struct FreesAligned {
        void operator()(char* bytes) const;
    };
    std::unique_ptr<char[], FreesAligned> gathered_;
    std::unique_ptr<blocks::KeptSums> sums_;
    std::uint32_t begin_ = 0;     ///< what was gathered lies from here
    std::uint32_t used_ = 0;      ///< to here
    std::uint32_t position_ = 0;  ///< kept while gathering
    bool gathers_;
    bool failed_ = false;
    bool holdsBlocks_ = false;  ///< among what was gathered are accepted blocks
    bool lostBlocks_ = false;
};

}  // namespace toolbox
