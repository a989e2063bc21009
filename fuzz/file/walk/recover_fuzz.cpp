// Of a file of any bytes a walk accounts for every byte. What recover makes of it is a block file
// that the library opens, with only data that stood in those bytes; recovering that gives the same
// once more, repacking the same blocks. What verify finds sound `verify --quick` finds sound too,
// and of that recover keeps every block that a reader sees; recover finds sound only what verify
// does.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "file/block/block_kit.h"
#include "file/walk/walked.h"
#include "require.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"
#include "terminal/failure.h"
#include "terminal/terminal.h"

using namespace tbfile;

namespace {

using Make = int (*)(const Options&);

int made(Make make, const Path& input, const Path& output) {
    Options options;
    options.input = input;
    options.output = output;
    options.force = true;
    const int status = make(options);
    require(finishOutput());
    return status;
}

int checked(const Path& input, bool quick) {
    Options options;
    options.input = input;
    options.quick = quick;
    const int status = verify(options);
    require(finishOutput());
    return status;
}

/// The blocks that the library reads from a file, in the order of its index; of several with one
/// identifier the first. Those that are not whole are left out.
std::vector<block_kit::Block> blocksOf(const Path& name) {
    TarvFileRead file;
    require(file.open(name.c_str()) == 1);
    std::vector<block_kit::Block> blocks;
    unsigned long id = 0;
    for (int more = file.getIndex()->getFirstID(id); more; more = file.getIndex()->getNextID(id)) {
        TarvBlocFile block;
        const auto isSame = [&](const block_kit::Block& each) { return each.id == id; };
        if (std::ranges::none_of(blocks, isSame) && file.getBloc(id, block))
            blocks.push_back(block_kit::seen(block));
    }
    return blocks;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In memory where the machine has such a place.
    static const bool isQuiet =
        setenv("TMPDIR", "/dev/shm", 0) == 0 && std::freopen("/dev/null", "w", stdout) != nullptr;
    require(isQuiet);
    static const TempFolder folder;
    static const Path given = folder / "given", rescued = folder / "rescued",
                      again = folder / "again";
    toolbox::testing::RecordingPrompt told;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    require(corpus::Walked(bytes).isGapless());

    folder.write("given", bytes);
    std::filesystem::remove(rescued);
    int status = kCannotRun;
    try {
        status = made(recover, given, rescued);
    } catch (const Failure&) {  // nothing was found
        require(!std::filesystem::exists(rescued));
        return 0;
    }
    require(folder.read("given") == bytes);
    const int sound = checked(given, false);
    const int quick = checked(given, true);
    require(sound != kSound || quick == kSound);
    require(sound == kSound || status != kSound);

    const auto blocks = blocksOf(rescued);
    for (const block_kit::Block& block : blocks)
        require(bytes.find(block.data) != std::string::npos);
    if (status == kSound || quick == kSound)
        for (const block_kit::Block& block : blocksOf(given))
            require(std::ranges::find(blocks, block) != blocks.end());
    (void)made(recover, rescued, again);
    require(folder.read("again") == folder.read("rescued"));
    // Of several blocks with one identifier only the first is left by this, which it says.
    require(made(repack, rescued, again) <= kFindings);
    require(blocksOf(again) == blocks);
    require(told.boxes.empty());
    return 0;
}
