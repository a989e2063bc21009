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
    std::string_view key;  ///< taken as it is: nothing in it needs an escape
    JsonValue value;
};

/// Texts are UTF-8; bytes that are not become U+FFFD, and control characters are escaped.
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
