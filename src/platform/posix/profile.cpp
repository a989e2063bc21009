// Profile files, with the answers of the Windows calls.
#include <algorithm>
#include <optional>

#include "platform/host.h"
#include "platform/posix/document_cache.h"
#include "platform/posix/profile_text.h"
#include "platform/profile_names.h"

namespace toolbox::platform {
namespace {

using namespace posix;

class PosixProfiles final : public ProfileStore {
  public:
    bool read(const char* file, const char* section, const char* entry, const char* fallback,
              char* out, int size) override {
        std::optional<std::string> value;
        if (file && *file && isProfileSection(section) && isProfileEntry(entry)) {
            ErrorCode error = ERROR_SUCCESS;
            value = files_.load(pathOf(file), error).value(section, entry);
        }
        copyCut(value ? std::string_view(*value) : shownDefault(fallback), out, size);
        return value.has_value();
    }

    std::vector<std::optional<std::string>> readMany(
        const char* file, const char* section, std::span<const char* const> entries) override {
        std::vector<std::optional<std::string>> values(entries.size());
        if (!file || !*file || !isProfileSection(section)) return values;
        ErrorCode error = ERROR_SUCCESS;
        const ProfileText& text = files_.load(pathOf(file), error);
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (isProfileEntry(entries[i])) values[i] = text.value(section, entries[i]);
        return values;
    }

    ErrorCode write(const char* file, const char* section, const char* entry,
                    const char* value) override {
        const ProfileEntry one{entry, value};
        return writeMany(file, section, {&one, 1});
    }

    ErrorCode writeMany(const char* file, const char* section,
                        std::span<const ProfileEntry> entries) override;

  private:
    static std::string pathOf(const char* file) {
        std::string path = hostPath(file);
        return folderOf(path).empty() ? configFolder() + path : path;
    }

    DocumentCache<ProfileText> files_;
};

ErrorCode PosixProfiles::writeMany(const char* file, const char* section,
                                   std::span<const ProfileEntry> entries) {
    if (!file || !*file || !isProfileSection(section)) return ERROR_INVALID_PARAMETER;
    for (const ProfileEntry& entry : entries)
        if (!isProfileEntry(entry.entry)) return ERROR_INVALID_PARAMETER;
    const bool stores = std::ranges::any_of(entries, [](const auto& e) { return e.value; });
    const std::string path = pathOf(file);
    if (stores && path.starts_with(configFolder())) createFoldersOf(path);
    const ErrorCode error = files_.save(path, stores, [&](ProfileText& text) {
        bool changed = false;
        for (const ProfileEntry& entry : entries) {
            const bool done = entry.value ? text.set(section, entry.entry, profileLine(entry.value))
                                          : text.erase(section, entry.entry);
            changed = changed || done;
        }
        return changed;
    });
    // What is not there need not be removed.
    return !stores && error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
}

}  // namespace

ProfileStore& hostProfiles() {
    static PosixProfiles profiles;
    return profiles;
}

}  // namespace toolbox::platform
