// Takes the lock of a document and gives it back, or ends in the middle.
//     document_locker FILE N          ends with 9 before its N-th call of the system
//     document_locker FILE 0 REPORTS  writes what came of it into a new file in that folder and
//                                     waits until the file "all" is there
// A third or fourth argument "blind" lets the share modes of files mean nothing. Otherwise it ends
// with 0 when it had the lock and with 1 when not.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <thread>

#include "file/document/document_lock.h"
#include "support/faulty_files.h"

namespace {

void reportAndWait(const std::filesystem::path& folder, bool has) {
    using namespace std::chrono_literals;
    const auto process = toolbox::platform::current().system->processId();
    std::ofstream(folder / ((has ? "has-" : "not-") + std::to_string(process)));
    for (int tries = 0; tries < 6000 && !std::filesystem::exists(folder / "all"); ++tries)
        std::this_thread::sleep_for(10ms);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    int left = std::atoi(argv[2]);
    FaultyFiles calls;
    calls.ignoresShares = std::string_view(argv[argc - 1]) == "blind";
    calls.before = [&](FileCall, int) {
        if (--left == 0) std::_Exit(9);
    };
    toolbox::DocumentLock lock;
    (void)lock.take(argv[1]);
    const bool has = lock.isStillOurs();
    if (left < 0 && argc > 3 && std::atoi(argv[2]) == 0) reportAndWait(argv[3], has);
    lock.refresh();
    lock.release();
    return has ? 0 : 1;
}
