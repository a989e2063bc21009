#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>

#include "toolbox/records.h"

namespace {

std::string bytesOf(const VarRecord& record) {
    return {record.getPData(), record.getLen()};
}

TEST(VarRecord, StoresValuesLittleEndianWithoutGaps) {
    VarRecord record;
    record << 'c' << static_cast<short>(0x0201) << 0x04030201 << 1.0f << 2.0 << 3.0L;
    using namespace std::string_literals;
    EXPECT_EQ(bytesOf(record),
              "c"
              "\x01\x02"
              "\x01\x02\x03\x04"
              "\0\0\x80\x3f"
              "\0\0\0\0\0\0\0\x40"
              "\0\0\0\0\0\0\x08\x40"s);

    std::tuple<char, short, int, float, double, long double> values;
    std::apply([&](auto&... each) { (record >> ... >> each); }, values);
    EXPECT_EQ(values, std::tuple('c', short{0x0201}, 0x04030201, 1.0f, 2.0, 3.0L));
}

TEST(VarRecord, ReadPastTheDataThrowsAndLeavesTheCursor) {
    VarRecord record;
    record.writeString("abcdefg", 7);
    int value = 5;
    record >> value;
    EXPECT_THROW(record >> value, VarRecord::VarRecordException);
    EXPECT_EQ(record.getOffset(), 4u);
    EXPECT_EQ(value, 0x64636261);
}

TEST(VarRecord, ReadLongerThanTheRecordPassesByWrappingAndIsFilledWithZeros) {
    VarRecord record;
    record.writeString("abc", 3);
    char out[8] = "zzzzzzz";
    record.read(out, 8);
    EXPECT_EQ(std::string(out, 8), std::string("abc\0\0\0\0\0", 8));
    EXPECT_EQ(record.getOffset(), 8u);
    EXPECT_THROW(record.read(out, 1), VarRecord::VarRecordException);
    record.read(out, 4);
    EXPECT_EQ(std::string(out, 4), std::string(4, '\0'));
}

TEST(VarRecord, GrowsWithoutLosingBytesAlsoFromItself) {
    VarRecord record;
    std::string expected;
    for (int i = 0; i < 9; ++i) {
        const std::string piece(static_cast<std::size_t>(997 * i), static_cast<char>('a' + i));
        record.write(piece.data(), static_cast<int>(piece.size()));
        record.append(record);
        expected += piece;
        expected += expected;
    }
    EXPECT_EQ(bytesOf(record), expected);
    record.setData(5, record.getPData() + 3);
    EXPECT_EQ(bytesOf(record), expected.substr(3, 5));
}

TEST(VarRecord, RefusesMoreThanItCanHoldAndStaysAsItWas) {
    VarRecord record;
    record << 'a';
    const char byte = 'b';
    EXPECT_THROW(record.write(&byte, std::numeric_limits<int>::max()),
                 VarRecord::VarRecordException);
    EXPECT_EQ(record.setData(0x80000000ul, &byte), 0);
    EXPECT_THROW(VarRecord{0xFFFFFFFFu}, VarRecord::VarRecordException);
    record << 'b';
    EXPECT_EQ(bytesOf(record), "ab");
}

}  // namespace
