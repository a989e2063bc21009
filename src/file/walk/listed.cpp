// Rows are proved one by one as the walk comes to them. At the first that is not what was written
// all are, and the places of those that fail are searched, byte by byte, for any of them.
#include "file/walk/listed.h"

#include <algorithm>
#include <bit>

#include "file/walk/field.h"
#include "file/walk/search.h"

namespace toolbox {
namespace {

/// What is summed in vain, as a multiple of the file: bytes may look like very many long blocks.
constexpr std::uint64_t kPatience = 4;

}  // namespace

ListedBlocks::ListedBlocks(FileReader& file, FileReader& probe, const BlockFileMap& map)
    : file_(file), probe_(probe), shape_(map.shape), budget_(kPatience * file.size()) {
    if (!map.checksums || !map.checksums->proves()) return;
    for (const BlockSum& row : map.checksums->rows)
        if (row.isKnown()) rows_.push_back(row);
    std::ranges::sort(rows_, {}, &BlockSum::offset);
}

const BlockSum* ListedBlocks::covering(std::uint64_t offset) const {
    const auto next = std::ranges::upper_bound(
        rows_, offset, {}, [](const BlockSum& row) { return std::uint64_t{row.offset}; });
    if (next == rows_.begin()) return nullptr;
    const BlockSum& row = *std::prev(next);
    return offset - row.offset < row.length ? &row : nullptr;
}

const BlockSum* ListedBlocks::at(std::uint64_t offset) const {
    const BlockSum* const row = covering(offset);
    return row && row->offset == offset ? row : nullptr;
}

bool ListedBlocks::isProved(const BlockSum& row) {
    return sumAt(file_, row.offset, row.length) == row.sum;
}

/// The same for a block anywhere, which may turn out not to be one very often.
bool ListedBlocks::hasSum(std::uint64_t offset, const BlockSum& row) {
    if (budget_ < row.length) return false;
    if (sumAt(probe_, offset, row.length) == row.sum) return true;
    budget_ -= row.length;
    return false;
}

void ListedBlocks::searchAll() {
    searched_ = true;
    std::vector<const BlockSum*> lost;
    for (const BlockSum& row : rows_) {
        if (sumAt(probe_, row.offset, row.length) == row.sum) continue;
        lost.push_back(&row);
        missing_.try_emplace(row.id, &row);
    }
    for (std::size_t i = 0; i < lost.size();) {
        const std::uint64_t from = lost[i]->offset;
        std::uint64_t to = from;
        for (; i < lost.size() && lost[i]->offset == to; ++i) to += lost[i]->length;
        searchWithin(from, to);
    }
}

void ListedBlocks::searchWithin(std::uint64_t from, std::uint64_t to) {
    const BlockSum* found = nullptr;
    const auto isOne = [&](const char* head, std::uint64_t room) {
        const std::uint32_t length = wordAt(head + shape_.head - 4);
        if (length > room) return false;
        const auto row = missing_.find(wordAt(head));
        if (row == missing_.end() || row->second->length != length + shape_.around()) return false;
        found = row->second;
        return hasSum(to - room - shape_.around(), *found);
    };
    while (const auto place = headWhere(file_, shape_, {from, to, to}, isOne)) {
        misplaced_.push_back(frameAt(probe_, shape_, *place, to));
        elsewhere_.insert(*missing_.find(found->id));
        missing_.erase(found->id);
        from = *place + found->length;
    }
}

const BlockFrame* ListedBlocks::misplacedFrom(std::uint64_t from, std::uint64_t to) {
    if (!searched_) searchAll();
    const auto next = std::ranges::lower_bound(misplaced_, from, {}, &BlockFrame::offset);
    return next == misplaced_.end() || next->offset >= to ? nullptr : &*next;
}

bool ListedBlocks::takeMisplaced(const BlockFrame& frame) {
    if (rows_.empty()) return false;
    if (!searched_) searchAll();
    const auto row = missing_.find(frame.id);
    if (row == missing_.end() || frame.end - frame.offset != row->second->length) return false;
    if (!hasSum(frame.offset, *row->second)) return false;
    elsewhere_.insert(*row);
    missing_.erase(row);
    return true;
}

bool ListedBlocks::isElsewhere(const BlockSum& row) const {
    const auto found = elsewhere_.find(row.id);
    return found != elsewhere_.end() && found->second == &row;
}

std::optional<BlockFrame> ListedBlocks::reframed(const BlockSum& row, bool& proved) {
    constexpr std::uint32_t kWord = 4;
    const std::uint64_t end = std::uint64_t{row.offset} + row.length;
    const std::uint32_t length = row.length - shape_.around();
    const char* at = probe_.at(row.offset, shape_.head);
    if (!at) return std::nullopt;
    std::vector<char> head(at, at + shape_.head);
    const char* last = probe_.at(end - kWord, kWord);
    if (!last) return std::nullopt;
    char* const lengthAt = head.data() + shape_.head - kWord;
    const int damaged = (wordAt(head.data()) != row.id ? 1 : 0) +
                        (wordAt(lengthAt) != length ? 1 : 0) +
                        (wordAt(last) != kBlockTerminator ? 1 : 0);
    base::store(head.data(), row.id);
    base::store(lengthAt, length);
    char terminator[kWord];
    base::store(terminator, kBlockTerminator);
    const auto sum =
        sumAt(probe_, row.offset + head.size(), row.length - head.size() - kWord, sumOf(head));
    proved = sum && sumOf(terminator, *sum) == row.sum;
    if (damaged > 1 && !proved) return std::nullopt;
    BlockFrame frame{.offset = row.offset, .end = end, .id = row.id, .length = length};
    frame.hasHead = frame.fits = frame.terminated = true;
    frame.padded = frame.plausible = isPadded({head.data() + kWord, shape_.description});
    return frame;
}

}  // namespace toolbox
