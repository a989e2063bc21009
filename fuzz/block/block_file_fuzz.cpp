// A file of any bytes opens exactly when a plain reading of its bytes finds a header and an index;
// it then names the blocks of that index in their order, and each is fetched exactly when it stands
// whole in the file, with the description, versions and data that stand there.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "block/block_kit.h"
#include "require.h"
#include "support/prompt_log.h"

namespace {

using block_kit::Block;
using block_kit::wordAt;

constexpr std::uint32_t kIndexId = 0xFFFFFFEF;
constexpr std::uint32_t kEnd = 0xFFFFFFFF;

/// A field's text: up to its first NUL.
std::string textIn(std::string_view field) {
    return std::string(field.substr(0, field.find('\0')));
}

/// The bytes of a block file, read plainly.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {
        if (bytes.size() >= 156 && wordAt(bytes, 152) == kEnd)
            format_ = 100;
        else if (bytes.size() >= 160 && wordAt(bytes, 156) == kEnd)
            format_ = wordAt(bytes, 152);
        else
            return;
        auto index = blockAt(wordAt(bytes, 148), kIndexId);
        if (!index) index = found(kIndexId);
        if (!index) return;
        opens_ = true;
        for (std::size_t at = 0; at + 8 <= index->data.size(); at += 8)
            entries_.push_back({wordAt(index->data, at), wordAt(index->data, at + 4)});
    }

    [[nodiscard]] bool opens() const { return opens_; }
    [[nodiscard]] const std::vector<BlocItem>& entries() const { return entries_; }

    [[nodiscard]] std::uint32_t offsetOf(std::uint32_t id) const {
        const auto entry = std::ranges::find(entries_, id, &BlocItem::id);
        return entry == entries_.end() ? 0 : entry->offset;
    }

    [[nodiscard]] std::optional<Block> block(std::uint32_t id) const {
        const auto block = blockAt(offsetOf(id), id);
        const bool mayBeElsewhere = (wordAt(bytes_, 4) & 1) != 0;
        return block || !mayBeElsewhere ? block : found(id);
    }

  private:
    /// The whole block at a place. Of its terminator one byte has to be there, with any value.
    [[nodiscard]] std::optional<Block> blockAt(std::size_t at, std::uint32_t id) const {
        const std::size_t description = format_ >= 210 ? 128 : 64;
        const std::size_t versions = format_ >= 210 ? 8 : format_ >= 200 ? 4 : 0;
        const std::size_t head = 4 + description + 4;
        if (at + head > bytes_.size() || wordAt(bytes_, at) != id) return {};
        const std::size_t length = wordAt(bytes_, at + head - 4);
        if (at + head + length + versions >= bytes_.size()) return {};
        const std::size_t behind = at + head + length;
        return Block{id, std::string(bytes_.substr(at + head, length)),
                     textIn(bytes_.substr(at + 4, description)),
                     versions >= 4 ? wordAt(bytes_, behind) : 0,
                     versions >= 8 ? wordAt(bytes_, behind + 4) : 0};
    }

    /// The block at the first terminator that its identifier follows, both whole words of the file.
    [[nodiscard]] std::optional<Block> found(std::uint32_t id) const {
        for (std::size_t at = 0; at + 8 <= bytes_.size(); at += 4)
            if (wordAt(bytes_, at) == kEnd && wordAt(bytes_, at + 4) == id)
                return blockAt(at + 4, id);
        return {};
    }

    std::string_view bytes_;
    std::uint32_t format_ = 0;
    bool opens_ = false;
    std::vector<BlocItem> entries_;
};

void checkIndex(TarvFileRead& file, const Bytes& bytes) {
    TarvFileIndex& index = *file.getIndex();
    require(index.getNbrItem() == bytes.entries().size());
    unsigned long id = 0;
    int more = index.getFirstID(id);
    for (const BlocItem& entry : bytes.entries()) {
        require(more == 1 && id == entry.id);
        require(index.getOffset(id) == bytes.offsetOf(entry.id));
        more = index.getNextID(id);
    }
    require(more == 0);
}

void checkBlock(TarvFileRead& file, const Bytes& bytes, std::uint32_t id) {
    const Block before{77, "kept", "as it was"};
    TarvBlocFile out = block_kit::made(before);
    const std::optional<Block> block = bytes.block(id);
    require(file.getBloc(id, out) == (block ? 1 : 0));
    require(block_kit::seen(out) == block.value_or(before));
}

/// A file in memory that is given new bytes for each run.
const char* fileOf(const std::uint8_t* data, std::size_t size) {
    static const int memory = memfd_create("block file", 0);
    static const std::string name = "/proc/self/fd/" + std::to_string(memory);
    require(ftruncate(memory, 0) == 0);
    require(pwrite(memory, data, size, 0) == static_cast<ssize_t>(size));
    return name.c_str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PromptLog told;
    const Bytes bytes({reinterpret_cast<const char*>(data), size});
    TarvFileRead file;
    require(file.open(fileOf(data, size)) == (bytes.opens() ? 1 : 0));
    if (!bytes.opens()) return 0;
    // Blocks are fetched with the entries still in the index's data, and again once they are
    // unpacked.
    for (int again = 0; again < 2; ++again) {
        for (const BlocItem& entry : bytes.entries()) checkBlock(file, bytes, entry.id);
        for (const std::uint32_t id : {0u, 1u, kIndexId, kEnd}) checkBlock(file, bytes, id);
        checkIndex(file, bytes);
    }
    require(told.shown.empty());
    return 0;
}
