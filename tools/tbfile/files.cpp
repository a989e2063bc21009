#include "files.h"

#include "failure.h"

namespace tbfile {

Path pathOf(std::string_view utf8) {
#if defined(_WIN32)
    return Path(std::u8string(utf8.begin(), utf8.end()));
#else
    return Path(utf8);
#endif
}

std::string nameOf(const Path& path) {
#if defined(_WIN32)
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
#else
    return path.string();
#endif
}

void checkTarget(const Path& target, const Path& input, bool replaces) {
    std::error_code missing;
    if (std::filesystem::equivalent(target, input, missing))
        throw Failure(Text::outputIsInput, {nameOf(target)});
    if (!replaces && std::filesystem::exists(std::filesystem::symlink_status(target, missing)))
        throw Failure(Text::exists, {nameOf(target)});
}

}  // namespace tbfile
