// Facts from /proc, the clock and the limits of the process; texts of the Windows error codes.
#include <pwd.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <system_error>

#include "platform/host.h"
#include "platform/posix/file_names.h"
#include "toolbox/utf8.h"

namespace toolbox::platform {
namespace {

struct ErrorName {
    ErrorCode code;
    const char* text;
};

constexpr auto kErrorNames = std::to_array<ErrorName>({
    {ERROR_FILE_NOT_FOUND, "File not found."},
    {ERROR_PATH_NOT_FOUND, "Folder not found."},
    {ERROR_TOO_MANY_OPEN_FILES, "Too many open files."},
    {ERROR_ACCESS_DENIED, "Access denied."},
    {ERROR_INVALID_HANDLE, "The file is not open."},
    {ERROR_NOT_ENOUGH_MEMORY, "Not enough memory."},
    {ERROR_WRITE_PROTECT, "The disk is write-protected."},
    {ERROR_WRITE_FAULT, "The device could not be written."},
    {ERROR_READ_FAULT, "The device could not be read."},
    {ERROR_SHARING_VIOLATION, "The file is in use by another program."},
    {ERROR_HANDLE_EOF, "End of file reached."},
    {ERROR_FILE_EXISTS, "The file exists already."},
    {ERROR_INVALID_PARAMETER, "Invalid parameter."},
    {ERROR_DISK_FULL, "The disk is full."},
    {ERROR_NEGATIVE_SEEK, "The position lies before the start of the file."},
    {ERROR_ALREADY_EXISTS, "It exists already."},
    {ERROR_FILENAME_EXCED_RANGE, "The file name is too long."},
    {ERROR_FILE_TOO_LARGE, "The file is too large."},
});

/// Bytes of address space in use; 0 when the system does not tell.
std::uint64_t addressSpaceInUse() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

/// The first line of a file; empty when there is none.
std::string firstLineOf(const std::string& name) {
    std::string line;
    std::ifstream file(name);
    std::getline(file, line);
    return line;
}

/// Facts about a process as its file in /proc tells them.
struct ProcessLine {
    char state = 0;     ///< 0: the file does not tell
    std::string start;  ///< in ticks since the machine started
};

ProcessLine processLine(std::uint32_t process) {
    const std::string line = firstLineOf("/proc/" + std::to_string(process) + "/stat");
    ProcessLine facts;
    // The second field is the program's name in brackets, which can hold anything.
    const std::size_t end = line.rfind(')');
    if (end == std::string::npos) return facts;
    std::istringstream rest(line.substr(end + 1));
    constexpr int kStartAfterState = 19;
    rest >> facts.state;
    for (int field = 0; field < kStartAfterState; ++field) rest >> facts.start;
    return facts;
}

class PosixSystem final : public SystemInfo {
  public:
    std::string errorText(ErrorCode code) override {
        if (code == ERROR_SUCCESS) return {};
        for (const ErrorName& known : kErrorNames)
            if (known.code == code) return known.text;
        return "System error " + std::to_string(code) + ".";
    }

    LocalDate today() override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
    }

    std::uint64_t availableVirtualMemory() override {
        constexpr std::uint64_t kAddressSpace = 1ULL << (sizeof(void*) == 4 ? 32 : 47);
        std::uint64_t limit = kAddressSpace;
        rlimit allowed{};
        if (getrlimit(RLIMIT_AS, &allowed) == 0 && allowed.rlim_cur < limit)
            limit = allowed.rlim_cur;
        const std::uint64_t used = addressSpaceInUse();
        return limit > used ? limit - used : 0;
    }

    std::string settingsFolder() override {
        std::string folder = posix::configFolder();
        folder.pop_back();
        return folder;
    }

    std::uint32_t clockMilliseconds() override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }

    std::string programPath() override {
        std::error_code unknown;
        return std::filesystem::read_symlink("/proc/self/exe", unknown).string();
    }

    std::string userName() override {
        std::array<char, 4096> room;
        passwd facts{};
        passwd* found = nullptr;
        ::getpwuid_r(::geteuid(), &facts, room.data(), room.size(), &found);
        return found ? fromUtf8(found->pw_name) : std::string();
    }

    std::string hostName() override {
        std::array<char, HOST_NAME_MAX + 1> name{};
        return ::gethostname(name.data(), name.size() - 1) == 0 ? fromUtf8(name.data()) : "";
    }

    std::string machineIdentity() override { return firstLineOf("/etc/machine-id"); }

    std::string bootIdentity() override { return firstLineOf("/proc/sys/kernel/random/boot_id"); }

    std::uint32_t processId() override { return static_cast<std::uint32_t>(::getpid()); }

    std::optional<std::string> processStart(std::uint32_t process) override {
        const ProcessLine facts = processLine(process);
        if (facts.state == 'Z' || facts.state == 'X') return std::nullopt;
        if (facts.state != 0) return facts.start;
        // Other users' processes may be hidden.
        constexpr std::uint32_t kLast = std::numeric_limits<pid_t>::max();
        const bool runs = process > 0 && process <= kLast &&
                          (::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
        return runs ? std::optional<std::string>("") : std::nullopt;
    }
};

}  // namespace

SystemInfo& hostSystem() {
    static PosixSystem system;
    return system;
}

}  // namespace toolbox::platform
