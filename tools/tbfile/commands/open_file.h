// A block file as the commands read it: its bytes, its map and two readers.
#pragma once

#include "commands/parts.h"
#include "system/files.h"
#include "terminal/json.h"
#include "terminal/terminal.h"

namespace tbfile {

/// Readers see the first of several blocks with one identifier.
struct Entries {
    std::vector<BlocItem> firsts;
    std::vector<BlocItem> repeated;  ///< the others, in the order of the index
};

struct OpenFile {
    /// Reads the map. With Reads::everything every byte is read by the time that all of the windows
    /// is asked for.
    explicit OpenFile(const Path& path, FileReader::Reads reads = FileReader::Reads::whatIsAsked);

    /// The index, which must be there; otherwise Failure, which names the command that helps.
    [[nodiscard]] const Index& index() const;
    /// What the file's list of checksums says of the block that begins there; null when it has no
    /// list that belongs to it, or the list does not know the sum.
    [[nodiscard]] const BlockSum* sumOf(std::uint64_t offset) const;
    /// Whether an entry of the index is that of the list of checksums.
    [[nodiscard]] bool isList(const BlocItem& entry) const;
    /// The blocks that the index names, the list of checksums left aside.
    [[nodiscard]] std::size_t indexedBlocks() const;
    /// The whole block that an entry names, with the sum that is listed.
    [[nodiscard]] std::optional<Frame> blockOf(const BlocItem& entry);
    /// The same, otherwise Failure.
    [[nodiscard]] Frame block(const BlocItem& entry);
    /// The entries of the index but for the list of checksums, which each file makes for itself.
    [[nodiscard]] Entries entries() const;

    /// Shows the progress of what goes through the file.
    [[nodiscard]] Watch watch() {
        return [this](std::uint64_t done) { progress.update(done); };
    }

    InputFile file;
    Progress progress;
    TarvFileWalk walk;
    const BlockFileMap& map;
    FileReader window;
    FileReader probe;

  private:
    std::vector<BlockSum> sums_;  ///< by their places
};

/// Says which blocks a copy does not have because an earlier one has their identifier; returns that
/// for JSON.
Json tellLeftOut(const std::vector<BlocItem>& repeated, bool json);

}  // namespace tbfile
