// Profile files through the system, which does the reading and writing.
#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/host.h"
#include "platform/profile_names.h"

namespace toolbox::platform {
namespace {

bool isNamed(const char* file) {
    return file && *file;
}

/// The call does not tell a missing entry from an empty one, nor from one that equals the default.
bool hasEntry(const char* file, const char* section, const char* entry) {
    char text[2];
    if (GetPrivateProfileStringA(section, entry, "", text, sizeof text, file) > 0) return true;
    return GetPrivateProfileStringA(section, entry, "x", text, sizeof text, file) == 0;
}

/// The lines of a section, each with a terminator; comments are left out.
std::string linesOf(const char* file, const char* section) {
    constexpr std::size_t kMost = std::size_t{1} << 26;
    // Reading one entry does not mind blanks around the section's name, this call does.
    const std::string name(base::trimmed(section, kProfileBlanks));
    std::string lines(32 * 1024, '\0');
    for (;;) {
        const auto room = static_cast<DWORD>(lines.size());
        const DWORD length = GetPrivateProfileSectionA(name.c_str(), lines.data(), room, file);
        if (length + 2 < room || lines.size() >= kMost) {
            lines.resize(length);
            return lines;
        }
        lines.assign(lines.size() * 4, '\0');  // it was cut
    }
}

class WindowsProfiles final : public ProfileStore {
  public:
    bool read(const char* file, const char* section, const char* entry, const char* fallback,
              char* out, int size) override {
        if (!isNamed(file) || !isProfileSection(section) || !isProfileEntry(entry)) {
            copyCut(shownDefault(fallback), out, size);
            return false;
        }
        const bool found = hasEntry(file, section, entry);
        const DWORD room = size > 0 ? static_cast<DWORD>(size) : 0;
        if (room > 0) out[0] = '\0';
        GetPrivateProfileStringA(section, entry, fallback, out, room, file);
        return found;
    }

    std::vector<std::optional<std::string>> readMany(
        const char* file, const char* section, std::span<const char* const> entries) override {
        std::vector<std::optional<std::string>> values(entries.size());
        if (!isNamed(file) || !isProfileSection(section)) return values;
        const std::string lines = linesOf(file, section);
        std::unordered_map<std::string, std::optional<std::string>> byName;
        for (std::string_view rest = lines; !rest.empty();) {
            const std::string_view line = rest.substr(0, rest.find('\0'));
            rest.remove_prefix(std::min(rest.size(), line.size() + 1));
            const std::size_t equals = line.find('=');
            // A line without "=" is no entry, but hides one of its name after it.
            std::optional<std::string> value;
            if (equals != std::string_view::npos) value = shownValue(line.substr(equals + 1));
            byName.try_emplace(foldedName(line.substr(0, equals)), std::move(value));
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!isProfileEntry(entries[i])) continue;
            const auto found = byName.find(foldedName(entries[i]));
            if (found != byName.end()) values[i] = found->second;
        }
        return values;
    }

    ErrorCode write(const char* file, const char* section, const char* entry,
                    const char* value) override {
        if (!isNamed(file) || !isProfileSection(section) || !isProfileEntry(entry))
            return ERROR_INVALID_PARAMETER;
        const std::string line(profileLine(value ? value : ""));
        if (WritePrivateProfileStringA(section, entry, value ? line.c_str() : nullptr, file))
            return ERROR_SUCCESS;
        const DWORD error = GetLastError();
        return error != ERROR_SUCCESS ? error : ERROR_WRITE_FAULT;
    }

    ErrorCode writeMany(const char* file, const char* section,
                        std::span<const ProfileEntry> entries) override {
        for (const ProfileEntry& entry : entries)
            if (!isProfileEntry(entry.entry)) return ERROR_INVALID_PARAMETER;
        for (const ProfileEntry& entry : entries) {
            const ErrorCode error = write(file, section, entry.entry, entry.value);
            if (error != ERROR_SUCCESS) return error;
        }
        return ERROR_SUCCESS;
    }
};

}  // namespace

ProfileStore& hostProfiles() {
    static WindowsProfiles profiles;
    return profiles;
}

}  // namespace toolbox::platform
