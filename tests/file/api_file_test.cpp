#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <vector>

#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"
#include "toolbox/files.h"

namespace {

class ApiFile : public testing::Test {
  protected:
    APIFile created(const std::string& name) const {
        return {(folder / name).c_str(), GENERIC_READ | GENERIC_WRITE,
                FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS};
    }
    APIFile reading(const std::string& name) const {
        return {(folder / name).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                OPEN_EXISTING};
    }

    TempFolder folder;
    toolbox::testing::RecordingPrompt prompt;
};

TEST_F(ApiFile, WritesEachTypeLittleEndianWithFourByteLongs) {
    const auto exchange = [&](auto... values) {
        APIFile file = reading("types");
        for (const int result : {file.Read(values)...}) EXPECT_EQ(result, 1);
        APIFile copy = created("copy");
        for (const int result : {copy.Write(values)...}) EXPECT_EQ(result, 1);
        return std::tuple(values...);
    };
    folder.write("types", std::string("A\xFE\xFF\4\3\2\1\xFE\xFF\xFF\xFF\xFE\xFF\xFF\xFF\0\0\x80"
                                      "\x3F\0\0\0\0\0\0\xE0\xBF\xE9",
                                      28));
    const auto back =
        exchange(char{}, short{}, 0, 0l, 0ul, 0.0f, 0.0, static_cast<unsigned char>(0));
    EXPECT_EQ(back, std::tuple('A', short{-2}, 0x01020304, -2l, 0xFFFFFFFEul, 1.0f, -0.5,
                               static_cast<unsigned char>(0xE9)));
    EXPECT_EQ(folder.read("copy"), folder.read("types"));
}

TEST_F(ApiFile, TransfersAnArrayInOneCallAndZeroesWhatIsMissing) {
    APIFile file = created("array");
    std::vector<long> numbers(1000, -2);
    numbers.back() = 0x01020304;
    FaultyFiles counted;
    EXPECT_EQ(file.Write(numbers.data(), 1000), 1);
    EXPECT_EQ(file.SeekToBegin(), 1);
    std::vector<long> back(1000);
    EXPECT_EQ(file.Read(back.data(), 1000), 1);
    EXPECT_EQ(back, numbers);
    EXPECT_EQ(counted.made(FileCall::write), 1);
    EXPECT_EQ(counted.made(FileCall::read), 1);
    EXPECT_EQ(file.SeekTo(3997), 1);
    EXPECT_EQ(file.Read(back.data(), 2), 1);
    EXPECT_EQ(back[0], 0x010203);
    EXPECT_EQ(back[1], 0);
    for (const unsigned long count : {0x40000000ul, std::numeric_limits<unsigned long>::max()}) {
        EXPECT_EQ(file.Read(back.data(), count), 0);
        EXPECT_EQ(file.Write(back.data(), count), 0);
    }
}

TEST_F(ApiFile, EndOfFileFailsInSilence) {
    folder.write("end", "a");
    APIFile file = reading("end");
    char buffer[4] = "xxx";
    EXPECT_EQ(file.read(buffer, 1), 1);
    EXPECT_EQ(file.read(buffer, 3), 0);
    EXPECT_EQ(std::string(buffer, 4), std::string(4, '\0'));
    EXPECT_EQ(file.Error(), 0ul);
    EXPECT_EQ(file.Eof(), 0);
    EXPECT_TRUE(prompt.boxes.empty());
}

TEST_F(ApiFile, FailuresOfReadAndWriteAreStoredAndShown) {
    APIFile file = created("faults");
    FaultyFiles faults;
    char buffer[4] = "abc";

    faults.fail(FileCall::read, 1, ERROR_HANDLE_EOF);
    EXPECT_EQ(file.read(buffer, 4), 0);
    EXPECT_EQ(file.Error(), ERROR_HANDLE_EOF);
    EXPECT_EQ(file.Eof(), 1);
    ASSERT_EQ(prompt.boxes.size(), 1u);

    file.ClearErr();
    faults.shorten(FileCall::write, 1, 3);
    EXPECT_EQ(file.write(buffer, 4), 0);
    EXPECT_EQ(file.Error(), ERROR_DISK_FULL);
    ASSERT_EQ(prompt.boxes.size(), 2u);
    EXPECT_NE(prompt.boxes[0].text, prompt.boxes[1].text);

    // What is not a read or write stores its code only.
    faults.fail(FileCall::seek, 1, ERROR_INVALID_HANDLE, true);
    EXPECT_EQ(file.SeekToEnd(), 0);
    EXPECT_EQ(file.CurOffset(), 0xFFFFFFFFul);
    EXPECT_EQ(prompt.boxes.size(), 2u);
}

TEST_F(ApiFile, ReadsAtAnOffsetLeaveThePositionAlone) {
    APIFile file = created("mixed");
    ASSERT_EQ(file.write("0123456789", 10), 1);
    ASSERT_EQ(file.SeekToBegin(), 1);
    char c = 0;
    char part[3] = {};
    unsigned long got = 0;
    const auto at = [&](unsigned long long offset) {
        EXPECT_EQ(file.readAt(offset, part, 3, got), 1);
        return std::string(part, got);
    };
    EXPECT_EQ(file.Read(c), 1);
    EXPECT_EQ(at(5), "567");
    EXPECT_EQ(at(8), "89");
    EXPECT_EQ(at(0x100000000ull), "");
    EXPECT_EQ(file.CurOffset(), 1ul);
    EXPECT_EQ(file.Read(c), 1);
    EXPECT_EQ(at(7), "789");
    EXPECT_EQ(file.Write('x'), 1);
    EXPECT_EQ(folder.read("mixed"), "01x3456789");
}

TEST_F(ApiFile, CopiesShareTheOpenFile) {
    folder.write("shared", "0123456789");
    char c = 0;
    APIFile survivor = reading("missing");
    {
        APIFile first = reading("shared");
        APIFile second = first;
        EXPECT_EQ(first.Read(c), 1);
        EXPECT_EQ(second.Read(c), 1);
        EXPECT_EQ(c, '1');
        survivor = second;
    }
    EXPECT_EQ(survivor.Read(c), 1);
    EXPECT_EQ(c, '2');
}

}  // namespace
