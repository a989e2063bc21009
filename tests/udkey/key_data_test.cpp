#include "udkey/keys_fixture.h"

namespace {

std::string blanks(std::size_t n) {
    return std::string(n, ' ');
}

TEST(KeyData, SavesDescriptionFormatAndWithAHeaderTheUnitsToo) {
    const std::string start = "|" + blanks(57) + "Voltage|   8-R";
    UDKeyData data = makeKey("VOLT", number(8), "Voltage");
    data.setUnitsStr("kV");
    EXPECT_EQ(data.saveStringData(), start);
    data.setHeaderStr("V");
    EXPECT_EQ(data.saveStringData(), start + ",V,kV");
}

TEST(KeyData, RestoresWhatARecordHolds) {
    const std::string longText = std::string(64, 'x') + "yyyyyy";
    const struct {
        std::string record;
        int result;
        std::string description;
        std::string format;  // "  20-   1-R" at first
    } cases[] = {
        {"|Depth|  12-   3-R", 1, "Depth", "  12-   3-R"},
        {"|   Depth of it  |  12-   3-L  ,D,m", 1, "Depth of it", "  12-   3-L"},
        {"|" + longText + "|  12-   3-R", 1, longText.substr(0, 64), "  12-   3-R"},
        {"Depth|  12-   3-R|  99-   9-L", 1, "Depth", "  12-   3-R"},
        {"|Depth|  12-R", 0, "Depth", "  20-   1-R"},        // an integer format's
        {"|Depth|   1-   3-L", 0, "Depth", "  20-   3-L"},   // the width is refused, the rest taken
        {"|Depth|,  12-   3-R", 0, "Depth", "  20-   1-R"},  // a header where the format should be
        {"|Depth", 0, "Depth", "  20-   1-R"},
        {"||  12-   3-R", 0, "12-   3-R", "  20-   1-R"},  // no empty parts
        {"", 0, "", "  20-   1-R"},
    };
    for (const auto& c : cases) {
        UDKeyData data = makeKey("K", real(20, 1), "Old");
        data.setHeaderStr("H");
        EXPECT_EQ(data.restoreStringData(c.record), c.result) << c.record;
        EXPECT_EQ(data.getDescStr(), c.description) << c.record;
        EXPECT_EQ(data.getFormat()->saveStringFormat(), c.format) << c.record;
        EXPECT_EQ(data.getHeaderStr(), "H");
    }
}

TEST(KeyData, IsEqualOnlyInEveryField) {
    UDKeyData one = makeKey("K", number(5), "D");
    one.setHeaderStr("H");
    one.setUnitsStr("U");
    EXPECT_TRUE(one == UDKeyData(one));
    EXPECT_TRUE(one == RWCString("K"));
    UDKeyData others[] = {one, one, one, one, one};
    others[0].setKeyStr("x");
    others[1].setDescStr("x");
    others[2].getFormat()->setWidth(6);
    others[3].setHeaderStr("x");
    others[4].setUnitsStr("x");
    for (const UDKeyData& other : others) EXPECT_TRUE(one != other) << &other - others;
}

TEST(KeyData, CopiesItsFormatByKind) {
    RealFormat leftOfNoWidth;
    leftOfNoWidth.setJustify(Left);
    StringFormatedValue value;
    value.setWidth(7);
    for (const FormatType* format : std::initializer_list<FormatType*>{&leftOfNoWidth, &value}) {
        UDKeyData data;
        data.setFormat(*format);
        EXPECT_TRUE(*data.getFormat() == *format);
        EXPECT_STREQ(data.getFormat()->getClassName(),
                     format == &value ? "StringFormat" : "RealFormat");
        EXPECT_TRUE(data != UDKeyData()) << "'no format' equals every format, records do not";
        UDKeyData copy(data);
        EXPECT_TRUE(copy == data);
        copy.getFormat()->setJustify(Right);
        EXPECT_TRUE(copy != data) << "each has its own";
    }
}

}  // namespace
