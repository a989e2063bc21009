// Fills the library's key data from short declarations; the descriptions are texts of the program.
#include "declared_keys.h"

#include "toolbox/messages.h"

void declareKey(UDManager& keys, UINT id, const DeclaredKey& key, const FormatType& format) {
    RWCString description;
    GMSG::getString(key.description, description);
    UDKeyData data((RWCString(key.key)));
    data.setDescStr(description);
    data.setHeaderStr(key.header);
    data.setUnitsStr(key.units);
    data.setFormat(format);
    keys.addKey(id, data);
}

void declareNumber(UDManager& keys, UINT id, const DeclaredKey& key, int width, int precision) {
    if (precision == 0) {
        NumberFormat whole;
        whole.setFormat(width, Right);
        declareKey(keys, id, key, whole);
    } else {
        RealFormat real;
        real.setFormat(width, precision, Right);
        declareKey(keys, id, key, real);
    }
}

int setNumber(FormatedValue* value, double number) {
    if (value->isReal())
        static_cast<RealFormatedValue&>(*value) = number;
    else
        static_cast<NumberFormatedValue&>(*value) = static_cast<int>(number);
    return 1;
}
