#include "search.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace tbfile {
namespace {

constexpr std::size_t kWord = 4;
constexpr char kByte = '\xFF';

/// Whether the highest byte of the length, where it is at hand, is one that no block has. In long
/// runs of 0xFF this spares looking at each place more closely.
bool isTooLong(const char* head, std::size_t n, const Shape& shape) {
    const std::size_t last = shape.layout().head() - 1;
    return last < n && (static_cast<unsigned char>(head[last]) & 0x80) != 0;
}

/// The first place of a head in [from, stop) that `isOne` says yes to; it gets the bytes of the
/// head and how many bytes there are from the head to `end` beside those around the data.
template <class IsOne>
std::optional<std::uint64_t> findHead(Window& file, const Shape& shape, std::uint64_t from,
                                      std::uint64_t stop, std::uint64_t end, IsOne isOne) {
    const std::uint32_t head = shape.layout().head();
    while (from < stop && from < end && end - from >= shape.around()) {
        const auto n = static_cast<std::size_t>(std::min<std::uint64_t>(Window::kMost, end - from));
        const char* bytes = file.at(from, n);
        if (!bytes) return std::nullopt;
        const std::uint64_t last =
            std::min<std::uint64_t>({n - head, end - from - shape.around(), stop - from - 1});
        for (std::uint64_t i = 0; i <= last; ++i)
            if (isOne(bytes + i, end - from - i - shape.around())) return from + i;
        from += last + 1;
    }
    return std::nullopt;
}

std::uint32_t lengthIn(const char* head, const Shape& shape) {
    return wordAt(head + shape.layout().head() - kWord);
}

bool isPaddedHead(const char* head, const Shape& shape) {
    return isPadded({head + kWord, shape.layout().description});
}

}  // namespace

std::optional<std::uint64_t> afterTerminator(Window& file, const Shape& shape, std::uint64_t from,
                                             std::uint64_t limit) {
    const char* bytes = nullptr;
    for (std::uint64_t at = from; at + kWord < limit;) {
        const std::size_t n = file.piece(at, limit - at, bytes);
        if (n < kWord) {
            // The piece at hand ends within the four bytes.
            if (!file.at(at, kWord)) return std::nullopt;
            continue;
        }
        for (std::size_t i = 0; i + kWord <= n; ++i) {
            const void* hit = std::memchr(bytes + i, kByte, n - i - (kWord - 1));
            if (!hit) break;
            i = static_cast<std::size_t>(static_cast<const char*>(hit) - bytes);
            if (wordAt(bytes + i) == blocks::kTerminator &&
                !isTooLong(bytes + i + kWord, n - i - kWord, shape))
                return at + i + kWord;
        }
        at += n - (kWord - 1);
    }
    return std::nullopt;
}

Resumption resume(Window& file, Window& probe, const Shape& shape, std::uint64_t from,
                  std::uint64_t limit) {
    Resumption found{.at = limit, .unproven = {}};
    // All blocks of a run but the first begin behind a terminator, so each is met on the way: of a
    // run only the place has to be kept where it goes on.
    std::map<std::uint64_t, std::uint64_t> starts;  // of runs, by where they go on
    const auto endBefore = [&](std::uint64_t place) {
        while (!starts.empty() && starts.begin()->first < place) {
            found.unproven.push_back({starts.begin()->second, starts.begin()->first});
            starts.erase(starts.begin());
        }
    };
    for (std::uint64_t at = from; const auto place = afterTerminator(file, shape, at, limit);) {
        at = *place - (kWord - 1);
        endBefore(*place);
        const Frame frame = frameAt(probe, shape, *place, limit);
        if (!frame.isWhole() || !frame.plausible) continue;
        std::uint64_t start = *place;
        const bool goesOn = !starts.empty() && starts.begin()->first == *place;
        // Ones that something else follows look like a block too.
        if (!goesOn && frame.id == blocks::kTerminator) continue;
        if (goesOn) {
            start = starts.begin()->second;
            starts.erase(starts.begin());
        }
        // Where runs meet the one that began first counts.
        const auto [run, fresh] = starts.try_emplace(frame.end, start);
        if (!fresh) run->second = std::min(run->second, start);
    }
    endBefore(limit);
    if (!starts.empty()) {
        found.proven = true;
        found.at = starts.begin()->second;
        // Behind ones that end in data, zeros look like an empty block too.
        const Frame first = frameAt(probe, shape, found.at, limit);
        if ((first.id & 0xFF) == 0xFF) {
            found.unproven.push_back({first.offset, first.end});
            found.at = first.end;
        }
    }
    // Of runs that overlap the first counts.
    std::ranges::sort(found.unproven, {}, &Run::start);
    std::uint64_t end = 0;
    std::erase_if(found.unproven, [&](const Run& run) {
        if (run.start < end || run.start >= found.at) return true;
        end = run.end;
        return false;
    });
    return found;
}

std::optional<Frame> blockEndingAt(Window& file, Window& probe, const Shape& shape,
                                   std::uint64_t from, std::uint64_t end) {
    const auto isOne = [&](const char* head, std::uint64_t room) {
        if (lengthIn(head, shape) != room) return false;
        const bool zeros = room == 0 && wordAt(head) == 0 && head[kWord] == 0;
        return !zeros && isPaddedHead(head, shape);
    };
    const auto place = findHead(file, shape, from, end, end, isOne);
    if (!place) return std::nullopt;
    const Frame frame = frameAt(probe, shape, *place, end);
    return frame.isWhole() && frame.plausible ? std::optional(frame) : std::nullopt;
}

std::optional<Frame> blockAnywhere(Window& file, Window& probe, const Shape& shape,
                                   std::uint64_t from, std::uint64_t stop, std::uint64_t end) {
    // Behind a description that fills its field any four bytes may be a length. Of such only
    // lengths up to this are believed, so that the ends of few have to be looked at.
    constexpr std::uint32_t kMostUnpadded = 0x00FFFFFF;
    const std::uint32_t head = shape.layout().head();
    Frame frame;
    const auto isOne = [&](const char* bytes, std::uint64_t room) {
        const std::uint32_t length = lengthIn(bytes, shape);
        const std::uint32_t id = wordAt(bytes);
        if (length > room || (id == 0 && bytes[kWord] == 0) || id == blocks::kTerminator)
            return false;
        if (length > kMostUnpadded && bytes[head - kWord - 1] != '\0') return false;
        if (!isPaddedHead(bytes, shape)) return false;
        const std::uint64_t start = end - room - shape.around();
        const char* last = probe.at(start + shape.around() + length - kWord, kWord);
        if (!last || wordAt(last) != blocks::kTerminator) return false;
        frame = frameAt(probe, shape, start, end);
        return frame.isWhole() && frame.plausible;
    };
    const auto place = findHead(file, shape, from, stop, end, isOne);
    return place ? std::optional(frame) : std::nullopt;
}

}  // namespace tbfile
