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

TEST(BlockLayout, IsTheOneOfTheDocument) {
    TempFolder folder;
    const std::string name = folder / "example.dat";
    TarvFileWrite file;
    const auto language = std::exchange(GMSG::language, GMSG::English);
    ASSERT_EQ(file.open(name.c_str()), 1);
    GMSG::language = language;
    file.getHeader()->setDescription("Example");
    file.getHeader()->setdateCreation(TarvDate(2001, 4, 30));
    file.getHeader()->setTimeStamp(TarvDate(2001, 5, 2));
    file.getHeader()->setnetDate(TarvDate(2001, 2, 29));
    ASSERT_EQ(file.writeBloc(made({7, "ten bytes.", "A block", 3, 200})), 1);
    ASSERT_EQ(file.commit(), 1);
    ASSERT_EQ(file.close(), 1);

    const std::string bytes = folder.read("example.dat");
    EXPECT_EQ(bytes, dumpIn(TOOLBOX_BLOCK_DOCUMENT));
}

}  // namespace
