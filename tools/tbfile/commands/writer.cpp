// Gathers small blocks and runs of undamaged ones, so that many blocks cost few calls.
#include "commands/writer.h"

#include <limits>

#include "terminal/failure.h"

namespace tbfile {
namespace {

constexpr std::size_t kGathered = 256 * 1024;
/// Large enough to cost few calls, small enough for the user to see that it goes on.
constexpr std::uint64_t kRun = 64 * 1024 * 1024;
/// Bytes of a block beside its data.
const std::uint64_t kAround = Shape().around();
constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();

}  // namespace

Label usualIndexLabel() {
    return {"Master index", 210, 200};
}

Writer::Writer(OutputFile& output, std::size_t expected) : output_(output) {
    entries_.reserve(expected);
    gathered_.assign(Shape().start, '\0');  // where the header will stand
}

void Writer::begin(std::uint32_t id, std::uint64_t bytes) {
    const std::size_t blocks = entries_.size() + 1;
    const std::uint64_t index = (blocks + 1) * sizeof(BlocItem) + kAround + listBytes(blocks);
    if (position_ + bytes + index > kLargest)
        throw Failure(Text::tooLarge, {nameOf(output_.target())});
    repeated_ = !lookup_.add(entries_, id);
    entries_.push_back({id, static_cast<std::uint32_t>(position_)});
    if (keepsSums_)
        sums_.push_back({id, entries_.back().offset, static_cast<std::uint32_t>(bytes), 0});
    wholeWords_ = wholeWords_ && bytes % 4 == 0;
    position_ += bytes;
}

void Writer::add(const InputFile& from, FileReader& window, const Shape& shape, const Frame& frame,
                 bool asItStands) {
    if (asItStands && frame.padded && shape.isWritten()) {
        const std::uint64_t bytes = frame.end - frame.offset;
        begin(frame.id, bytes);
        if (runFrom_ != &from || runStart_ + runBytes_ != frame.offset) {
            sendRun();
            runFrom_ = &from;
            runStart_ = frame.offset;
        }
        runBytes_ += bytes;
        if (runBytes_ >= kRun) sendRun();
        if (keepsSums_) addSum(sumAt(window, frame.offset, bytes), from);
        return;
    }
    const Label label = labelOf(window, shape, frame);
    sendRun();
    begin(frame.id, kAround + frame.length);
    if (keepsSums_) {
        const auto head = toolbox::blockHead(frame.id, label.description, frame.length);
        const auto tail = toolbox::blockTail(label.version, label.recordVersion);
        const auto data =
            sumAt(window, frame.offset + shape.head, frame.length, toolbox::sumOf(head));
        addSum(data ? std::optional(toolbox::sumOf(tail, *data)) : data, from);
    }
    putHead(frame.id, label.description, frame.length);
    putData(from, &window, frame.offset + shape.head, frame.length);
    putTail(label.version, label.recordVersion);
}

void Writer::add(std::uint32_t id, const Label& label, const InputFile& data) {
    if (data.size() > std::numeric_limits<std::int32_t>::max())
        throw Failure(Text::tooLarge, {nameOf(output_.target())});
    const auto length = static_cast<std::uint32_t>(data.size());
    sendRun();
    begin(id, kAround + length);
    putHead(id, label.description, length);
    putData(data, nullptr, 0, length);
    putTail(label.version, label.recordVersion);
    if (!keepsSums_) return;
    const auto head = toolbox::blockHead(id, label.description, length);
    const auto tail = toolbox::blockTail(label.version, label.recordVersion);
    FileReader reader(data);
    const auto sum = sumAt(reader, 0, length, toolbox::sumOf(head));
    addSum(sum ? std::optional(toolbox::sumOf(tail, *sum)) : sum, data);
}

void Writer::addSum(std::optional<std::uint32_t> sum, const InputFile& from) {
    if (!sum) throw Failure(Text::shortened, {nameOf(from.path())});
    sums_.back().sum = *sum;
}

void Writer::leaveSumOut() {
    if (keepsSums_) sums_.back().length = sums_.back().sum = 0;
}

std::uint64_t Writer::listBytes(std::size_t blocks) const {
    return keepsSums_ ? toolbox::checksumListBytes(blocks + 1) : 0;
}

void Writer::finish(Header header, const Label& indexLabel) {
    sendRun();
    // A block that has the identifier of the list already is somebody's own.
    if (keepsSums_ && has(toolbox::kChecksumListId)) keepsSums_ = false;
    header.mask = (header.mask & ~1u) | (wholeWords_ ? 1u : 0u);
    header.indexOffset = static_cast<std::uint32_t>(position_ + listBytes(entries_.size()));
    putIndex(header, indexLabel);
    sendGathered();
    const auto start = toolbox::headerBytes(header);
    output_.rewriteStart(start.data(), start.size());
}

/// The list, whose entry is the first of the index, and the index.
void Writer::putIndex(Header header, const Label& label) {
    const auto place = static_cast<std::uint32_t>(position_);
    if (keepsSums_) {
        entries_.insert(entries_.begin(), {toolbox::kChecksumListId, place});
        sums_.insert(sums_.begin(), {toolbox::kChecksumListId, place, 0, 0});
        lists_ = 1;
    }
    const std::size_t bytes = entries_.size() * sizeof(BlocItem);
    const auto head = toolbox::blockHead(toolbox::kMasterIndexId, label.description,
                                         static_cast<std::uint32_t>(bytes));
    const auto tail = toolbox::blockTail(label.version, label.recordVersion);
    std::vector<char> index(head.begin(), head.end());
    const char* const first = reinterpret_cast<const char*>(entries_.data());
    index.insert(index.end(), first, first + bytes);
    index.insert(index.end(), tail.begin(), tail.end());
    if (keepsSums_) {
        const auto start = toolbox::headerBytes(header);
        const auto list = toolbox::checksumList({start, index, sums_, place});
        put(list.data(), list.size());
        position_ += list.size();
    }
    put(index.data(), index.size());
    position_ += index.size();
}

void Writer::put(const void* bytes, std::size_t n) {
    if (gathered_.size() + n > kGathered) sendGathered();
    if (n > kGathered)
        output_.write(bytes, n);
    else
        gathered_.append(static_cast<const char*>(bytes), n);
}

void Writer::putHead(std::uint32_t id, const std::string& description, std::uint32_t length) {
    const auto head = toolbox::blockHead(id, description, length);
    put(head.data(), head.size());
}

void Writer::putTail(std::uint32_t version, std::uint32_t recordVersion) {
    const auto tail = toolbox::blockTail(version, recordVersion);
    put(tail.data(), tail.size());
}

/// Small data goes through the window, which has it already; large data straight to the file.
void Writer::putData(const InputFile& from, FileReader* window, std::uint64_t offset,
                     std::uint64_t n) {
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
