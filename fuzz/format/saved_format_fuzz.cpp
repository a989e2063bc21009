// A format restores what it saved: what any text was restored to is the same again after it is
// saved and restored.
#include <cstdint>

#include "require.h"
#include "toolbox/formats.h"

namespace {

template <class Format>
void checkText(const RWCString& text, Format format) {
    if (format.restoreStringFormat(text) == 0) return;
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
