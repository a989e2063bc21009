// Any bytes expand to what their header announces or fail; nothing writes more, however the source
// is cut into reads.
#include <algorithm>
#include <utility>
#include <vector>

#include "base/lz_expand.h"
#include "require.h"

namespace {

using Bytes = std::vector<std::byte>;

/// `data` as a compressed file that announces `size` bytes.
Bytes compressedFile(std::span<const std::byte> data, std::uint32_t size) {
    Bytes file;
    for (const int value : {0x53, 0x5A, 0x44, 0x44, 0x88, 0xF0, 0x27, 0x33, 0x41, 0})
        file.push_back(static_cast<std::byte>(value));
    for (int shift = 0; shift < 32; shift += 8)
        file.push_back(static_cast<std::byte>(size >> shift));
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

/// The result and what was written before it.
std::pair<std::int32_t, Bytes> expand(std::span<const std::byte> file, std::size_t perRead) {
    Bytes expanded;
    const auto source = [&](std::span<std::byte> room) {
        const std::size_t n = std::min({room.size(), perRead, file.size()});
        std::copy_n(file.begin(), n, room.begin());
        file = file.subspan(n);
        return static_cast<std::ptrdiff_t>(n);
    };
    const auto sink = [&](std::span<const std::byte> part) {
        expanded.insert(expanded.end(), part.begin(), part.end());
        return true;
    };
    return {toolbox::base::expandLz(source, sink), expanded};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t length) {
    if (length < 2) return 0;
    const std::uint32_t size = bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8;
    const auto data = std::as_bytes(std::span(bytes + 2, length - 2));
    const auto file = compressedFile(data, size);

    const auto [result, written] = expand(file, file.size());
    require(written.size() <= size);
    if (result >= 0)
        require(result == static_cast<std::int32_t>(size) && written.size() == size);
    else
        require(result == toolbox::base::kLzRead);
    require(expand(file, 14 + bytes[0] % 7) == std::pair(result, written));

    const auto plain = expand(data, data.size());
    if (!toolbox::base::lzHeader(data)) require(std::ranges::equal(plain.second, data));
    return 0;
}
