#include "platform/posix/temporary.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <ctime>

#include "platform/posix/file_names.h"

namespace toolbox::platform::posix {
namespace {

constexpr unsigned kNumbers = 0x10000;

std::string temporaryFolder() {
    const char* configured = std::getenv("TMPDIR");
    std::string folder = configured && *configured ? configured : "/tmp";
    if (folder.back() != '/') folder += '/';
    return folder;
}

}  // namespace

ErrorCode createTemporaryFile(const char* prefix, std::string& name) {
    constexpr std::size_t kPrefixLength = 3;
    constexpr mode_t kOnlyTheUser = 0600;
    const std::string start =
        temporaryFolder() + std::string(prefix ? prefix : "").substr(0, kPrefixLength);
    name.clear();
    const auto first = static_cast<unsigned>(std::time(nullptr)) ^ static_cast<unsigned>(getpid());
    for (unsigned i = 0; i < kNumbers; ++i) {
        char digits[8] = {};
        const unsigned number = (first + i) % kNumbers;
        const char* end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
        std::string candidate = start;
        for (const char* digit = digits; digit < end; ++digit)
            candidate += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
        candidate += ".TMP";
        const int file =
            ::open(candidate.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOnlyTheUser);
        if (file >= 0) {
            ::close(file);
            name = std::move(candidate);
            return ERROR_SUCCESS;
        }
        if (errno != EEXIST) return codeOfName(errno, candidate);
    }
    return ERROR_FILE_EXISTS;
}

}  // namespace toolbox::platform::posix
