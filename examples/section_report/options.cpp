// Options are read from left to right; the last of two wins.
#include "options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace {

bool readPositive(const char* text, double& value) {
    const char* const end = text + std::strlen(text);
    const auto [last, error] = std::from_chars(text, end, value);
    return error == std::errc() && last == end && value > 0 && std::isfinite(value);
}

/// A name without a folder would be looked for in the system's folder of profile files.
std::string profileBeside(const char* file) {
    std::filesystem::path path(file);
    path.replace_extension(".ini");
    if (!path.has_parent_path()) path = "." / path;
    return path.string();
}

class ArgumentReader {
  public:
    ArgumentReader(int count, char** arguments) : next_(arguments + 1), end_(arguments + count) {}

    std::optional<Options> read() {
        while (next_ != end_)
            if (!take(*next_++)) return std::nullopt;
        if (!options_.file) return std::nullopt;
        if (options_.keys.empty()) options_.keys = profileBeside(options_.file);
        return options_;
    }

  private:
    /// The argument that belongs to an option; null when it is missing.
    const char* value() { return next_ == end_ ? nullptr : *next_++; }

    bool takeChange(KeyChange::What what) {
        const char* const key = value();
        const char* const text = value();
        if (text) options_.changes.push_back({what, key, text});
        return text != nullptr;
    }

    bool take(std::string_view argument) {
        if (argument == "--french") return true;  // see languageOf()
        if (argument == "--describe") return takeChange(KeyChange::What::description);
        if (argument == "--format") return takeChange(KeyChange::What::format);
        if (argument.starts_with("--")) {
            const char* const text = value();
            return text && takeValue(argument, text);
        }
        if (options_.file) return false;
        (options_.table ? options_.file : options_.table) = argument.data();
        return true;
    }

    bool takeValue(std::string_view option, const char* text) {
        if (option == "--date") {
            options_.date = TarvDate(text);
            return options_.date.isValid();
        }
        if (option == "--span") return readPositive(text, options_.beam.span);
        if (option == "--load") return readPositive(text, options_.beam.load);
        if (option == "--label") {
            options_.label = text;
            return true;
        }
        options_.keys = text;
        return option == "--keys";
    }

    char** next_;
    char** end_;
    Options options_;
};

}  // namespace

std::optional<Options> parseOptions(int count, char** arguments) {
    return ArgumentReader(count, arguments).read();
}

GMSG::Language languageOf(int count, char** arguments) {
    const bool isFrench = std::any_of(arguments + 1, arguments + count, [](const char* argument) {
        return std::string_view(argument) == "--french";
    });
    return isFrench ? GMSG::French : GMSG::English;
}
