// Typed numbers of any rule and any text: what is taken scans to the same value again, from the
// text and from what is printed, is one that the C library reads so too and lies within the rules;
// what is refused has a sentence and changes nothing. A rule that cannot be read is none, and is
// traced.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

#include "require.h"
#include "support/text_fakes.h"
#include "toolbox/diagnostics.h"
#include "toolbox/numbers.h"
#include "toolbox/text.h"

namespace {

constexpr unsigned int kRule = 1;
int traces = 0;

template <class T>
bool isSame(T a, T b) {
    return a == b && std::signbit(static_cast<double>(a)) == std::signbit(static_cast<double>(b));
}

template <class T>
void checkWithin(const TvNumber<T>& number, T value) {
    require(value >= number.minimum() && value <= number.maximum());
    require(std::ranges::count(number.forbiddenValues(), value) == 0);
    char failed = 1;
    require(number.isValid(static_cast<CString*>(nullptr), &value, &failed) && failed == 0);
}

/// Without a format a number survives its text; with one it is close, or refused by its limits.
template <class T>
void checkPrint(const TvNumber<T>& number, T value) {
    T back = 0;
    require(TvNumber<T>().scan(TvNumber<T>().print(value), back, nullptr));
    require(isSame(back, value));
    const CString printed = number.print(value);
    require(printed.GetLength() >= number.width());
    T close = 0;
    const bool reads = TvNumber<T>().scan(printed, close, nullptr);
    require(reads || std::is_floating_point_v<T>);  // the largest one may round up beyond the type
    if (reads && number.decimals() < 0) require(isSame(close, value));
}

template <class T>
void checkText(const TvNumber<T>& number, const std::string& text) {
    T value = 77;
    CString why;
    const bool taken = number.scan(text, value, &why);
    require(taken == why.empty());
    require(taken || isSame(value, T{77}));
    if (!taken) return;
    require(number.couldBecome(text));
    require(std::ranges::all_of(text, [&](char c) { return number.allows(c); }));
    // Every start of it could become it.
    for (std::size_t n = 0; n < std::min<std::size_t>(text.size(), 64); ++n)
        require(number.couldBecome(text.substr(0, n)));
    T again = 0;
    require(number.scan(text, again, nullptr) && isSame(again, value));
    // The C library takes more: words, hexadecimal, what follows a number.
    std::string withPoint = text;
    std::ranges::replace(withPoint, ',', '.');
    if (std::is_same_v<T, double> && text.find('=') == std::string::npos)
        require(isSame(std::strtod(withPoint.c_str(), nullptr), static_cast<double>(value)));
    checkWithin(number, value);
    checkPrint(number, value);
    for (const double size : {0.1, 1.0, -7.5, 1e-300, static_cast<double>(value)})
        for (const int steps : {1, -1, 1000000}) {
            const T result = number.step(value, steps, size);
            if (result != value) checkWithin(number, result);
        }
}

template <class T>
void check(const std::string& tag, const std::string& rule, const std::string& text) {
    traces = 0;
    TvNumber<T> number(kRule);
    const bool isOurs = rule.substr(0, rule.find('|')) == tag;
    require(isOurs || (number.rules() == 0 && number.message().empty() && traces == 1));
    require(number.minimum() <= number.maximum());
    number.setUnits("mm");
    number.allowFormula(true);
    checkText(number, text);
    CString message;
    for (const T value : {std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max(), T{}}) {
        require(number.isValid(&message, &value, nullptr) || !message.empty());
        checkPrint(number, value);
    }
    number.setToDefaults();
    require(number.rules() == 0);
    checkText(number, text);
}

}  // namespace

/// A letter for the language, the resource text, a NUL, a text to be scanned.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    GMSG::language = bytes[0] == 'F' ? GMSG::French : GMSG::English;
    const std::size_t end = std::min(bytes.find('\0'), size);
    toolbox::testing::FakedTexts texts;
    const std::string rule = bytes.substr(1, std::max<std::size_t>(end, 1) - 1);
    texts.strings.put(kRule, rule);
    CTvTrace::SetCurrentTraceCategoryEnabled(1);
    toolbox::setTraceSink([](unsigned long, const char*) { ++traces; });
    const std::string text = bytes.substr(std::min(size, end + 1));
    check<short>("TVSHORT", rule, text);
    check<unsigned short>("TVUSHORT", rule, text);
    check<long>("TVLONG", rule, text);
    check<unsigned long>("TVULONG", rule, text);
    check<float>("TVFLOAT", rule, text);
    check<double>("TVDOUBLE", rule, text);
    return 0;
}
