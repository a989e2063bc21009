// Facts from the system.
#include <array>
#include <ctime>
#include <cwchar>

#include "platform/host.h"
#include "platform/win32/file_names.h"
#include "toolbox/win_types.h"
// clang-format off
#include <shlobj.h>  // stands on the types above
// clang-format on

namespace toolbox::platform {
namespace {

constexpr UINT kWindows1252 = 1252;

/// What a call gives that is told the room and tells the characters that it needs.
template <class Call>
std::string nameFrom(Call call) {
    DWORD room = 0;
    (void)call(nullptr, &room);
    std::wstring name(room, L'\0');
    if (room == 0 || !call(name.data(), &room)) return {};
    name.resize(std::wcslen(name.c_str()));
    return bytesOf(name, kWindows1252);
}

class WindowsSystem final : public SystemInfo {
  public:
    std::string errorText(ErrorCode code) override {
        char* text = nullptr;
        constexpr DWORD kNeutralDefault = 0x400;
        // The texts hold inserts (%1) that nobody fills here.
        const DWORD length = FormatMessageA(
            FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                FORMAT_MESSAGE_IGNORE_INSERTS,
            nullptr, code, kNeutralDefault, reinterpret_cast<char*>(&text), 0, nullptr);
        if (!text) return {};
        std::string result(text, length);
        LocalFree(text);
        return result;
    }

    LocalDate today() override {
        SYSTEMTIME now;
        GetLocalTime(&now);
        return {now.wYear, now.wMonth, now.wDay};
    }

    std::uint64_t availableVirtualMemory() override {
        MEMORYSTATUS status{};
        status.dwLength = sizeof status;
        GlobalMemoryStatus(&status);
        return status.dwAvailVirtual;
    }

    std::string settingsFolder() override {
        char folder[MAX_PATH] = "";
        const HRESULT found =
            SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
        return found == S_OK && *folder ? std::string(folder) + "\\toolbox" : std::string();
    }

    std::uint32_t clockMilliseconds() override {
        static_assert(CLOCKS_PER_SEC == 1000);
        return static_cast<std::uint32_t>(std::clock());
    }

    std::string programPath() override {
        std::string path(MAX_PATH, '\0');
        for (;;) {
            const DWORD length =
                GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
            if (length < path.size()) {
                path.resize(length);
                return path;
            }
            path.resize(path.size() * 2);  // it was cut
        }
    }

    std::string userName() override {
        return nameFrom([](wchar_t* name, DWORD* room) { return ::GetUserNameW(name, room); });
    }

    std::string hostName() override {
        return nameFrom([](wchar_t* name, DWORD* room) {
            return ::GetComputerNameExW(ComputerNamePhysicalDnsHostname, name, room);
        });
    }

    std::string machineIdentity() override {
        std::array<char, 64> text{};
        auto room = static_cast<DWORD>(text.size());
        // The 64-bit system's own place, of which programs of 32 bits see none.
        const LSTATUS error =
            ::RegGetValueA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Cryptography", "MachineGuid",
                           RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, text.data(), &room);
        return error == ERROR_SUCCESS ? text.data() : "";
    }

    std::uint32_t processId() override { return ::GetCurrentProcessId(); }

    std::optional<std::string> processStart(std::uint32_t process) override {
        const HANDLE handle = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
        if (!handle) {
            if (::GetLastError() == ERROR_ACCESS_DENIED) return "";
            return std::nullopt;
        }
        FILETIME start{};
        FILETIME end{};
        FILETIME ignored{};
        DWORD status = STILL_ACTIVE;
        const BOOL told = ::GetProcessTimes(handle, &start, &end, &ignored, &ignored);
        const BOOL ended = ::GetExitCodeProcess(handle, &status) && status != STILL_ACTIVE;
        ::CloseHandle(handle);
        if (ended) return std::nullopt;
        const std::uint64_t high = start.dwHighDateTime;
        return told ? std::to_string(high << 32 | start.dwLowDateTime) : "";
    }
};

}  // namespace

SystemInfo& hostSystem() {
    static WindowsSystem system;
    return system;
}

}  // namespace toolbox::platform
