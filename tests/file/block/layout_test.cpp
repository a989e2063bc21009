#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <utility>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"
#include "toolbox/messages.h"

using namespace block_kit;

namespace {

/// The bytes of a dump of the document, the first after `heading`: lines "offset  byte byte ...
/// |text|", where "*" stands for the line before it, again and again up to the next offset.
std::string dumpAfter(const std::string& heading) {
    std::ifstream file(TOOLBOX_BLOCK_DOCUMENT);
    std::string bytes;
    bool repeats = false;
    std::string line;
    while (std::getline(file, line) && line != heading) continue;
    while (std::getline(file, line)) {
        if (line == "```" && !bytes.empty()) break;
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

/// Writes the document's example; the bytes of the file.
std::string example(bool checksums) {
    TempFolder folder;
    const std::string name = folder / "example.dat";
    TarvFileWrite file;
    file.setChecksums(checksums);
    const auto language = std::exchange(GMSG::language, GMSG::English);
    EXPECT_EQ(file.open(name.c_str()), 1);
    GMSG::language = language;
    file.getHeader()->setDescription("Example");
    file.getHeader()->setdateCreation(TarvDate(2001, 4, 30));
    file.getHeader()->setTimeStamp(TarvDate(2001, 5, 2));
    file.getHeader()->setnetDate(TarvDate(2001, 2, 29));
    EXPECT_EQ(file.writeBloc(made({7, "ten bytes.", "A block", 3, 200})), 1);
    EXPECT_EQ(file.commit(), 1);
    EXPECT_EQ(file.close(), 1);
    return folder.read("example.dat");
}

TEST(BlockLayout, IsTheOneOfTheDocument) {
    EXPECT_EQ(example(false), dumpAfter("## Example"));
    EXPECT_EQ(example(true), dumpAfter("## Example with checksums"));
}

}  // namespace
