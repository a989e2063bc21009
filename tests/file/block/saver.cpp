// Saves a block file safely, in a process of its own.
//     block_saver FILE        again and again until it is killed
//     block_saver FILE wait   once, waiting before the rename until FILE.go is there
// FILE.started is there from before the first save on, or once it waits.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "file/block/block_kit.h"
#include "support/faulty_files.h"

namespace {

int saveOnce(const std::string& name) {
    using namespace std::chrono_literals;
    FaultyFiles calls;
    calls.before = [&](FileCall call, int nth) {
        if (call != FileCall::replace || nth != 2) return;  // 1: the backup
        std::ofstream(name + ".started") << "x";
        for (int wait = 0; wait < 20000 && !std::filesystem::exists(name + ".go"); ++wait)
            std::this_thread::sleep_for(1ms);
    };
    return block_kit::save(name, block_kit::generation(5), true) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const std::string name = argv[1];
    if (argc > 2) return saveOnce(name);
    std::ofstream(name + ".started") << "x";
    for (std::uint32_t number = 0;; ++number)
        if (!block_kit::save(name, block_kit::generation(number), true)) return 1;
}
