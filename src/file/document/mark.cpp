// One file is opened, and read at two places.
#include "file/document/mark.h"

#include <algorithm>
#include <vector>

#include "file/block/checksums.h"
#include "file/block/fetch.h"
#include "file/block/parts.h"
#include "file/file_system.h"
#include "file/replacement.h"

namespace toolbox::document {
namespace {

using platform::ErrorCode;

constexpr std::uint32_t kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
/// No more of a file's end is read for a look; the list of 170,000 blocks fits.
constexpr std::uint32_t kMostOfEnd = 4 * 1024 * 1024;

/// Fowler, Noll and Vo's sum. No cyclic one will do: the list of checksums ends with its own, and
/// with that in it every list of its length would have the same.
std::uint64_t sumAt(APIFile& file, std::uint64_t offset, std::uint32_t n) {
    constexpr std::uint64_t kBasis = 0xCBF29CE484222325;
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::vector<char> bytes(n);
    bytes.resize(blocks::readAt(file, offset, bytes.data(), n));
    std::uint64_t sum = kBasis;
    for (const char each : bytes) sum = (sum ^ static_cast<unsigned char>(each)) * kPrime;
    return sum;
}

/// When the file was written, as its folder says; 0 when it does not.
std::int64_t timeOf(const std::string& name) {
    const std::string own = name.substr(name.find_last_of("/\\") + 1);
    for (const platform::FoundFile& found : files().find(name.c_str()))
        if (found.name.size() == own.size()) return found.written;
    return 0;
}

}  // namespace

bool Mark::isSame(const Mark& now) const {
    if (isThere != now.isThere || size != now.size || header != now.header || end != now.end)
        return false;
    return isProved || written == now.written;
}

Mark markOf(APIFile& file, const Mark& like) {
    Mark mark = like;
    mark.isThere = true;
    mark.size = blocks::sizeOf(file);
    mark.header = sumAt(file, 0, blocks::kHeaderBytes);
    const auto n = static_cast<std::uint32_t>(std::min<std::uint64_t>(mark.size, mark.endBytes));
    mark.end = sumAt(file, mark.size - n, n);
    return mark;
}

ErrorCode look(const std::string& name, const Mark& like, Mark& now) {
    constexpr std::chrono::milliseconds kPause{2};
    const HeldFileErrors held;
    now = like;
    now.isThere = false;
    now.size = 0;
    return patiently(kPause, [&] {
        APIFile file(name.c_str(), GENERIC_READ, kShareAll, OPEN_EXISTING);
        const auto error = static_cast<ErrorCode>(file.Error());
        if (error == ERROR_FILE_NOT_FOUND) {
            now.header = now.end = 0;
            return ErrorCode{ERROR_SUCCESS};
        }
        if (error != ERROR_SUCCESS) return error;
        now = markOf(file, like);
        now.written = timeOf(name);
        return ErrorCode{ERROR_SUCCESS};
    });
}

Mark extentOf(TarvFileRead& file) {
    const HeldFileErrors held;
    Mark mark;
    const TarvFileIndex* const index = BlockFileParts::index(file);
    APIFile* const bytes = BlockFileParts::file(file);
    if (!index || !bytes || file.getChecksumState() != TarvFileRead::ChecksumsCurrent) return mark;
    const std::uint64_t size = blocks::sizeOf(*bytes);
    const auto row = BlockFileParts::find(*index, blocks::kChecksumsId);
    if (!row) return mark;
    const std::uint64_t list = BlockFileParts::entries(*index)[*row].offset;
    const std::uint64_t wanted = list < size ? size - list : size;
    mark.isProved = wanted <= kMostOfEnd;
    mark.endBytes = static_cast<std::uint32_t>(std::min<std::uint64_t>(wanted, kMostOfEnd));
    return mark;
}

}  // namespace toolbox::document
