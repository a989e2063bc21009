#include "header.h"

#include <algorithm>
#include <charconv>

#include "base/codec.h"
#include "toolbox/dates.h"

namespace tbfile {
namespace {

constexpr std::size_t kMask = 4;
constexpr std::size_t kDescription = 8;
constexpr std::size_t kDates = 136;
constexpr std::size_t kIndexOffset = 148;
constexpr std::size_t kFormat = 152;
constexpr std::size_t kEnd = 156;

constexpr std::int32_t kNoDay = -1;

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

}  // namespace

bool Header::has(HeaderFault fault) const {
    return std::ranges::find(faults, fault) != faults.end();
}

Header readHeader(Window& file) {
    Header header;
    std::array<char, blocks::kHeaderBytes> bytes{};
    const auto size = std::min<std::uint64_t>(file.size(), bytes.size());
    if (const char* found = file.at(0, static_cast<std::size_t>(size)))
        std::copy_n(found, size, bytes.begin());

    const char* at = bytes.data();
    header.version = wordAt(at);
    header.mask = wordAt(at + kMask);
    header.description = blocks::textIn(at + kDescription, blocks::kDescriptionBytes);
    for (std::size_t i = 0; i < header.dates.size(); ++i) {
        header.dates[i] = static_cast<std::int32_t>(wordAt(at + kDates + 4 * i));
        if (header.dates[i] != kNoDay && dayText(header.dates[i]).empty() &&
            !header.has(HeaderFault::date))
            header.faults.push_back(HeaderFault::date);
    }
    header.indexOffset = wordAt(at + kIndexOffset);
    const std::uint32_t format = wordAt(at + kFormat);
    const bool oldest = format == blocks::kTerminator;
    header.shape.format = oldest ? blocks::kOldestFormat : format;
    if (!isPadded({at + kDescription, blocks::kDescriptionBytes}))
        header.faults.push_back(HeaderFault::description);
    if (!oldest && (format <= blocks::kOldestFormat || format > blocks::kFormatWritten))
        header.faults.push_back(HeaderFault::format);
    if (size < (oldest ? blocks::kOldHeaderBytes : blocks::kHeaderBytes))
        header.faults.push_back(HeaderFault::tooShort);
    else if (!oldest && wordAt(at + kEnd) != blocks::kTerminator)
        header.faults.push_back(HeaderFault::terminator);
    return header;
}

std::array<char, blocks::kHeaderBytes> headerBytes(const Header& header) {
    using toolbox::base::store;
    std::array<char, blocks::kHeaderBytes> bytes{};
    store(bytes.data(), header.version);
    store(bytes.data() + kMask, header.mask);
    blocks::putText(bytes.data() + kDescription, header.description);
    for (std::size_t i = 0; i < header.dates.size(); ++i)
        store(bytes.data() + kDates + 4 * i, header.dates[i]);
    store(bytes.data() + kIndexOffset, header.indexOffset);
    store(bytes.data() + kFormat, blocks::kFormatWritten);
    store(bytes.data() + kEnd, blocks::kTerminator);
    return bytes;
}

std::string dayText(std::int32_t day) {
    const TarvDate date(static_cast<int>(day));
    if (!date.isValid()) return {};
    std::string year = std::to_string(date.getYear());
    year.insert(0, year.size() < 4 ? 4 - year.size() : 0, '0');
    return year + '-' + twoDigits(date.getMonth()) + '-' + twoDigits(date.getDay());
}

std::optional<std::int32_t> dayOf(std::string_view text) {
    constexpr int kLastYear = 5874898;
    const char* end = text.data() + text.size();
    int year = 0;
    int month = 0;
    int day = 0;
    const char* at = std::from_chars(text.data(), end, year).ptr;
    if (at != end) at = std::from_chars(at + 1, end, month).ptr;
    if (at != end) std::from_chars(at + 1, end, day);
    if (year < 1 || year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31)
        return std::nullopt;
    const auto number = static_cast<std::int32_t>(static_cast<long>(TarvDate(year, month, day)));
    // There is one text for each day.
    return dayText(number) == text ? std::optional(number) : std::nullopt;
}

}  // namespace tbfile
