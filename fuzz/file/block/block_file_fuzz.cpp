// A file of any bytes opens exactly when a plain reading of its bytes finds a header and an index;
// it then names the blocks of that index in their order, and each is fetched exactly when it stands
// whole in the file, with the description, versions and data that stand there.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "plain_reader.h"
#include "require.h"
#include "support/text_fakes.h"

namespace {

/// A file in memory that is given new bytes for each run.
const char* fileOf(const std::uint8_t* data, std::size_t size) {
    static const int memory = memfd_create("block file", 0);
    static const std::string name = "/proc/self/fd/" + std::to_string(memory);
    require(ftruncate(memory, 0) == 0);
    require(pwrite(memory, data, size, 0) == static_cast<ssize_t>(size));
    return name.c_str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    toolbox::testing::RecordingPrompt told;
    const block_kit::PlainReader bytes({reinterpret_cast<const char*>(data), size});
    TarvFileRead file;
    require(file.open(fileOf(data, size)) == (bytes.opens() ? 1 : 0));
    require(!bytes.opens() || givesWhatItHolds(file, bytes));
    require(told.boxes.empty());
    return 0;
}
