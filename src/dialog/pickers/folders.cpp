// Arithmetic of names: a root is "C:\", "/" or "\\server\share"; above it there is nothing.
#include "dialog/pickers/folders.h"

#include "toolbox/messages.h"
#include "toolbox/platform.h"

namespace toolbox::pickers {
namespace {

constexpr const char* kSeparators = "/\\";
constexpr const char* kSection = "Folders";

bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

/// Characters of the root that a path begins with; 0 for a relative one.
std::size_t rootLength(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':') return path.size() > 2 && isSeparator(path[2]) ? 3 : 2;
    if (path.size() < 2 || !isSeparator(path[0]) || !isSeparator(path[1]))
        return !path.empty() && isSeparator(path[0]) ? 1 : 0;
    const std::size_t server = path.find_first_of(kSeparators, 2);
    if (server == std::string_view::npos) return path.size();
    return std::min(path.find_first_of(kSeparators, server + 1), path.size());
}

std::string_view withoutEnd(std::string_view path, std::size_t root) {
    while (path.size() > root && isSeparator(path.back())) path.remove_suffix(1);
    return path;
}

bool isFolder(const std::string& name) {
    std::uint32_t attributes = 0;
    return platform::current().files->attributes(name.c_str(), attributes) == ERROR_SUCCESS &&
           (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::string_view fileNameOf(std::string_view path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator != std::string_view::npos) return path.substr(separator + 1);
    return path.substr(rootLength(path));
}

std::string parentOf(std::string_view path) {
    const std::size_t root = rootLength(path);
    path = withoutEnd(path, root);
    if (path.size() <= root) return {};
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == std::string_view::npos || separator < root) return std::string(path, 0, root);
    return std::string(withoutEnd(path.substr(0, separator), root));
}

std::string nearestFolder(const std::string& folder) {
    std::string nearest = folder;
    while (!nearest.empty() && !isFolder(nearest)) nearest = parentOf(nearest);
    return nearest;
}

std::string rememberedFolder(const CString& purpose) {
    RWCString folder;
    if (!purpose.empty()) GMSG::getProfile(kSection, purpose, folder, RWCString());
    return folder.str();
}

void rememberFolder(const CString& purpose, const std::string& folder) {
    if (!purpose.empty() && !folder.empty())
        GMSG::writeProfile(kSection, purpose, RWCString(folder));
}

}  // namespace toolbox::pickers
