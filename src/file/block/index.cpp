// The master index. One that was read stays packed in its record until somebody could change it:
// a file of a million blocks opens without a copy of its entries.
#include <algorithm>
#include <cstddef>
#include <limits>

#include "file/block/layout.h"
#include "file/block/lookup.h"
#include "file/block/parts.h"
#include "toolbox/block_files.h"

using toolbox::BlockFileParts;
using toolbox::BlockLookup;
namespace blocks = toolbox::blocks;

// Entries go to and from the disk as they stand in memory.
static_assert(sizeof(BlocItem) == blocks::kEntryBytes && offsetof(BlocItem, offset) == 4);

namespace {
constexpr std::size_t kUsualEntries = 64;
}

TarvFileIndex::TarvFileIndex() : lookup_(std::make_unique<BlockLookup>()) {
    items_.reserve(kUsualEntries);
}

TarvFileIndex::TarvFileIndex(const TarvFileIndex& other)
    : TarvBlocFile(other),
      current_(other.current_),
      items_(BlockFileParts::entries(other).begin(), BlockFileParts::entries(other).end()),
      nbrItem_(other.nbrItem_),
      lookup_(std::make_unique<BlockLookup>(*other.lookup_)) {}

TarvFileIndex& TarvFileIndex::operator=(const TarvFileIndex& other) {
    if (this == &other) return *this;
    TarvBlocFile::operator=(other);
    current_ = other.current_;
    const auto entries = BlockFileParts::entries(other);
    items_.assign(entries.begin(), entries.end());
    packed_ = false;
    nbrItem_ = other.nbrItem_;
    *lookup_ = *other.lookup_;
    return *this;
}

TarvFileIndex::~TarvFileIndex() = default;

int TarvFileIndex::read(unsigned long id, TarvFile& file, unsigned long offset, int search) {
    const int result = TarvBlocFile::read(id, file, offset, search);
    if (result == 1) {
        takePacked(std::numeric_limits<std::uint64_t>::max());
        unpack();
    }
    return result;
}

/// Uses the record's data as the entries, in place, until somebody could change it.
void TarvFileIndex::takePacked(std::uint64_t fileSize) {
    const std::size_t count = getLen() / blocks::kEntryBytes;
    packed_ = true;
    items_.clear();
    nbrItem_ = static_cast<std::uint32_t>(count);
    // More entries than the file has room for blocks do not deserve the memory of a table.
    lookup_->clear(count > fileSize / blocks::kSmallestBlock);
}

void TarvFileIndex::unpack() {
    if (!packed_) return;
    const auto entries = BlockFileParts::entries(*this);
    items_.assign(entries.begin(), entries.end());
    packed_ = false;
}

std::span<const BlocItem> BlockFileParts::entries(const TarvFileIndex& index) {
    if (!index.packed_) return index.items_;
    // Buffers of records are aligned for words.
    const auto* first = reinterpret_cast<const BlocItem*>(index.getPData());
    return {first, index.getLen() / blocks::kEntryBytes};
}

void BlockFileParts::place(TarvFileIndex& index, std::uint32_t id, std::uint32_t offset) {
    unpack(index);
    if (const auto found = find(index, id))
        index.items_[*found].offset = offset;
    else
        index.addBloc(id, offset);
}

int TarvFileIndex::write(TarvFile& file) {
    if (!setData()) return 0;
    return static_cast<const TarvFileIndex&>(*this).TarvBlocFile::write(file);
}

int TarvFileIndex::setData() {
    if (items_.empty()) return 1;
    const std::size_t bytes = items_.size() * blocks::kEntryBytes;
    return VarRecord::setData(static_cast<unsigned long>(bytes), items_.data());
}

int TarvFileIndex::getFirstID(unsigned long& id) {
    if (items_.empty()) return 0;
    current_ = 0;
    id = items_.front().id;
    return 1;
}

int TarvFileIndex::getNextID(unsigned long& id) {
    if (static_cast<std::size_t>(current_) + 1 >= items_.size()) return 0;
    id = items_[static_cast<std::size_t>(++current_)].id;
    return 1;
}

int TarvFileIndex::getPrevID(unsigned long& id) {
    if (items_.empty() || current_ < 1) return 0;
    // The entries may have become fewer since the cursor was set.
    current_ = std::min(current_, static_cast<std::int32_t>(items_.size())) - 1;
    id = items_[static_cast<std::size_t>(current_)].id;
    return 1;
}

int TarvFileIndex::getLastID(unsigned long& id) {
    if (items_.empty()) return 0;
    current_ = static_cast<std::int32_t>(items_.size()) - 1;
    id = items_.back().id;
    return 1;
}

int TarvFileIndex::addBloc(unsigned long id, unsigned long offset) {
    const auto key = static_cast<std::uint32_t>(id);
    if (offset > 0xFFFFFFFFul || !lookup_->add(items_, key)) return 0;
    items_.push_back({key, static_cast<std::uint32_t>(offset)});
    return 1;
}

unsigned long TarvFileIndex::getOffset(unsigned long id) const {
    const auto place = lookup_->find(items_, static_cast<std::uint32_t>(id));
    return place ? items_[*place].offset : 0;
}

int TarvFileIndex::flushIndex() {
    items_.clear();
    nbrItem_ = 0;
    lookup_->clear();
    return 1;
}

unsigned long TarvFileIndex::getNbrItem() const {
    return nbrItem_;
}

void TarvFileIndex::setNbrItem(unsigned long count) {
    nbrItem_ = static_cast<std::uint32_t>(count);
}

unsigned long TarvFileIndex::getBlocLen() {
    return TarvBlocFile::getBlocLen() - getLen() +
           nbrItem_ * static_cast<unsigned long>(blocks::kEntryBytes);
}
