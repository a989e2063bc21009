// A block file as the commands read it: its bytes, its map and two windows.
#pragma once

#include "files.h"
#include "map.h"
#include "terminal.h"

namespace tbfile {

struct OpenFile {
    /// Reads the map. With Reads::everything every byte is read by the time that all of the windows
    /// is asked for.
    explicit OpenFile(const Path& path, Window::Reads reads = Window::Reads::whatIsAsked);

    /// The index, which must be there; otherwise Failure, which names the command that helps.
    [[nodiscard]] const Index& index() const;
    /// The whole block that an entry names; otherwise Failure.
    [[nodiscard]] Frame block(const BlocItem& entry);
    /// The entries that count: of several with one identifier the first.
    [[nodiscard]] std::vector<BlocItem> entries() const;

    /// Shows the progress of what goes through the file.
    [[nodiscard]] Watch watch() {
        return [this](std::uint64_t done) { progress.update(done); };
    }

    InputFile file;
    Progress progress;
    Window window;
    Window probe;
    Map map;
};

}  // namespace tbfile
