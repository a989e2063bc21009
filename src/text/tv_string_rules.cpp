// Reading the rules of a validated text from its resource text.
#include <charconv>
#include <string>
#include <string_view>

#include "base/trimmed.h"
#include "text/text_resources.h"
#include "toolbox/text.h"

namespace {

using namespace toolbox;

constexpr std::string_view kTag = "TVSTRING";
constexpr unsigned int kDefaultMessage = 1094;

/// Cuts the field before the first bar off the rest.
CString takeField(std::string_view& rest) {
    const std::size_t bar = rest.find('|');
    const std::string_view field = rest.substr(0, bar);
    rest.remove_prefix(bar == std::string_view::npos ? rest.size() : bar + 1);
    return field;
}

template <class Text>
bool readField(const CString& field, Text* out) {
    return TvScanfSingle(field, out);
}

/// A length is digits and no more, unlike the numbers that people enter.
bool readField(const CString& field, int* out) {
    std::string_view digits = base::trimmed(field.view());
    if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, *out);
    return error == std::errc() && stop == end;
}

/// Stores a field, or its default when it is empty or unreadable. Returns `rule` when it was read.
template <class T>
int takeRule(std::string_view& rest, int rule, T* out, const T& otherwise) {
    const CString field = takeField(rest);
    T value = otherwise;
    const bool read = !field.IsEmpty() && readField(field, &value);
    if (out) *out = read ? value : otherwise;
    return read ? rule : 0;
}

template <class Text>
char parse(unsigned int resourceId, Text* message, Text* defaultValue, int* minLength,
           int* maxLength, Text* validChars, Text* invalidChars, CArray<Text>* forbiddenValues) {
    const std::string text = text::loadText(resourceId);
    if (text.empty()) return 0;
    if (forbiddenValues) forbiddenValues->RemoveAll();
    std::string_view rest = text;
    if (takeField(rest).view() != kTag) return 0;

    const Text none;
    int supplied = takeRule(rest, TvString::HasMessage, message, none);
    if (!supplied && message) *message = Text(CString(text::loadText(kDefaultMessage)));
    supplied |= takeRule(rest, TvString::MinLength, minLength, -1);
    supplied |= takeRule(rest, TvString::MaxLength, maxLength, -1);
    supplied |= takeRule(rest, TvString::HasDefault, defaultValue, none);
    supplied |= takeRule(rest, TvString::ValidChars, validChars, none);
    supplied |= takeRule(rest, TvString::InvalidChars, invalidChars, none);
    while (!rest.empty()) {
        const CString value = takeField(rest);
        if (value.IsEmpty()) continue;
        supplied |= TvString::ForbiddenValues;
        if (forbiddenValues) forbiddenValues->Add(Text(value));
    }
    return static_cast<char>(supplied);
}

}  // namespace

char TvStringParseResStr(unsigned int resourceId, CString* message, CString* defaultValue,
                         int* minLength, int* maxLength, CString* validChars, CString* invalidChars,
                         CArray<CString>* forbiddenValues) {
    return parse(resourceId, message, defaultValue, minLength, maxLength, validChars, invalidChars,
                 forbiddenValues);
}

char TvStringParseResStr(unsigned int resourceId, RWCString* message, RWCString* defaultValue,
                         int* minLength, int* maxLength, RWCString* validChars,
                         RWCString* invalidChars, CArray<RWCString>* forbiddenValues) {
    return parse(resourceId, message, defaultValue, minLength, maxLength, validChars, invalidChars,
                 forbiddenValues);
}
