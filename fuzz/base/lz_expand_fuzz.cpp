// Any bytes expand to what their header announces or fail; nothing writes more, however the source
// is cut into reads.
#include <algorithm>
#include <vector>

#include "base/lz_expand.h"
#include "require.h"

namespace {

struct Expanded {
    std::int32_t result;
    std::vector<std::byte> bytes;
};

/// `data` as a compressed file that announces `size` bytes.
std::vector<std::byte> compressedFile(std::span<const std::byte> data, std::uint32_t size) {
    std::vector<std::byte> file;
    for (const int value : {0x53, 0x5A, 0x44, 0x44, 0x88, 0xF0, 0x27, 0x33, 0x41, 0})
        file.push_back(static_cast<std::byte>(value));
    for (int shift = 0; shift < 32; shift += 8)
        file.push_back(static_cast<std::byte>(size >> shift));
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

Expanded expand(std::span<const std::byte> file, std::size_t perRead) {
    Expanded expanded{};
    const auto source = [&](std::span<std::byte> room) {
        const std::size_t n = std::min({room.size(), perRead, file.size()});
        std::copy_n(file.begin(), n, room.begin());
        file = file.subspan(n);
        return static_cast<std::ptrdiff_t>(n);
    };
    const auto sink = [&](std::span<const std::byte> part) {
        expanded.bytes.insert(expanded.bytes.end(), part.begin(), part.end());
        return true;
    };
    expanded.result = toolbox::base::expandLz(source, sink);
    return expanded;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t length) {
    if (length < 2) return 0;
    const std::uint32_t size = bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8;
    const auto data = std::as_bytes(std::span(bytes + 2, length - 2));
    const auto file = compressedFile(data, size);

    const Expanded whole = expand(file, file.size());
    require(whole.bytes.size() <= size);
    if (whole.result >= 0)
        require(whole.result == static_cast<std::int32_t>(size) && whole.bytes.size() == size);
    else
        require(whole.result == toolbox::base::kLzRead);

    const Expanded plain = expand(data, data.size());
    if (!toolbox::base::lzHeader(data)) require(std::ranges::equal(plain.bytes, data));

    const Expanded pieces = expand(file, 14 + bytes[0] % 7);
    require(pieces.result == whole.result && pieces.bytes == whole.bytes);
    return 0;
}
