// The registry where the system has none: a text file of the user.
#include <cstring>

#include "platform/host.h"
#include "platform/posix/document_cache.h"
#include "platform/posix/registry_text.h"

namespace toolbox::platform {
namespace {

using namespace posix;

constexpr std::size_t kMostKeyName = 255;
constexpr std::size_t kMostValueName = 16383;

std::string filePath() {
    return configFolder() + "registry.reg";
}

bool hasLineBreak(std::string_view name) {
    return name.find_first_of("\r\n") != std::string_view::npos;
}

/// The whole path with its root's name and without doubled or final separators.
ErrorCode keyPath(HKEY root, const char* key, std::string& path) {
    if (root != HKEY_CURRENT_USER && root != HKEY_LOCAL_MACHINE) return ERROR_INVALID_HANDLE;
    path = root == HKEY_CURRENT_USER ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE";
    std::string_view rest = key ? key : "";
    if (rest.starts_with('\\')) return ERROR_BAD_PATHNAME;
    if (hasLineBreak(rest)) return ERROR_INVALID_PARAMETER;
    while (!rest.empty()) {
        const std::string_view part = rest.substr(0, rest.find('\\'));
        if (part.size() > kMostKeyName) return ERROR_INVALID_PARAMETER;
        if (!part.empty()) path.append("\\").append(part);
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    }
    return ERROR_SUCCESS;
}

class PosixRegistry final : public RegistryStore {
  public:
    ErrorCode write(HKEY root, const char* key, const char* name, std::uint32_t type,
                    const void* data, std::uint32_t size) override {
        std::string path;
        if (const ErrorCode error = keyPath(root, key, path); error != ERROR_SUCCESS) return error;
        const std::string_view valueName = name ? name : "";
        if (hasLineBreak(valueName) || valueName.size() > kMostValueName || (!data && size > 0))
            return ERROR_INVALID_PARAMETER;
        const RegistryValue value{type, std::string(static_cast<const char*>(data), size)};
        const std::string file = filePath();
        createFoldersOf(file);
        return file_.save(file, true,
                          [&](RegistryText& text) { return text.set(path, valueName, value); });
    }

    ErrorCode read(HKEY root, const char* key, const char* name, std::uint32_t& type, void* data,
                   std::uint32_t& size) override {
        const std::uint32_t room = size;
        type = size = 0;
        std::string path;
        if (const ErrorCode error = keyPath(root, key, path); error != ERROR_SUCCESS) return error;
        ErrorCode unreadable = ERROR_SUCCESS;  // a file that cannot be read holds no values
        const auto value = file_.load(filePath(), unreadable).value(path, name ? name : "");
        if (!value) return ERROR_FILE_NOT_FOUND;
        type = value->type;
        size = static_cast<std::uint32_t>(value->data.size());
        if (!data) return ERROR_SUCCESS;
        if (room < size) return ERROR_MORE_DATA;
        if (size > 0) std::memcpy(data, value->data.data(), size);
        return ERROR_SUCCESS;
    }

  private:
    DocumentCache<RegistryText> file_;
};

}  // namespace

RegistryStore& hostRegistry() {
    static PosixRegistry registry;
    return registry;
}

}  // namespace toolbox::platform
