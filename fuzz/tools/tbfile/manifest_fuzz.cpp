// A manifest of any bytes is refused with a Failure or taken. What is taken names files of its
// folder only, and written once more it is taken as it was.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "commands/manifest.h"
#include "require.h"
#include "terminal/failure.h"

using namespace tbfile;

namespace {

std::optional<Manifest> taken(const std::string& text) {
    try {
        return parseManifest(text, "manifest.json");
    } catch (const Failure&) {
        return std::nullopt;
    }
}

std::string written(const Manifest& manifest) {
    std::string text = manifestStart(manifest.header, manifest.index);
    for (const ManifestBlock& block : manifest.blocks)
        text += manifestBlock(block, &block == manifest.blocks.data());
    return text + manifestEnd();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::optional<Manifest> manifest = taken({reinterpret_cast<const char*>(bytes), size});
    if (!manifest) return 0;
    require(std::ranges::none_of(manifest->blocks, [](const ManifestBlock& block) {
        return block.file == ".." || block.file.find_first_of("/\\:") != std::string::npos;
    }));
    const std::string text = written(*manifest);
    const std::optional<Manifest> again = taken(text);
    require(again.has_value());
    require(again->blocks.size() == manifest->blocks.size());
    require(written(*again) == text);
    return 0;
}
