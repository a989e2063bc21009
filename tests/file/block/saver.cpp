// Saves a block file safely and ends before its n-th call of the system, as if it were killed
// there.
//     block_saver FILE N
#include <cstdlib>

#include "file/block/block_kit.h"
#include "support/faulty_files.h"

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    int left = std::atoi(argv[2]);
    FaultyFiles calls;
    calls.before = [&](FileCall, int) {
        if (--left == 0) std::_Exit(9);
    };
    return block_kit::save(argv[1], block_kit::generation(1), true) ? 0 : 1;
}
