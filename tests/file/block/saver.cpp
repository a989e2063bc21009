// Saves a block file safely, again and again until it is killed:  block_saver FILE
// FILE.started is there from before the first save on.
#include <fstream>

#include "file/block/block_kit.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string name = argv[1];
    std::ofstream(name + ".started") << "x";
    for (std::uint32_t number = 0;; ++number)
        if (!block_kit::save(name, block_kit::generation(number), true)) return 1;
}
