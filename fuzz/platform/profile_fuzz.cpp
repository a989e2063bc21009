// What is written into a profile of any bytes reads back, and nothing else of it changes.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "platform/posix/profile_text.h"
#include "platform/profile_names.h"
#include "require.h"

namespace {

using namespace toolbox::platform;
using posix::ProfileText;

/// A text up to the next 0xFF of the input.
std::string takeText(std::string_view& input) {
    const std::string text(input.substr(0, input.find('\xFF')));
    input.remove_prefix(std::min(input.size(), text.size() + 1));
    return text.substr(0, text.find('\0'));
}

/// The pieces of `after` are those of `before` in their order: bytes were only put in or, up to one
/// line, taken away.
bool keepsTheRest(const std::string& before, const std::string& after) {
    const auto [front, ignored] = std::ranges::mismatch(before, after);
    const auto kept = static_cast<std::size_t>(front - before.begin());
    std::size_t end = 0;
    while (end < before.size() - kept && end < after.size() - kept &&
           before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    const std::string_view gone = std::string_view(before).substr(kept, before.size() - kept - end);
    const std::size_t lineEnd = gone.find_first_of("\r\n");
    return lineEnd == std::string_view::npos ||
           gone.find_first_not_of("\r\n", lineEnd) == std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string section = takeText(input);
    const std::string entry = takeText(input);
    const std::string value(profileLine(takeText(input)));
    ProfileText text(input);
    const bool wide = input.starts_with("\xFE\xFF") || input.starts_with("\xFF\xFE");
    require(wide || text.bytes() == input);  // half a character at the end is dropped
    if (!isProfileSection(section.c_str()) || !isProfileEntry(entry.c_str())) return 0;

    const std::string before = text.bytes();
    const auto probe = text.value("s", "k");
    text.set(section, entry, value);
    const std::string after = text.bytes();
    if (!wide) require(keepsTheRest(before, after));

    // The same from the object and from what it would leave on the disk.
    const ProfileText again(after);
    for (const ProfileText* read : {&std::as_const(text), &again}) {
        const auto found = read->value(section, entry);
        require(found && *found == posix::unquoted(value));
    }
    if (text.value("s", "k") != probe) require(text.value("s", "k") == text.value(section, entry));

    require(!text.set(section, entry, value));
    while (text.erase(section, entry)) continue;
    require(!text.value(section, entry));
    require(!ProfileText(text.bytes()).value(section, entry));
    return 0;
}
