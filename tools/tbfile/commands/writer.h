// Makes a block file of format version 210 from blocks of other files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "commands/parts.h"
#include "system/files.h"

namespace tbfile {

/// Blocks go straight to the output; only the index is kept. Small ones leave together, and what
/// lies side by side in a file of the same format is copied in one piece.
class Writer {
  public:
    /// `expected` blocks or so.
    explicit Writer(OutputFile& output, std::size_t expected = 0);

    /// From now on sums are kept, and finish() writes a list of checksums.
    void keepSums() { keepsSums_ = true; }

    /// Copies a block. As it stands when it is laid out as it will be and its frame is not damaged
    /// (`asItStands`), otherwise with its frame made anew.
    void add(const InputFile& from, FileReader& window, const Shape& shape, const Frame& frame,
             bool asItStands);
    /// Adds a block whose data is all of a file.
    void add(std::uint32_t id, const Label& label, const InputFile& data);
    /// The list will not vouch for the block added last.
    void leaveSumOut();
    /// Adds the list of checksums, if there is to be one, and the index, and writes the header,
    /// whose lowest mask bit and index offset are set here.
    void finish(Header header, const Label& indexLabel);

    [[nodiscard]] std::size_t count() const { return entries_.size() - lists_; }
    /// Whether there is a block with this identifier.
    [[nodiscard]] bool has(std::uint32_t id) { return lookup_.find(entries_, id).has_value(); }
    /// Whether the block added last has an identifier that was there already.
    [[nodiscard]] bool repeated() const { return repeated_; }
    [[nodiscard]] std::uint64_t size() const { return position_; }

  private:
    void begin(std::uint32_t id, std::uint64_t bytes);
    void put(const void* bytes, std::size_t n);
    void putHead(std::uint32_t id, const std::string& description, std::uint32_t length);
    void putTail(std::uint32_t version, std::uint32_t recordVersion);
    void addSum(std::optional<std::uint32_t> sum, const InputFile& from);
    [[nodiscard]] std::uint64_t listBytes(std::size_t blocks) const;
    void putIndex(Header header, const Label& label);
    void putData(const InputFile& from, FileReader* window, std::uint64_t offset, std::uint64_t n);
    void sendRun();
    void sendGathered();

    OutputFile& output_;
    std::uint64_t position_ = Shape().start;
    bool wholeWords_ = true;
    bool repeated_ = false;
    std::vector<BlocItem> entries_;
    EntryFinder lookup_;
    bool keepsSums_ = false;
    std::size_t lists_ = 0;       ///< of checksums, among the entries
    std::vector<BlockSum> sums_;  ///< one for each entry
    std::string gathered_;
    const InputFile* runFrom_ = nullptr;
    std::uint64_t runStart_ = 0;
    std::uint64_t runBytes_ = 0;
};

/// The label of an index that is made for a file without one.
[[nodiscard]] Label usualIndexLabel();

}  // namespace tbfile
