// Facts from the system.
#include <ctime>

#include "platform/host.h"
#include "toolbox/win_types.h"
// clang-format off
#include <shlobj.h>  // stands on the types above
// clang-format on

namespace toolbox::platform {
namespace {

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
};

}  // namespace

SystemInfo& hostSystem() {
    static WindowsSystem system;
    return system;
}

}  // namespace toolbox::platform
