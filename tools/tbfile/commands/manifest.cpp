// Writes a manifest member by member, and takes one apart that may be hostile: nothing in it is
// believed, and no depth of nesting costs stack.
#include "commands/manifest.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "terminal/failure.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

constexpr std::uint64_t kManifestVersion = 1;
/// A manifest needs 3: itself, its list of blocks and a block.
constexpr int kDeepest = 16;

JsonValue day(std::int32_t number) {
    const std::string text = dayText(number);
    return text.empty() ? JsonValue(std::int64_t{number}) : JsonValue(text);
}

JsonMember textMember(std::string_view key, const std::string& windows1252) {
    return {key, toolbox::toUtf8(windows1252)};
}

JsonMember numberMember(std::string_view key, std::uint32_t number) {
    return {key, std::uint64_t{number}};
}

/// A name that stays in the folder on every system.
bool isPlainName(const std::string& name) {
    constexpr std::string_view kOthers("/\\:\0", 4);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(kOthers) == std::string::npos;
}

/// Takes a manifest apart. What it does not take exactly as it stands is refused: a file made of
/// something similar would not be what the manifest says.
class Reading {
  public:
    explicit Reading(const std::string& file) : file_(file) {}

    Manifest manifest(const nlohmann::json& json) const {
        Manifest manifest;
        if (number(json, "tbfileManifest") != kManifestVersion) refuse(json, "tbfileManifest");
        const nlohmann::json& header = member(json, "header");
        manifest.header.version = number(header, "version");
        manifest.header.mask = number(header, "mask");
        manifest.header.description = text(header, "description");
        manifest.header.dates = {day(header, "created"), day(header, "stamped"),
                                 day(header, "net")};
        manifest.index = label(member(json, "index"));
        if (json.contains("checksums")) {
            const nlohmann::json& checksums = member(json, "checksums");
            if (!checksums.is_boolean()) refuse(json, "checksums");
            manifest.checksums = checksums.get<bool>();
        }
        if (!member(json, "blocks").is_array()) refuse(json, "blocks");
        for (const nlohmann::json& block : member(json, "blocks")) {
            const nlohmann::json& file = member(block, "file");
            if (!file.is_string() || !isPlainName(file.get_ref<const std::string&>()))
                refuse(block, "file");
            manifest.blocks.push_back({number(block, "id"), label(block), file.get<std::string>()});
        }
        return manifest;
    }

  private:
    [[noreturn]] void refuse(const nlohmann::json& json, const char* key) const {
        constexpr std::size_t kShown = 60;
        std::string value =
            json.at(key).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
        if (value.size() > kShown) value = value.substr(0, kShown) + "...";
        throw Failure(Text::badManifest, {file_, std::string(key) + ": " + value});
    }

    const nlohmann::json& member(const nlohmann::json& json, const char* key) const {
        const auto found = json.find(key);
        if (found == json.end())
            throw Failure(Text::badManifest, {file_, say(Text::manifestLacks, {key})});
        return *found;
    }

    std::uint32_t number(const nlohmann::json& json, const char* key) const {
        const nlohmann::json& value = member(json, key);
        if (!value.is_number_unsigned() ||
            !std::in_range<std::uint32_t>(value.get<std::uint64_t>()))
            refuse(json, key);
        return value.get<std::uint32_t>();
    }

    /// A date, or the number of something that is none.
    std::int32_t day(const nlohmann::json& json, const char* key) const {
        const nlohmann::json& value = member(json, key);
        std::optional<std::int32_t> day;
        if (value.is_string()) day = dayOf(value.get_ref<const std::string&>());
        if (value.is_number_unsigned() && std::in_range<std::int32_t>(value.get<std::uint64_t>()))
            day = value.get<std::int32_t>();
        if (value.is_number_integer() && !value.is_number_unsigned() &&
            std::in_range<std::int32_t>(value.get<std::int64_t>()))
            day = value.get<std::int32_t>();
        if (!day) refuse(json, key);
        return *day;
    }

    /// Every byte of Windows-1252 has a character of its own, also those that are no text.
    std::string text(const nlohmann::json& json, const char* key) const {
        if (!member(json, key).is_string()) refuse(json, key);
        const auto& utf8 = json.at(key).get_ref<const std::string&>();
        std::string text = toolbox::fromUtf8(utf8);
        if (text.size() > Shape().description || text.find('\0') != std::string::npos ||
            toolbox::toUtf8(text) != utf8)
            refuse(json, key);
        return text;
    }

    Label label(const nlohmann::json& json) const {
        return {text(json, "description"), number(json, "version"), number(json, "recordVersion")};
    }

    const std::string& file_;
};

}  // namespace

std::string manifestStart(const Header& header, const Label& index, bool checksums) {
    const Json head = jsonObject({numberMember("version", header.version),
                                  numberMember("mask", header.mask),
                                  textMember("description", header.description),
                                  {"created", day(header.dates[0])},
                                  {"stamped", day(header.dates[1])},
                                  {"net", day(header.dates[2])},
                                  numberMember("formatVersion", header.shape.format)});
    const Json label = jsonObject({textMember("description", index.description),
                                   numberMember("version", index.version),
                                   numberMember("recordVersion", index.recordVersion)});
    return "{\"tbfileManifest\":" + std::to_string(kManifestVersion) +
           ",\n\"header\":" + head.text + ",\n\"index\":" + label.text +
           (checksums ? ",\n\"checksums\":true" : "") + ",\n\"blocks\":[";
}

std::string manifestBlock(const ManifestBlock& block, bool first) {
    return (first ? "\n " : ",\n ") +
           jsonObject({numberMember("id", block.id),
                       textMember("description", block.label.description),
                       numberMember("version", block.label.version),
                       numberMember("recordVersion", block.label.recordVersion),
                       {"file", block.file}})
               .text;
}

std::string manifestEnd() {
    return "]}\n";
}

Manifest parseManifest(const std::string& text, const std::string& file) {
    const auto shallow = [&](int depth, nlohmann::json::parse_event_t, const nlohmann::json&) {
        if (depth > kDeepest) throw Failure(Text::badManifest, {file, say(Text::manifestDeep)});
        return true;
    };
    try {
        return Reading(file).manifest(nlohmann::json::parse(text, shallow));
    } catch (const nlohmann::json::parse_error& error) {
        throw Failure(Text::badManifest,
                      {file, say(Text::manifestNoJson, {std::to_string(error.byte)})});
    } catch (const nlohmann::json::exception&) {
        // A number that no type holds.
        throw Failure(Text::badManifest, {file, say(Text::manifestNumber)});
    }
}

}  // namespace tbfile
