#include <string>

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
