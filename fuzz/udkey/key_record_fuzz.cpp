// A record that was restored from any bytes is the same again after it is saved and restored.
#include <cstdint>

#include "base/trimmed.h"
#include "require.h"
#include "toolbox/keys.h"

namespace {

UDKeyData declared(const FormatType& format) {
    UDKeyData data(RWCString("KEY"));
    data.setFormat(format);
    data.setDescStr("declared");
    data.setHeaderStr("header");
    data.setUnitsStr("a|b,c");
    return data;
}

void check(const RWCString& record, const FormatType& format) {
    UDKeyData data = declared(format);
    const bool restored = data.restoreStringData(record) == 1;
    require(data.getDescStr().length() <= UDKeyData::kMaxDescription);
    require(data.getHeaderStr() == "header" && data.getUnitsStr() == "a|b,c");
    if (!restored) return;

    UDKeyData again = declared(format);
    const RWCString saved = data.saveStringData();
    require(again.restoreStringData(saved) == 1);
    require(again.getDescStr() == toolbox::base::trimmed(data.getDescStr().view()));
    require(again.getFormat()->operator==(*data.getFormat()) == 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RWCString record(reinterpret_cast<const char*>(data), size);
    check(record, NumberFormat());
    check(record, RealFormat());
    check(record, StringFormat());
    check(record, NoFormatType());
    return 0;
}
