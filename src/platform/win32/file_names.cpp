// Names of files through the system's functions for characters of 16 bits.
#include "platform/win32/file_names.h"

#include <algorithm>

namespace toolbox::platform {

const char* nameOf(const char* name) {
    return name ? name : "";
}

std::wstring wideOf(const char* name) {
    const int size = ::MultiByteToWideChar(CP_ACP, 0, nameOf(name), -1, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(std::max(size, 1)), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, nameOf(name), -1, wide.data(), size);
    wide.pop_back();
    return wide;
}

std::string bytesOf(const std::wstring& wide, UINT codePage) {
    const auto length = static_cast<int>(wide.size());
    const int size =
        ::WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(codePage, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring wideFullName(const char* name) {
    const std::wstring given = wideOf(name);
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()),
                                                full.data(), nullptr);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) return full;
    }
}

std::string fullPath(const char* name) {
    const std::wstring full = wideFullName(name);
    return full.empty() ? nameOf(name) : bytesOf(full);
}

std::optional<std::array<DWORD, 3>> identityOf(const char* name) {
    const HANDLE file =
        ::CreateFileA(nameOf(name), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    BY_HANDLE_FILE_INFORMATION facts{};
    const BOOL known = ::GetFileInformationByHandle(file, &facts);
    ::CloseHandle(file);
    if (!known) return {};
    return std::array{facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow};
}

std::string withoutPrefix(const std::string& name) {
    constexpr std::string_view kShare = R"(\\?\UNC\)";
    constexpr std::string_view kPrefix = R"(\\?\)";
    if (name.starts_with(kShare)) return "\\\\" + name.substr(kShare.size());
    return name.starts_with(kPrefix) ? name.substr(kPrefix.size()) : name;
}

}  // namespace toolbox::platform
