// Of a file whose list of checksums has any data, the reader gives each block as it stands in the
// file or not at all, and a walk accounts for every byte. A list whose own sum is wrong changes
// nothing: all blocks are there.
#include <cstdint>
#include <string>

#include "file/block/block_kit.h"
#include "file/walk/walked.h"
#include "require.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"

using namespace block_kit;

namespace {

const std::vector<Block> kBlocks = {{1, "first", "One"},
                                    {2, record(210, {1, "inner", "a block as data"}), "Two"},
                                    {3, "", "Three"}};

/// A file with these blocks and this data of a list; `proven`: with the sum that belongs to it.
std::string fileWith(std::string list, bool proven) {
    std::string body, entries;
    for (const Block& block : kBlocks) {
        entries += word(block.id) + word(static_cast<std::uint32_t>(160 + body.size()));
        body += record(210, block);
    }
    const auto place = static_cast<std::uint32_t>(160 + body.size());
    if (proven) {
        const auto length = static_cast<std::uint32_t>(list.size() + 4);
        const std::string head = word(0xFFFFFFEE) + padded("Checksums", 128) + word(length) + list;
        list += word(toolbox::sumOf(head));
    }
    body += record(210, {0xFFFFFFEE, list, "Checksums"});
    const auto index = static_cast<std::uint32_t>(160 + body.size());
    return header(210, 0, index) + body +
           record(210, {0xFFFFFFEF, word(0xFFFFFFEE) + word(place) + entries, "index"});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TempFolder folder;
    toolbox::testing::RecordingPrompt told;
    if (size == 0) return 0;
    const bool proven = (data[0] & 1) != 0;
    const std::string bytes = fileWith({reinterpret_cast<const char*>(data) + 1, size - 1}, proven);
    folder.write("file", bytes);

    TarvFileRead file;
    require(file.open((folder / "file").c_str()) == 1);
    const auto state = file.getChecksumState();
    const Block before{77, "kept", "as it was"};
    for (const Block& block : kBlocks) {
        TarvBlocFile out = made(before);
        const int found = file.getBloc(block.id, out);
        require(found ? seen(out) == block : seen(out) == before);
        require(proven || found == 1);
    }
    const corpus::Walked walked(bytes);
    require(walked.isGapless());
    for (const toolbox::WalkFinding& found : walked.blocks())
        require(found.evidence != toolbox::Evidence::checksum || proven);
    require(proven || walked.blocks().size() >= kBlocks.size());
    require(proven || state != TarvFileRead::ChecksumsCurrent);
    require(told.boxes.empty());
    return 0;
}
