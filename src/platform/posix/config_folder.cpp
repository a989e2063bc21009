#include "platform/posix/config_folder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace toolbox::platform::posix {
namespace {

std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

}  // namespace

std::string configFolder() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    const bool usable = configured && *configured == '/';
    return (usable ? std::string(configured) : homeFolder() + "/.config") + "/toolbox/";
}

void createFoldersOf(const std::string& path) {
    constexpr mode_t kOnlyTheUser = 0700;
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), kOnlyTheUser);
}

}  // namespace toolbox::platform::posix
