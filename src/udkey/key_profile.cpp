// One line for each key, in one section. All of it is read at once, and written at once.
#include "udkey/key_profile.h"

#include "platform/profile_names.h"
#include "toolbox/platform.h"

namespace toolbox::udkey {

namespace {

constexpr const char* kSection = "UDManager";

}  // namespace

bool KeyProfile::isSavable(const KeyEntry& key) {
    return key.key().find('\0') == std::string_view::npos &&
           platform::isProfileEntry(std::string(key.key()).c_str());
}

std::vector<std::optional<std::string>> KeyProfile::read(const std::deque<KeyEntry>& keys) const {
    std::vector<std::string> names;
    names.reserve(keys.size());
    for (const KeyEntry& key : keys) names.emplace_back(isSavable(key) ? key.key() : "");
    std::vector<const char*> entries;
    entries.reserve(names.size());
    for (const std::string& name : names) entries.push_back(name.c_str());
    return platform::current().profiles->readMany(path_, kSection, entries);
}

bool KeyProfile::write(const std::vector<Line>& lines) const {
    if (!isReady()) return false;
    platform::ProfileStore& store = *platform::current().profiles;
    if (lines.empty()) return true;
    if (lines.size() == 1)
        return store.write(path_, kSection, lines[0].key, lines[0].record) == ERROR_SUCCESS;
    std::vector<platform::ProfileEntry> entries;
    entries.reserve(lines.size());
    for (const Line& line : lines) entries.push_back({line.key, line.record});
    return store.writeMany(path_, kSection, entries) == ERROR_SUCCESS;
}

}  // namespace toolbox::udkey
