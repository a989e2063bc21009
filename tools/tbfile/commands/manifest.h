// What a folder of extracted blocks says of them: manifest.json.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "commands/days.h"
#include "commands/parts.h"
#include "terminal/json.h"

namespace tbfile {

inline constexpr const char* kManifestName = "manifest.json";

struct ManifestBlock {
    std::uint32_t id = 0;
    Label label;
    std::string file;  ///< its data, a name in the folder
};

struct Manifest {
    Header header;
    Label index;
    bool checksums = false;  ///< the file has a list of checksums
    std::vector<ManifestBlock> blocks;
};

/// The lines of a manifest: what comes before the blocks, one block, what comes after them.
[[nodiscard]] std::string manifestStart(const Header& header, const Label& index, bool checksums);
[[nodiscard]] std::string manifestBlock(const ManifestBlock& block, bool first);
[[nodiscard]] std::string manifestEnd();

/// Throws Failure, which names `file`, for what is no manifest, and for files outside the folder.
[[nodiscard]] Manifest parseManifest(const std::string& text, const std::string& file);

}  // namespace tbfile
