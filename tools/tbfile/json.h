// JSON as the program writes it: one object for each call, in one line.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace tbfile {

/// JSON that is written already.
struct Json {
    std::string text;
};

using JsonValue =
    std::variant<std::nullptr_t, bool, std::uint64_t, std::int64_t, std::string, Json>;

struct JsonMember {
    std::string_view key;
    JsonValue value;
};

/// Texts are UTF-8; what is not becomes a replacement character.
[[nodiscard]] Json jsonObject(std::initializer_list<JsonMember> members);

/// [a,b], or the elements on lines of their own.
class JsonArray {
  public:
    void add(const Json& element);
    [[nodiscard]] Json done() const { return {text_ + "]"}; }

  private:
    std::string text_ = "[";
};

}  // namespace tbfile
