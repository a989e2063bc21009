// A path made shorter: each attempt is measured, the longest that fits is taken.
#include <algorithm>

#include "dialog/controls/control_texts.h"

namespace toolbox::controls {
namespace {

constexpr std::string_view kDots = "...";
constexpr std::string_view kSeparators = "\\/";
constexpr auto kNone = std::string_view::npos;

/// Length of what a path begins with and is kept longest: "C:\", "\\server\share\", "/".
std::size_t rootLength(std::string_view path) {
    if (path.size() > 1 && kSeparators.find(path[0]) != kNone && path[1] == path[0]) {
        const std::size_t server = path.find_first_of(kSeparators, 2);
        if (server == kNone) return path.size();
        const std::size_t share = path.find_first_of(kSeparators, server + 1);
        return share == kNone ? path.size() : share + 1;
    }
    const std::size_t drive = path.size() > 1 && path[1] == ':' ? 2 : 0;
    const bool isAbsolute = path.size() > drive && kSeparators.find(path[drive]) != kNone;
    return drive + (isAbsolute ? 1 : 0);
}

/// Where the last name begins; a separator at the end belongs to it.
std::size_t nameStart(std::string_view path, std::size_t root) {
    std::size_t end = path.size();
    while (end > root && kSeparators.find(path[end - 1]) != kNone) --end;
    const std::size_t separator = path.substr(0, end).find_last_of(kSeparators);
    return separator == kNone || separator < root ? root : separator + 1;
}

/// The name, or as many of its characters as fit with dots in its middle.
std::string shortenedName(std::string_view name, int width, const Measure& measure) {
    const auto kept = [&](std::size_t count) {
        const std::size_t tail = (count + 1) / 2;
        return std::string(name.substr(0, count - tail)) + std::string(kDots) +
               std::string(name.substr(name.size() - tail));
    };
    if (measure(name) <= width) return std::string(name);
    std::size_t fits = 0;
    std::size_t tooMany = name.size();
    while (tooMany - fits > 1) {
        const std::size_t middle = fits + (tooMany - fits) / 2;
        (measure(kept(middle)) <= width ? fits : tooMany) = middle;
    }
    if (fits > 0) return kept(fits);
    return measure(kDots) <= width ? std::string(kDots) : std::string();
}

}  // namespace

std::string shortenedPath(std::string_view path, int width, const Measure& measure) {
    if (measure(path) <= width) return std::string(path);
    const std::size_t root = rootLength(path);
    const std::size_t name = nameStart(path, root);
    const std::string start = std::string(path.substr(0, root)) + std::string(kDots);
    // From the separator that each attempt begins at.
    for (std::size_t from = path.find_first_of(kSeparators, root); from != kNone && from < name;
         from = path.find_first_of(kSeparators, from + 1)) {
        std::string attempt = start + std::string(path.substr(from));
        if (measure(attempt) <= width) return attempt;
    }
    if (root > 0 || name > 0) {
        const std::size_t from = name > root ? name - 1 : root;
        std::string attempt = std::string(kDots) + std::string(path.substr(from));
        if (measure(attempt) <= width) return attempt;
    }
    return shortenedName(path.substr(name), width, measure);
}

}  // namespace toolbox::controls
