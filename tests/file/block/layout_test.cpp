#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <utility>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"
#include "toolbox/messages.h"

using namespace block_kit;

namespace {

/// The bytes of the dump in a document: lines "offset  byte byte ...  |text|", where "*" stands for
/// the line before it, again and again up to the next offset.
std::string dumpIn(const char* document) {
    std::ifstream file(document);
    std::string bytes;
    bool repeats = false;
    for (std::string line; std::getline(file, line);) {
        repeats = repeats || line == "*";
        std::istringstream fields(line.substr(0, line.find('|')));
        std::string offset;
        if (!(fields >> offset) || offset.size() != 8 ||
            offset.find_first_not_of("0123456789abcdef") != std::string::npos)
            continue;
        while (repeats && bytes.size() < std::stoul(offset, nullptr, 16))
            bytes += bytes.substr(bytes.size() - 16);
        repeats = false;
        EXPECT_EQ(bytes.size(), std::stoul(offset, nullptr, 16));
        for (std::string byte; fields >> byte;)
            bytes += static_cast<char>(std::stoul(byte, nullptr, 16));
    }
    return bytes;
}

void setDates(TarvFileHeader& header) {
    header.setdateCreation(TarvDate(2001, 4, 30));
    header.setTimeStamp(TarvDate(2001, 5, 2));
    header.setnetDate(TarvDate(2001, 2, 29));
}

TEST(BlockLayout, IsTheOneOfTheDocument) {
    TempFolder folder;
    const std::string name = folder / "example.dat";
    TarvFileWrite file;
    const auto language = std::exchange(GMSG::language, GMSG::English);
    ASSERT_EQ(file.open(name.c_str()), 1);
    GMSG::language = language;
    file.getHeader()->setDescription("Example");
    setDates(*file.getHeader());
    ASSERT_EQ(file.writeBloc(made({7, "ten bytes.", "A block", 3, 200})), 1);
    ASSERT_EQ(file.commit(), 1);
    ASSERT_EQ(file.close(), 1);

    const std::string bytes = folder.read("example.dat");
    EXPECT_EQ(bytes.size(), 474u);
    EXPECT_EQ(bytes, dumpIn(TOOLBOX_BLOCK_DOCUMENT));
    EXPECT_EQ(bytes.substr(160, 158), record(210, {7, "ten bytes.", "A block", 3, 200}));
}

TEST(BlockLayout, HeaderReadsBackAndIsAlwaysWrittenAsTheLatestFormat) {
    TempFolder folder;
    TarvFileWrite file;
    file.setFile(new APIFile((folder / "header").c_str(), GENERIC_READ | GENERIC_WRITE,
                             FILE_SHARE_READ, CREATE_ALWAYS));
    TarvFileHeader written;
    setDates(written);
    written.setDescription(std::string(130, 'd'));
    written.setOffsetMasterNdx(0xFFFFFFFF);
    ASSERT_EQ(written.write(file), 1);

    TarvFileHeader read;
    ASSERT_EQ(file.getFile()->SeekToBegin() && read.read(file), 1);
    EXPECT_EQ(file.getFile()->CurOffset(), 160u);
    EXPECT_EQ(read.getVersionFile(), 210u);
    EXPECT_EQ(read.getOffsetMasterNdx(), 0xFFFFFFFFu);
    EXPECT_EQ(read.getDescription(), std::string(128, 'd'));
    EXPECT_EQ(static_cast<long>(read.getTimeStamp()), static_cast<long>(TarvDate(2001, 5, 2)));
    EXPECT_EQ(static_cast<long>(read.getnetDate()), -1);
    EXPECT_EQ(read.read(file), 0);
}

}  // namespace
