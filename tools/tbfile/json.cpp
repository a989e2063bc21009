#include "json.h"

#include <nlohmann/json.hpp>

namespace tbfile {
namespace {

std::string textOf(const JsonValue& value) {
    if (const Json* json = std::get_if<Json>(&value)) return json->text;
    const auto plain = std::visit(
        [](const auto& v) {
            if constexpr (std::is_same_v<std::decay_t<decltype(v)>, Json>)
                return nlohmann::json();
            else
                return nlohmann::json(v);
        },
        value);
    return plain.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

Json jsonObject(std::initializer_list<JsonMember> members) {
    std::string text = "{";
    for (const JsonMember& member : members) {
        if (text.size() > 1) text += ',';
        text += textOf(std::string(member.key)) + ':' + textOf(member.value);
    }
    return {text + "}"};
}

void JsonArray::add(const Json& element) {
    if (text_.size() > 1) text_ += ',';
    text_ += element.text;
}

}  // namespace tbfile
