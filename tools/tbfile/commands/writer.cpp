// Gathers small blocks and runs of undamaged ones, so that many blocks cost few calls.
#include "commands/writer.h"

#include <array>
#include <limits>

#include "terminal/failure.h"

namespace tbfile {
namespace {

constexpr std::size_t kGathered = 256 * 1024;
/// Large enough to cost few calls, small enough for the user to see that it goes on.
constexpr std::uint64_t kRun = 64 * 1024 * 1024;
constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();

/// A word of a file: 4 bytes, the lowest first.
void store(char* at, std::uint32_t word) {
    for (int i = 0; i < 4; ++i) at[i] = static_cast<char>(word >> (8 * i));
}

}  // namespace

Label usualIndexLabel() {
    return {"Master index", 210, 200};
}

Writer::Writer(OutputFile& output, std::size_t expected) : output_(output) {
    entries_.reserve(expected);
    gathered_.assign(blocks::kHeaderBytes, '\0');
}

void Writer::begin(std::uint32_t id, std::uint64_t bytes) {
    const std::uint64_t index = (entries_.size() + 1) * std::uint64_t{blocks::kEntryBytes} +
                                blocks::kHeadBytes + blocks::kTailBytes;
    if (position_ + bytes + index > kLargest)
        throw Failure(Text::tooLarge, {nameOf(output_.target())});
    repeated_ = !identifiers_.add(id);
    entries_.push_back({id, static_cast<std::uint32_t>(position_)});
    wholeWords_ = wholeWords_ && bytes % 4 == 0;
    position_ += bytes;
}

void Writer::add(const InputFile& from, Window& window, const Shape& shape, const Frame& frame,
                 bool asItStands) {
    const blocks::Layout layout = shape.layout();
    if (asItStands && frame.padded && layout.tail == blocks::kTailBytes) {
        const std::uint64_t bytes = frame.end - frame.offset;
        begin(frame.id, bytes);
        if (runFrom_ != &from || runStart_ + runBytes_ != frame.offset) {
            sendRun();
            runFrom_ = &from;
            runStart_ = frame.offset;
        }
        runBytes_ += bytes;
        if (runBytes_ >= kRun) sendRun();
        return;
    }
    const Label label = labelOf(window, shape, frame);
    sendRun();
    begin(frame.id, std::uint64_t{blocks::kHeadBytes} + frame.length + blocks::kTailBytes);
    putHead(frame.id, label.description, frame.length);
    putData(from, &window, frame.offset + layout.head(), frame.length);
    putTail(label.version, label.recordVersion);
}

void Writer::add(std::uint32_t id, const Label& label, const InputFile& data) {
    if (data.size() > blocks::kMostBytes) throw Failure(Text::tooLarge, {nameOf(output_.target())});
    const auto length = static_cast<std::uint32_t>(data.size());
    sendRun();
    begin(id, std::uint64_t{blocks::kHeadBytes} + length + blocks::kTailBytes);
    putHead(id, label.description, length);
    putData(data, nullptr, 0, length);
    putTail(label.version, label.recordVersion);
}

void Writer::finish(Header header, const Label& indexLabel) {
    sendRun();
    header.mask = (header.mask & ~blocks::kWholeWords) | (wholeWords_ ? blocks::kWholeWords : 0u);
    header.indexOffset = static_cast<std::uint32_t>(position_);
    const std::size_t bytes = entries_.size() * blocks::kEntryBytes;
    putHead(blocks::kIndexId, indexLabel.description, static_cast<std::uint32_t>(bytes));
    put(entries_.data(), bytes);
    putTail(indexLabel.version, indexLabel.recordVersion);
    sendGathered();
    position_ += blocks::kHeadBytes + bytes + blocks::kTailBytes;
    const auto start = headerBytes(header);
    output_.rewriteStart(start.data(), start.size());
}

void Writer::put(const void* bytes, std::size_t n) {
    if (gathered_.size() + n > kGathered) sendGathered();
    if (n > kGathered)
        output_.write(bytes, n);
    else
        gathered_.append(static_cast<const char*>(bytes), n);
}

void Writer::putHead(std::uint32_t id, const std::string& description, std::uint32_t length) {
    std::array<char, blocks::kHeadBytes> head{};
    store(head.data(), id);
    blocks::putText(head.data() + 4, description);
    store(head.data() + 4 + blocks::kDescriptionBytes, length);
    put(head.data(), head.size());
}

void Writer::putTail(std::uint32_t version, std::uint32_t recordVersion) {
    std::array<char, blocks::kTailBytes> tail{};
    store(tail.data(), version);
    store(tail.data() + 4, recordVersion);
    store(tail.data() + 8, blocks::kTerminator);
    put(tail.data(), tail.size());
}

/// Small data goes through the window, which has it already; large data straight to the file.
void Writer::putData(const InputFile& from, Window* window, std::uint64_t offset, std::uint64_t n) {
    constexpr std::uint64_t kLarge = 64 * 1024;
    if (!window || n >= kLarge) {
        sendGathered();
        output_.copy(from, offset, n);
        return;
    }
    for (const char* bytes = nullptr; n > 0;) {
        const std::size_t got = window->piece(offset, n, bytes);
        if (got == 0) throw Failure(Text::shortened, {nameOf(from.path())});
        put(bytes, got);
        offset += got;
        n -= got;
    }
}

void Writer::sendRun() {
    if (runBytes_ == 0) return;
    sendGathered();
    output_.copy(*runFrom_, runStart_, runBytes_);
    runBytes_ = 0;
    runFrom_ = nullptr;
}

void Writer::sendGathered() {
    if (!gathered_.empty()) output_.write(gathered_.data(), gathered_.size());
    gathered_.clear();
}

}  // namespace tbfile
