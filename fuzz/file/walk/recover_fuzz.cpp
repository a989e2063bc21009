// Of a file of any bytes a walk accounts for every byte. What recover makes of it is a block file
// that the library opens, with only data that stood in those bytes; recovering that gives the same
// once more, repacking the same blocks. What verify finds sound `verify --quick` finds sound too,
// and of that recover keeps every block that a reader sees; recover finds sound only what verify
// does.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "commands/commands.h"
#include "file/block/plain_reader.h"
#include "file/walk/walked.h"
#include "require.h"
#include "support/text_fakes.h"
#include "terminal/failure.h"
#include "terminal/terminal.h"

using namespace tbfile;

namespace {

/// A folder of its own, in memory where the machine has such a place.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::is_directory("/dev/shm")
                                ? "/dev/shm"
                                : std::filesystem::temp_directory_path().string()) +
                           "/recover_fuzz_XXXXXX";
        require(mkdtemp(name.data()) != nullptr);
        path_ = name;
        require(std::freopen("/dev/null", "w", stdout) != nullptr);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    [[nodiscard]] Path operator/(const char* name) const { return path_ / name; }

  private:
    Path path_;
};

std::string bytesOf(const Path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

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

/// Whether every block of a file is in another.
bool hasBlocksOf(const block_kit::PlainReader& file, const block_kit::PlainReader& other) {
    return std::ranges::all_of(other.entries(), [&](const BlocItem& entry) {
        const auto block = other.block(entry.id);
        return block && block == file.block(entry.id);
    });
}

bool hasRepeated(const block_kit::PlainReader& file) {
    std::set<std::uint32_t> seen;
    return !std::ranges::all_of(
        file.entries(), [&](const BlocItem& entry) { return seen.insert(entry.id).second; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    static const Path given = folder / "given", rescued = folder / "rescued",
                      again = folder / "again";
    toolbox::testing::RecordingPrompt told;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    require(corpus::Walked(bytes).isGapless());

    std::ofstream(given, std::ios::binary) << bytes;
    std::filesystem::remove(rescued);
    int status = kCannotRun;
    try {
        status = made(recover, given, rescued);
    } catch (const Failure&) {  // nothing was found
        require(!std::filesystem::exists(rescued));
        return 0;
    }
    require(bytesOf(given) == bytes);
    const int sound = checked(given, false);
    const int quick = checked(given, true);
    require(sound != kSound || quick == kSound);
    require(sound == kSound || status != kSound);

    const std::string output = bytesOf(rescued);
    const block_kit::PlainReader after(output);
    TarvFileRead file;
    require(after.opens() && file.open(rescued.c_str()) == 1 &&
            block_kit::givesWhatItHolds(file, after));
    for (const BlocItem& entry : after.entries()) {
        const auto block = after.block(entry.id);
        require(block && bytes.find(block->data) != std::string::npos);
    }
    if (status == kSound || quick == kSound) {
        const block_kit::PlainReader before(bytes);
        require(before.opens() && hasBlocksOf(after, before));
    }
    (void)made(recover, rescued, again);
    require(bytesOf(again) == output);
    // Of several blocks with one identifier only the first is left by this, which it says.
    require(made(repack, rescued, again) == (hasRepeated(after) ? kFindings : kSound));
    require(hasBlocksOf(block_kit::PlainReader(bytesOf(again)), after));
    require(told.boxes.empty());
    return 0;
}
