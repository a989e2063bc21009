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
    /// The whole block that an entry names.
    [[nodiscard]] std::optional<Frame> blockOf(const BlocItem& entry);
    /// The same, otherwise Failure.
    [[nodiscard]] Frame block(const BlocItem& entry);
    /// The entries of the index.
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
};

/// Says which blocks a copy does not have because an earlier one has their identifier; returns that
/// for JSON.
Json tellLeftOut(const std::vector<BlocItem>& repeated, bool json);

}  // namespace tbfile
