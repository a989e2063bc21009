// Printing by template: printf's conversions into a bounded buffer.
//
// Templates come from resources and callers and are data, not trusted code: the output never leaves
// its buffer, whatever width or precision is asked for; "%n" prints nothing and stores nothing; a
// conversion that is not known is copied unchanged. Numbers print as number_text.h says.
// Conversions: d i u o x X c s p e E f F g G %, flags "-+ #0", width and precision with "*",
// lengths hh h l ll L q j z t I I32 I64. "%p" prints every digit of the address, in capitals.
// Conversions that are printf's but not these ("%a", wide text) still pass over their argument, so
// that those after them stay in step.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace toolbox::base {

/// Prints into `out`, cut at size - 1 characters and terminated when size > 0. Returns the
/// characters kept. Arguments are taken as printf takes them; a template that asks for other types
/// than were passed is the caller's fault, as with printf. `%s` of a null pointer prints "(null)".
std::size_t printTemplateV(char* out, std::size_t size, const char* format, std::va_list arguments);
std::size_t printTemplate(char* out, std::size_t size, const char* format, ...);

/// One argument of known type. Conversions that do not suit it are made to: integers and reals
/// convert to each other, a number asked for as text prints in decimal, text asked for as a number
/// is 0. A character pointer is read as far as "%s" asks, null is "(null)".
using TemplateValue =
    std::variant<long long, unsigned long long, double, std::string_view, const char*>;

/// Prints one value: the first conversion of the template takes it, further ones print nothing.
/// A '*' takes no value and counts as 0. Cut and terminated as above.
std::size_t printTemplateValue(char* out, std::size_t size, const char* format,
                               const TemplateValue& value);

/// Prints values in their order, a '*' takes one too; conversions without a value print nothing.
/// Cut and terminated as above.
std::size_t printTemplateValues(char* out, std::size_t size, const char* format,
                                std::span<const TemplateValue> values);

}  // namespace toolbox::base
