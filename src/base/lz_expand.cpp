// Expansion through a window of the last 4096 bytes, which starts as blanks. Input and output are
// chunks, so a file of any size takes constant memory.
#include "base/lz_expand.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "base/codec.h"

namespace toolbox::base {
namespace {

constexpr std::array<unsigned char, 8> kSignature = {'S', 'Z', 'D', 'D', 0x88, 0xF0, 0x27, 0x33};
constexpr std::size_t kChunk = 64 * 1024;

/// Thrown inside this file only, from the depth of the byte loop to expandLz.
struct Failure {
    std::int32_t code;
};

class Input {
  public:
    explicit Input(const LzSource& source) : source_(source), buffer_(kChunk) {}

    /// What is there without a further read, at least one byte unless the source has ended.
    std::span<const std::byte> peek() {
        if (next_ == end_) {
            const std::ptrdiff_t got = source_(buffer_);
            if (got < 0) throw Failure{kLzRead};
            next_ = 0;
            end_ = static_cast<std::size_t>(got);
        }
        return std::span<const std::byte>(buffer_).subspan(next_, end_ - next_);
    }
    void skip(std::size_t n) { next_ += n; }

    unsigned int byte() {
        const auto rest = peek();
        if (rest.empty()) throw Failure{kLzRead};
        skip(1);
        return std::to_integer<unsigned int>(rest[0]);
    }

  private:
    const LzSource& source_;
    std::vector<std::byte> buffer_;
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

/// The last 4096 bytes written and the chunk that waits for the sink.
class Output {
  public:
    Output(const LzSink& sink, std::uint32_t limit) : sink_(sink), left_(limit) {
        window_.fill(std::byte{' '});
        chunk_.reserve(kChunk);
    }

    [[nodiscard]] bool full() const { return left_ == 0; }

    void put(std::byte value) {
        if (left_ == 0) return;
        --left_;
        window_[at_] = value;
        at_ = (at_ + 1) % window_.size();
        chunk_.push_back(value);
        if (chunk_.size() == kChunk) flush();
    }
    void repeat(std::size_t from, std::size_t count) {
        while (count-- > 0) put(window_[from++ % window_.size()]);
    }
    void flush() {
        if (!chunk_.empty() && !sink_(chunk_)) throw Failure{kLzWrite};
        chunk_.clear();
    }

  private:
    const LzSink& sink_;
    std::uint32_t left_;
    std::array<std::byte, 4096> window_;
    std::size_t at_ = window_.size() - 16;
    std::vector<std::byte> chunk_;
};

void expand(Input& input, Output& output) {
    while (!output.full()) {
        unsigned int flags = input.byte();
        for (int item = 0; item < 8 && !output.full(); ++item, flags >>= 1) {
            const unsigned int low = input.byte();
            if (flags & 1u) {
                output.put(static_cast<std::byte>(low));
                continue;
            }
            const unsigned int high = input.byte();
            output.repeat(low | (high & 0xF0u) << 4, (high & 0x0Fu) + 3);
        }
    }
    output.flush();
}

std::int32_t counted(std::uint64_t bytes) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(bytes, kMost));
}

std::int32_t copyPlain(Input& input, const LzSink& sink) {
    std::uint64_t copied = 0;
    for (auto part = input.peek(); !part.empty(); part = input.peek()) {
        if (!sink(part)) throw Failure{kLzWrite};
        copied += part.size();
        input.skip(part.size());
    }
    return counted(copied);
}

}  // namespace

std::optional<LzHeader> lzHeader(std::span<const std::byte> start) {
    if (start.size() < kLzHeaderSize ||
        std::memcmp(start.data(), kSignature.data(), kSignature.size()) != 0)
        return std::nullopt;
    return LzHeader{static_cast<char>(start[8]), load<std::uint32_t>(start.data() + 10)};
}

std::int32_t expandLz(const LzSource& source, const LzSink& sink) {
    try {
        Input input(source);
        const auto header = lzHeader(input.peek());
        if (!header) return copyPlain(input, sink);
        if (header->algorithm != 'A') return kLzUnknownAlgorithm;
        input.skip(kLzHeaderSize);
        Output output(sink, header->expandedSize);
        expand(input, output);
        return counted(header->expandedSize);
    } catch (const Failure& failure) {
        return failure.code;
    }
}

}  // namespace toolbox::base
