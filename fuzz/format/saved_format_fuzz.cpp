// A format restores what it saved. Any text restores as scanning it with the C library's patterns
// says, and what a text was restored to is the same again after it is saved and restored.
#include <cstdint>
#include <cstdio>
#include <string>

#include "require.h"
#include "toolbox/formats.h"

namespace {

/// The setters in their order, all of them once every field is there.
template <class Format>
int applied(Format& format, const char* text) {
    const bool real = format.isReal() == 1;
    int width = 0, precision = 0;
    char letter = 0;
    const int fields = real ? std::sscanf(text, "%4d-%4d-%c", &width, &precision, &letter)
                            : std::sscanf(text, "%4d-%c", &width, &letter);
    if (fields != (real ? 3 : 2)) return 0;
    int done = format.setWidth(width);
    if (real) done &= format.setPrecision(precision);
    if (letter != 'L' && letter != 'R') return 0;
    return format.setJustify(letter == 'L' ? Left : Right) & done;
}

template <class Format>
void checkText(const RWCString& text, Format format) {
    Format expected = format;
    const int done = applied(expected, text.str().c_str());
    require(format.restoreStringFormat(text) == done);
    require(format.getWidth() == expected.getWidth() &&
            format.getPrecision() == expected.getPrecision() &&
            format.getJustify() == expected.getJustify());
    if (!done) return;

    Format again;
    const RWCString saved = format.saveStringFormat();
    require(again.restoreStringFormat(saved) == 1);
    require(again == format);
    require(again.saveStringFormat() == saved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RWCString text(reinterpret_cast<const char*>(data), size);
    NumberFormat number;
    StringFormat string;
    RealFormat real;
    real.setFormat(8, 3, Left);
    checkText(text, number);
    checkText(text, string);
    checkText(text, real);
    require(NoFormatType().restoreStringFormat(text) == 0);
    return 0;
}
