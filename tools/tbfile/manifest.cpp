#include "manifest.h"

#include <nlohmann/json.hpp>

#include "failure.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

constexpr std::uint64_t kManifestVersion = 1;

JsonValue day(std::int32_t number) {
    const std::string text = dayText(number);
    return text.empty() ? JsonValue(std::int64_t{number}) : JsonValue(text);
}

std::int32_t dayIn(const nlohmann::json& value) {
    return value.is_string() ? dayOf(value.get<std::string>()) : value.get<std::int32_t>();
}

JsonMember textMember(std::string_view key, const std::string& windows1252) {
    return {key, toolbox::toUtf8(windows1252)};
}

JsonMember numberMember(std::string_view key, std::uint32_t number) {
    return {key, std::uint64_t{number}};
}

Label labelIn(const nlohmann::json& json) {
    return {toolbox::fromUtf8(json.at("description").get<std::string>()),
            json.at("version").get<std::uint32_t>(), json.at("recordVersion").get<std::uint32_t>()};
}

/// A name that stays in the folder on every system.
bool isPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\:") == std::string::npos;
}

Manifest manifestIn(const nlohmann::json& json, const std::string& file) {
    Manifest manifest;
    if (json.at("tbfileManifest").get<std::uint64_t>() != kManifestVersion)
        throw Failure(Text::badManifest, {file, "tbfileManifest"});
    const nlohmann::json& header = json.at("header");
    manifest.header.version = header.at("version").get<std::uint32_t>();
    manifest.header.mask = header.at("mask").get<std::uint32_t>();
    manifest.header.description = toolbox::fromUtf8(header.at("description").get<std::string>());
    manifest.header.dates = {dayIn(header.at("created")), dayIn(header.at("stamped")),
                             dayIn(header.at("net"))};
    manifest.index = labelIn(json.at("index"));
    for (const nlohmann::json& block : json.at("blocks")) {
        manifest.blocks.push_back({block.at("id").get<std::uint32_t>(), labelIn(block),
                                   block.at("file").get<std::string>()});
        const std::string& name = manifest.blocks.back().file;
        if (!isPlainName(name)) throw Failure(Text::badManifest, {file, name});
    }
    return manifest;
}

}  // namespace

std::string manifestStart(const Header& header, const Label& index) {
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
           ",\n\"header\":" + head.text + ",\n\"index\":" + label.text + ",\n\"blocks\":[";
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
    try {
        return manifestIn(nlohmann::json::parse(text), file);
    } catch (const nlohmann::json::exception& error) {
        throw Failure(Text::badManifest, {file, error.what()});
    }
}

}  // namespace tbfile
