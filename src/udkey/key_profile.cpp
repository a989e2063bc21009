#include "udkey/key_profile.h"

#include "toolbox/platform.h"

namespace toolbox::udkey {

namespace {

constexpr const char* kSection = "UDManager";

/// Beyond this a line's end is not looked at; description and format come first in it.
constexpr std::size_t kLongestRecord = 0x10000;

}  // namespace

RWCString KeyProfile::read(const RWCString& key) const {
    // An empty entry name would ask for the list of names.
    if (key.empty()) return {};
    for (std::size_t size = 512;; size *= 4) {
        std::string text(size, '\0');
        if (!platform::current().profiles->read(path_, kSection, key, "", text.data(),
                                                static_cast<int>(size))) {
            return {};
        }
        text.resize(text.find('\0'));
        if (text.size() < size - 1 || size > kLongestRecord) return text;
    }
}

bool KeyProfile::write(const std::vector<Line>& lines) const {
    if (!isReady()) return false;
    std::vector<platform::ProfileEntry> entries;
    entries.reserve(lines.size());
    for (const Line& line : lines) {
        if (line.key.empty()) return false;
        entries.push_back({line.key, line.record});
    }
    platform::ProfileStore& store = *platform::current().profiles;
    if (entries.empty()) return true;
    if (entries.size() == 1) {
        return store.write(path_, kSection, entries[0].entry, entries[0].value) == 0;
    }
    return store.writeMany(path_, kSection, entries) == 0;
}

}  // namespace toolbox::udkey
