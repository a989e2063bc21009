// Output values: a kind, the address of a variable, a template. The kind alone says how the
// variable is read, so constructors exist for exact types only.
#include "toolbox/output_values.h"

#include <array>
#include <utility>

#include "base/template_text.h"
#include "toolbox/char_sets.h"
#include "toolbox/win_types.h"

namespace {

struct KindFacts {
    const char* format;
    unsigned int readableBytes;
};

// By kind. The bytes are those checked on Windows: enough to recognize a wild pointer.
constexpr auto kKinds = std::to_array<KindFacts>({
    {"", 0},
    {"%u", 1},
    {"%hd", 2},
    {"%d", 4},
    {"%u", 4},
    {"%ld", 4},
    {"%lu", 4},
    {"%g", 4},
    {"%lg", 8},
    {"%s", 4},
    {"%s", 4},
    {"%s", 8},
    {"%s", 4},
});

}  // namespace

TvOutVal::TvOutVal(Kind kind, const void* value, const CString& format)
    : kind_(kind),
      value_(value),
      format_(format.IsEmpty() ? CString(kKinds[static_cast<std::size_t>(kind)].format) : format) {
    static_assert(kKinds.size() == static_cast<std::size_t>(Kind::charSet) + 1);
}

// One constructor from a pointer and one from a reference for each kind.
#define TOOLBOX_OUTPUT_KIND(Type, kind)                          \
    TvOutVal::TvOutVal(const Type* value, const CString& format) \
        : TvOutVal(Kind::kind, value, format) {}                 \
    TvOutVal::TvOutVal(const Type& value, const CString& format) \
        : TvOutVal(Kind::kind, &value, format) {}

TOOLBOX_OUTPUT_KIND(unsigned char, unsignedChar)
TOOLBOX_OUTPUT_KIND(short, shortInt)
TOOLBOX_OUTPUT_KIND(int, integer)
TOOLBOX_OUTPUT_KIND(unsigned int, unsignedInt)
TOOLBOX_OUTPUT_KIND(long, longInt)
TOOLBOX_OUTPUT_KIND(unsigned long, unsignedLong)
TOOLBOX_OUTPUT_KIND(float, singleReal)
TOOLBOX_OUTPUT_KIND(double, doubleReal)
TOOLBOX_OUTPUT_KIND(CString, string)
TOOLBOX_OUTPUT_KIND(RWCString, libraryString)
TOOLBOX_OUTPUT_KIND(RWCollectableString, collectableString)
TOOLBOX_OUTPUT_KIND(TvCharSet, charSet)
#undef TOOLBOX_OUTPUT_KIND

bool TvOutVal::isValid() const {
    if (kind_ == Kind::none || !value_) return false;
#if defined(_WIN32)
    if (IsBadReadPtr(value_, kKinds[static_cast<std::size_t>(kind_)].readableBytes)) return false;
#endif
    return !format_.IsEmpty();
}

CString TvOutVal::getStr() const {
    if (!isValid()) return {};
    const auto value = [this]<class T>(std::type_identity<T>) -> const T& {
        return *static_cast<const T*>(value_);
    };
    const auto printed = [this](const toolbox::base::TemplateValue& number) {
        char text[4096];
        toolbox::base::printTemplateValue(text, sizeof text, format_, number);
        return CString(text);
    };
    const auto integer = [&]<class T>(std::type_identity<T> type) {
        using Wide = std::conditional_t<std::is_signed_v<T>, long long, unsigned long long>;
        return printed(static_cast<Wide>(value(type)));
    };
    switch (kind_) {
        case Kind::unsignedChar:
            return integer(std::type_identity<unsigned char>());
        case Kind::shortInt:
            return integer(std::type_identity<short>());
        case Kind::integer:
            return integer(std::type_identity<int>());
        case Kind::unsignedInt:
            return integer(std::type_identity<unsigned int>());
        case Kind::longInt:
            return integer(std::type_identity<long>());
        case Kind::unsignedLong:
            return integer(std::type_identity<unsigned long>());
        case Kind::singleReal:
            return printed(static_cast<double>(value(std::type_identity<float>())));
        case Kind::doubleReal:
            return printed(value(std::type_identity<double>()));
        case Kind::string:
            return value(std::type_identity<CString>());
        case Kind::libraryString:
            return value(std::type_identity<RWCString>());
        case Kind::collectableString:
            return value(std::type_identity<RWCollectableString>());
        case Kind::charSet:
            return value(std::type_identity<TvCharSet>()).getFriendlyCharsSet(false);
        case Kind::none:
            break;
    }
    return {};
}
