// Whatever bytes stand in a lock file, in a state of unsaved work and in the record of one: the
// document opens and stays as it is, its lock can be had at least after a decision, a state is
// opened only when it is whole, and everything can be thrown away.
//
// The first byte chooses the file that the rest goes into.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "file/document/document_lock.h"
#include "file/document/plan_kit.h"
#include "require.h"
#include "support/text_fakes.h"

using namespace plan_kit;
using toolbox::LockOutcome;

namespace {

void lock(const std::string& name) {
    toolbox::DocumentLock lock;
    const toolbox::LockReport met = lock.take(name);
    require(met.holder.user.find('\n') == std::string::npos);
    if (!lock.isTaken()) {
        // Of this process, which runs, or of nobody knows whom.
        require(met.outcome == LockOutcome::held || met.outcome == LockOutcome::elsewhere);
        require(met.age >= -1);
        (void)lock.takeOver(name, met.holder);
        require(lock.isTaken() == (met.outcome == LockOutcome::elsewhere));
    }
    require(!lock.isTaken() || lock.isStillOurs());
}

void recover(const std::string& name) {
    Desk desk;
    require(bool(desk->open(RWCString(name))));
    require(desk.plan.text == "old.");
    desk->close();
    for (const TvRecoverable& work : TvDocumentFile::recoverable({RWCString(name)})) {
        Desk other;
        const bool isOpen = bool(other->recover(work));
        require(isOpen <= work.whole);
        require(textIn(name) == "old.");
        if (isOpen) other->close();
        TvDocumentFile::discard(work);
    }
    require(TvDocumentFile::recoverable({RWCString(name)}).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In memory where the machine has such a place.
    static const bool isQuiet = setenv("TMPDIR", "/dev/shm", 0) == 0;
    require(isQuiet);
    static const TempFolder folder;
    static const TempFolder recovery;
    static const std::string name = folder / "plan.dat";
    toolbox::testing::RecordingPrompt told;
    TvDocumentFile::setRecoveryFolder(RWCString(recovery.path()));
    if (!std::filesystem::exists(name)) {
        Plan plan("old.");
        TvDocumentFile file(plan);
        require(bool(file.saveAs(RWCString(name))));
    }
    if (size == 0) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0] % 3) {
        case 0:
            folder.write("plan.dat.lock", bytes);
            lock(name);
            std::filesystem::remove(folder / "plan.dat.lock");
            break;
        case 1:
            folder.write("plan.dat.autosave-01234567", bytes);
            recover(name);
            break;
        default:
            recovery.write("01234567.unsaved", bytes);
            recover(name);
    }
    require(folder.names() == std::vector<std::string>{"plan.dat"});
    require(recovery.names().empty());
    require(told.boxes.empty());
    return 0;
}
