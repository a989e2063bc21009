// Blocks of up to 16 KiB are gathered in one buffer of 256 KiB; larger ones leave from the record's
// own buffer, with their head and tail in the room around it.
#include "file/block/output.h"

#include <cstring>
#include <new>
#include <utility>

#include "file/block/encoding.h"
#include "file/block/parts.h"
#include "file/file_system.h"
#include "file/record/record_parts.h"

namespace toolbox {
namespace {

/// Fits in a processor's own memory, and is large enough to make the calls to the system cheap.
constexpr std::uint32_t kGatherBytes = 256 * 1024;
/// Pieces lie in memory as they will in the pages of the file: copying is fastest that way.
constexpr std::uint32_t kPage = 4096;

}  // namespace

void BlockOutput::FreesAligned::operator()(char* bytes) const {
    operator delete[](bytes, std::align_val_t{kPage});
}

BlockOutput::BlockOutput(APIFile& file, std::shared_ptr<OwnedFile> keptAlive, bool gathers)
    : file_(file), keptAlive_(std::move(keptAlive)), gathers_(gathers) {}

BlockOutput::~BlockOutput() {
    (void)flush();
}

bool BlockOutput::mayGrow(std::uint32_t position, std::uint64_t bytes) {
    if (position <= blocks::kMostBytes && bytes <= blocks::kMostBytes - position) return true;
    reportFileError(ERROR_FILE_TOO_LARGE);
    return false;
}

std::optional<std::uint32_t> BlockOutput::position() {
    if (failed_) return std::nullopt;
    if (gathers_) return position_;
    const unsigned long at = file_.CurOffset();
    if (at >= 0xFFFFFFFFul) return std::nullopt;
    return static_cast<std::uint32_t>(at);
}

bool BlockOutput::send(const char* bytes, std::uint32_t n) {
    if (!failed_ && !file_.write(bytes, n)) failed_ = true;
    return !failed_;
}

bool BlockOutput::flush() {
    const std::uint32_t from = begin_;
    const std::uint32_t n = std::exchange(used_, begin_ = 0) - from;
    if (n > 0 && !send(gathered_.get() + from, n)) lostBlocks_ = lostBlocks_ || holdsBlocks_;
    holdsBlocks_ = false;
    return !failed_;
}

/// Room for `n` more gathered bytes, n at most kGatherBytes; null after a failure.
char* BlockOutput::reserve(std::uint32_t n) {
    if (!gathered_) gathered_.reset(new (std::align_val_t{kPage}) char[kPage + kGatherBytes]);
    if (n > kPage + kGatherBytes - used_ && !flush()) return nullptr;
    if (used_ == begin_) used_ = begin_ = position_ % kPage;
    char* room = gathered_.get() + used_;
    used_ += n;
    return room;
}

bool BlockOutput::write(const TarvBlocFile& block) {
    const std::uint32_t n = block.getLen();
    const std::uint64_t all = std::uint64_t{n} + blocks::kHeadBytes + blocks::kTailBytes;
    const auto at = position();
    if (!at || !mayGrow(*at, all)) return false;
    const auto size = static_cast<std::uint32_t>(all);

    const RecordBuffer& data = RecordParts::buffer(block);
    char* start = nullptr;
    if (n >= kRoomFrom) {
        // Large data leaves from where it is, between its head and its tail.
        if (!flush()) return false;
        start = data.data() - blocks::kHeadBytes;
    } else {
        start = reserve(size);
        if (!start) return false;
        if (n > 0) std::memcpy(start + blocks::kHeadBytes, data.data(), n);
    }
    blocks::encodeHead(start, block);
    blocks::encodeTail(start + blocks::kHeadBytes + n, block);
    if (sums_ && block.getID() != blocks::kIndexId)
        sums_->add(static_cast<std::uint32_t>(block.getID()), *at, {start, size});
    position_ += size;
    if (n >= kRoomFrom) return send(start, size);
    if (!gathers_) return flush();
    holdsBlocks_ = holdsBlocks_ || block.getID() != blocks::kIndexId;
    return true;
}

bool BlockOutput::write(const char* bytes, std::uint32_t n) {
    const auto at = position();
    if (!at || !mayGrow(*at, n)) return false;
    char* room = reserve(n);
    if (!room) return false;
    std::memcpy(room, bytes, n);
    position_ += n;
    return gathers_ || flush();
}

bool BlockOutput::sought(int result) {
    if (!result) failed_ = true;
    return !failed_;
}

bool BlockOutput::seekToBegin() {
    position_ = 0;
    return flush() && sought(file_.SeekToBegin());
}

bool BlockOutput::seekToEnd() {
    if (!flush() || !sought(file_.SeekToEnd())) return false;
    if (!gathers_) return true;
    const unsigned long end = file_.CurOffset();
    position_ = static_cast<std::uint32_t>(end);
    return sought(end < 0xFFFFFFFFul);
}

void BlockOutput::keepSums() {
    if (!sums_) sums_ = std::make_unique<blocks::KeptSums>();
}

void BlockOutput::share() {
    if (!gathers_) return;
    (void)flush();
    gathers_ = false;
}

}  // namespace toolbox
