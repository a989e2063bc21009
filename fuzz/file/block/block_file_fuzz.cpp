// Of a file of any bytes that opens, each block that its index names is given as it stands in those
// bytes or not at all, and the same each time.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "file/block/block_kit.h"
#include "require.h"
#include "support/text_fakes.h"

using namespace block_kit;

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
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Block before{77, "kept", "as it was"};
    TarvFileRead file;
    if (file.open(fileOf(data, size)) == 1) {
        unsigned long id = 0;
        for (int more = file.getIndex()->getFirstID(id); more;
             more = file.getIndex()->getNextID(id)) {
            TarvBlocFile out = made(before), again = made(before);
            const int found = file.getBloc(id, out);
            require(found == file.getBloc(id, again) && seen(out) == seen(again));
            require(found ? standsIn(bytes, seen(out)) : seen(out) == before);
        }
    }
    require(told.boxes.empty());
    return 0;
}
