#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "block/block_kit.h"
#include "support/temp_folder.h"

using namespace block_kit;

namespace {

/// The bytes of the first dump in a document: lines "offset  byte byte ...  |text|", where "*"
/// stands for the line before it, again and again up to the next offset. Empty when there is none.
std::string dumpIn(const char* document) {
    std::ifstream file(document);
    std::string bytes, line, repeated;
    bool inside = false;
    while (std::getline(file, line)) {
        if (line == "*") {
            repeated = bytes.substr(bytes.size() - 16);
            continue;
        }
        const bool isDump = line.size() >= 8 && line.find_first_not_of("0123456789abcdef") == 8;
        if (line.size() < 8 ||
            (!isDump && line.find_first_not_of("0123456789abcdef") != std::string::npos)) {
            if (inside) break;
            continue;
        }
        inside = true;
        const std::size_t offset = std::stoul(line.substr(0, 8), nullptr, 16);
        while (!repeated.empty() && bytes.size() < offset) bytes += repeated;
        repeated.clear();
        EXPECT_EQ(bytes.size(), offset);
        std::istringstream fields(line.substr(8, line.find('|') - 8));
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
    ASSERT_EQ(file.open(name.c_str()), 1);
    file.getHeader()->setDescription("Example");
    setDates(*file.getHeader());
    file.getIndex()->setDescription("Master index");
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
    const std::string name = folder / "header";
    TarvFileWrite file;
    file.setFile(
        new APIFile(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS));
    TarvFileHeader written;
    EXPECT_EQ(written.getVersionFile(), 100u);
    EXPECT_EQ(written.getdateCreation() - TarvDate(), 0);
    setDates(written);
    written.setDescription(std::string(130, 'd'));
    written.setOffsetMasterNdx(0xFFFFFFFF);
    written.setVersion(4);
    ASSERT_EQ(written.write(file), 1);

    TarvFileHeader read;
    ASSERT_EQ(file.getFile()->SeekToBegin() && read.read(file), 1);
    EXPECT_EQ(file.getFile()->CurOffset(), 160u);
    EXPECT_EQ(read.getVersionFile(), 210u);
    EXPECT_EQ(read.getVersion(), 4u);
    EXPECT_EQ(read.getOffsetMasterNdx(), 0xFFFFFFFFu);
    EXPECT_EQ(read.getDescription(), std::string(128, 'd'));
    EXPECT_EQ(static_cast<long>(read.getTimeStamp()), static_cast<long>(TarvDate(2001, 5, 2)));
    EXPECT_EQ(static_cast<long>(read.getnetDate()), -1);
    EXPECT_EQ(wordAt(folder.read("header"), 144), 0xFFFFFFFFu);
    EXPECT_EQ(read.read(file), 0);
}

TEST(BlockLayout, HeaderOfTheOldestFormatIsShorterAndOthersNeedTheirTerminator) {
    TempFolder folder;
    const struct {
        std::string bytes;
        int result;
        unsigned long format;
    } cases[] = {
        {header(100, 0, 0), 1, 100},
        {header(100, 0, 0) + "more", 1, 100},
        {header(210, 0, 0), 1, 210},
        {header(205, 0, 0), 1, 205},
        {header(210, 0, 0).substr(0, 156) + word(0xFFFFFFFE), 0, 210},
        {header(210, 0, 0).substr(0, 159), 0, 210},
        {header(100, 0, 0).substr(0, 155), 0, 0},
    };
    for (const auto& each : cases) {
        const std::string name = folder.write("header", each.bytes);
        TarvFileRead file;
        file.setFile(new APIFile(name.c_str(), GENERIC_READ, 0, OPEN_EXISTING));
        TarvFileHeader read;
        EXPECT_EQ(read.read(file), each.result);
        if (!each.result) continue;
        EXPECT_EQ(read.getVersionFile(), each.format);
        EXPECT_EQ(file.getFile()->CurOffset(), each.format == 100 ? 156u : 160u);
    }
}

}  // namespace
