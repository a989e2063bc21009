#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "toolbox/files.h"

namespace {

class TextFile : public testing::Test {
  protected:
    /// The lines that reading these bytes gives, each followed by '|'.
    std::string linesOf(std::string_view bytes) {
        Iofile text(folder.write("text", bytes).c_str());
        EXPECT_EQ(text.readFile(), 1);
        std::string shown;
        for (const RWCString& line : text.getListOfString()) shown += line.str() + '|';
        return shown;
    }

    TempFolder folder;
};

TEST_F(TextFile, SplitsAtLineFeedsAndCutsLongLinesWithoutLosingAny) {
    EXPECT_EQ(linesOf(""), "");
    EXPECT_EQ(linesOf("\none\r\n\ntwo"), "|one\r||two|");
    const std::string most(511, 'm');
    EXPECT_EQ(linesOf(most + "\nx\n" + most + "m\n"), most + "|x|" + most + "|m|");
    // Longer than what is read at once.
    std::string bytes;
    for (int i = 0; i < 20'000; ++i) bytes += std::to_string(i) + '\n';
    std::string lines = bytes;
    std::ranges::replace(lines, '\n', '|');
    EXPECT_EQ(linesOf(bytes), lines);
}

TEST_F(TextFile, ReadingAppendsAndAFailureChangesNothing) {
    Iofile text(folder.write("text", "one\nlonger\n").c_str());
    text.addLine("first");
    EXPECT_EQ(text.readFile(), 1);
    EXPECT_EQ(text.readFile(), 1);
    EXPECT_EQ(text.getNumLine(), 5u);
    EXPECT_EQ(text.getMaxWidth(), 6);
    FaultyFiles faults;
    faults.fail(FileCall::read, 2, ERROR_READ_FAULT);
    EXPECT_EQ(text.readFile(), 0);
    EXPECT_EQ(text.getNumLine(), 5u);
}

TEST_F(TextFile, WritesEveryLineWithALineFeedAndFailsWhereverItFails) {
    folder.write("text", std::string(1000, 'o'));
    Iofile text((folder / "text").c_str());
    text.addLine("one");
    text.addBlankLine();
    text.addLine(RWCString("two\r"));
    EXPECT_EQ(text.writeFile(), 1);
    EXPECT_EQ(text.saveFile(), 1);
    EXPECT_EQ(folder.read("text"), "one\n\ntwo\r\n");
    for (int i = 0; i < 1000; ++i) text.addLine(std::string(200, 'x'));
    FaultyFiles faults;
    ASSERT_EQ(text.writeFile(), 1);
    const int writes = faults.made(FileCall::write);
    ASSERT_GT(writes, 1);
    for (int nth = 1; nth <= writes; ++nth) {
        faults.fail(FileCall::write, nth, ERROR_DISK_FULL);
        EXPECT_EQ(text.writeFile(), 0);
        faults.shorten(FileCall::write, nth, 10);
        EXPECT_EQ(text.saveFile(), 0);
    }
}

}  // namespace
