// Searches for whole blocks after a terminator, before a place, and anywhere.
#include "file/walk/search.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "file/walk/field.h"

namespace toolbox {
namespace {

constexpr std::size_t kWord = 4;
constexpr char kByte = '\xFF';

/// Whether the highest byte of the length, where it is at hand, is one that no block has. In long
/// runs of 0xFF this spares looking at each place more closely.
bool isTooLong(const char* head, std::size_t n, const BlockShape& shape) {
    const std::size_t last = shape.head - 1;
    return last < n && (static_cast<unsigned char>(head[last]) & 0x80) != 0;
}

/// The first place of a head in [from, stop) that `isOne` says yes to; it gets the bytes of the
/// head and how many bytes there are from the head to `end` beside those around the data.
template <class IsOne>
std::optional<std::uint64_t> findHead(FileReader& file, const BlockShape& shape, std::uint64_t from,
                                      std::uint64_t stop, std::uint64_t end, IsOne isOne) {
    const std::uint32_t head = shape.head;
    while (from < stop && from < end && end - from >= shape.around()) {
        const auto n = static_cast<std::size_t>(
            std::min<std::uint64_t>({FileReader::kMost, end - from, stop - from + head}));
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

std::uint32_t lengthIn(const char* head, const BlockShape& shape) {
    return wordAt(head + shape.head - kWord);
}

bool isPaddedHead(const char* head, const BlockShape& shape) {
    return isPadded({head + kWord, shape.description});
}

}  // namespace

std::optional<std::uint64_t> headWhere(
    FileReader& file, const BlockShape& shape, const HeadRange& range,
    const std::function<bool(const char* head, std::uint64_t room)>& isOne) {
    return findHead(file, shape, range.from, range.stop, range.end, isOne);
}

std::optional<std::uint64_t> afterTerminator(FileReader& file, const BlockShape& shape,
                                             std::uint64_t from, std::uint64_t limit) {
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
            if (wordAt(bytes + i) == kBlockTerminator &&
                !isTooLong(bytes + i + kWord, n - i - kWord, shape))
                return at + i + kWord;
        }
        at += n - (kWord - 1);
    }
    return std::nullopt;
}

Resumption resume(FileReader& file, FileReader& probe, const BlockShape& shape, std::uint64_t from,
                  std::uint64_t limit) {
    Resumption found{.at = limit, .unproven = {}};
    // All blocks of a run but the first begin after a terminator, so each is met on the way: of a
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
        const BlockFrame frame = frameAt(probe, shape, *place, limit);
        if (!frame.isWhole() || !frame.plausible) continue;
        std::uint64_t start = *place;
        const bool goesOn = !starts.empty() && starts.begin()->first == *place;
        // Ones that something else follows look like a block too.
        if (!goesOn && frame.id == kBlockTerminator) continue;
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
        // After ones that end in data, zeros look like an empty block too.
        const BlockFrame first = frameAt(probe, shape, found.at, limit);
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

std::optional<BlockFrame> blockEndingAt(FileReader& file, FileReader& probe,
                                        const BlockShape& shape, std::uint64_t from,
                                        std::uint64_t stop, std::uint64_t end) {
    const auto isOne = [&](const char* head, std::uint64_t room) {
        if (lengthIn(head, shape) != room) return false;
        const bool zeros = room == 0 && wordAt(head) == 0 && head[kWord] == 0;
        return !zeros && isPaddedHead(head, shape);
    };
    const auto place = findHead(file, shape, from, stop, end, isOne);
    if (!place) return std::nullopt;
    const BlockFrame frame = frameAt(probe, shape, *place, end);
    return frame.isWhole() && frame.plausible ? std::optional(frame) : std::nullopt;
}

std::optional<BlockFrame> blockAnywhere(FileReader& file, FileReader& probe,
                                        const BlockShape& shape, std::uint64_t from,
                                        std::uint64_t stop, std::uint64_t end) {
    // After a description that fills its field any four bytes may be a length. Of such only
    // lengths up to this are believed, so that the ends of few have to be looked at.
    constexpr std::uint32_t kMostUnpadded = 0x00FFFFFF;
    const std::uint32_t head = shape.head;
    BlockFrame frame;
    const auto isOne = [&](const char* bytes, std::uint64_t room) {
        const std::uint32_t length = lengthIn(bytes, shape);
        const std::uint32_t id = wordAt(bytes);
        if (length > room || (id == 0 && bytes[kWord] == 0) || id == kBlockTerminator) return false;
        if (length > kMostUnpadded && bytes[head - kWord - 1] != '\0') return false;
        if (!isPaddedHead(bytes, shape)) return false;
        const std::uint64_t start = end - room - shape.around();
        const char* last = probe.at(start + shape.around() + length - kWord, kWord);
        if (!last || wordAt(last) != kBlockTerminator) return false;
        frame = frameAt(probe, shape, start, end);
        return frame.isWhole() && frame.plausible;
    };
    const auto place = findHead(file, shape, from, stop, end, isOne);
    return place ? std::optional(frame) : std::nullopt;
}

}  // namespace toolbox
