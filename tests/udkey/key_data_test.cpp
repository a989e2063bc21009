#include <tuple>

#include "udkey/keys_fixture.h"

namespace {

TEST(KeyData, RestoresWhatARecordHolds) {
    const std::string longText = std::string(64, 'x') + "yyyyyy";
    const std::tuple<std::string, int, std::string, std::string> cases[] = {
        {"|Depth|  12-   3-R", 1, "Depth", "  12-   3-R"},
        {"|   Depth of it  |  12-   3-L  ,D,m", 1, "Depth of it", "  12-   3-L"},
        {"|" + longText + "|  12-   3-R", 1, longText.substr(0, 64), "  12-   3-R"},
        {"|Depth|  12-R", 0, "Depth", "  20-   1-R"},        // an integer format's
        {"|Depth|   1-   3-L", 0, "Depth", "  20-   3-L"},   // the width is refused, the rest taken
        {"|Depth|,  12-   3-R", 0, "Depth", "  20-   1-R"},  // a header where the format should be
        {"||  12-   3-R", 0, "12-   3-R", "  20-   1-R"},    // no empty parts
    };
    for (const auto& [record, result, description, format] : cases) {
        UDKeyData data = makeKey("K", real(20, 1), "Old");
        EXPECT_EQ(data.restoreStringData(record), result) << record;
        EXPECT_EQ(data.getDescStr(), description) << record;
        EXPECT_EQ(data.getFormat()->saveStringFormat(), format) << record;
    }
}

}  // namespace
