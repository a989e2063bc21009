// A program that works on a document.
//     document_worker kill FILE RECOVERY NOTES N
//         Edits, keeps the state and saves, three times over; ends with 9 before its N-th call of
//         the system, as if it were killed there, and with 0 when it makes fewer.
//     document_worker save FILE RECOVERY NOTES COUNT [blind]
//         Adds COUNT words to the document, a save each, four between opening and closing it; waits
//         while somebody else has it. "blind" lets the share modes of files mean nothing.
// What it has done stands in the file NOTES, noted once it was told that it is.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <thread>

#include "file/document/proof_kit.h"
#include "support/faulty_files.h"

using namespace proof_kit;

namespace {

int killed(const std::string& name, std::ofstream& notes) {
    Desk desk;
    desk->setAutosave(1, 0);
    if (!desk->open(RWCString(name))) return 3;
    for (int version = 1; version <= kVersions; ++version) {
        desk.edit(versionText(version));
        if (desk->idle() && desk->lastAutosave()) notes << "kept " << version << std::endl;
        // The last one is thrown away by a clean end.
        if (version == kVersions) break;
        if (desk->save()) notes << "saved " << version << std::endl;
    }
    notes << "closing 0" << std::endl;
    return desk->close() ? 0 : 4;
}

int saved(const std::string& name, int count, std::ofstream& notes) {
    using namespace std::chrono_literals;
    const auto process = toolbox::platform::current().system->processId();
    for (int done = 0; done < count;) {
        Desk desk;
        if (!desk->open(RWCString(name)) || desk->isReadOnly()) {
            std::this_thread::sleep_for(40ms);
            continue;
        }
        for (int each = 0; each < 4 && done < count; ++each, ++done) {
            const std::string word = wordOf(process, done);
            desk.edit(desk.plan.text + word);
            TvDocumentResult result = desk->save();
            // On Windows readers keep a file from its place: told, and tried again.
            for (int again = 0; result.reason == TvDocumentResult::inUse && again < 50; ++again) {
                std::this_thread::sleep_for(40ms);
                result = desk->save();
            }
            if (!result) return 3;
            notes << word << std::endl;
        }
        desk->close();
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 6) return 2;
    const std::string name = argv[2];
    TvDocumentFile::setRecoveryFolder(RWCString(argv[3]));
    std::ofstream notes(argv[4]);
    int left = std::atoi(argv[5]);
    FaultyFiles calls;
    calls.ignoresShares = std::string_view(argv[argc - 1]) == "blind";
    if (std::string_view(argv[1]) == "save") return saved(name, left, notes);
    calls.before = [&](FileCall, int) {
        if (--left == 0) std::_Exit(9);
    };
    return killed(name, notes);
}
