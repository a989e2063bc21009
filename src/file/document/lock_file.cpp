// A lock is read without being taken: first in a way that its holder's share mode refuses, which
// tells that the holder lives, then in a way that it allows.
#include "file/document/lock_file.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "file/document/lock_text.h"
#include "file/file_system.h"
#include "file/replacement.h"
#include "platform/scoped_file.h"

namespace toolbox::locks {

using platform::ErrorCode;

namespace {

constexpr std::size_t kMarkDigits = 8;

platform::SystemInfo& host() {
    return *platform::current().system;
}

/// Tokens of this process.
std::vector<std::string>& tokens() {
    static std::vector<std::string> held;
    return held;
}

/// A lock file's bytes, and whether its holder's share mode was met.
struct Content {
    ErrorCode error = 0;
    bool isOpen = false;
    std::string bytes;
};

Content readWith(const std::string& name, std::uint32_t share) {
    Content content;
    platform::ScopedFile file(files(), name.c_str(), GENERIC_READ, share, OPEN_EXISTING);
    content.error = file.error();
    if (!file.valid()) return content;
    content.bytes.resize(kLongest);
    std::uint32_t got = 0;
    content.error = file.read(content.bytes.data(), content.bytes.size(), got);
    content.bytes.resize(got);
    return content;
}

Content read(const std::string& name) {
    constexpr std::chrono::milliseconds kPause{20};
    constexpr int kTries = 10;
    constexpr std::uint32_t kAsHolderForbids = FILE_SHARE_READ | FILE_SHARE_DELETE;
    Content content;
    // Windows gives this for a file that is being removed.
    for (int tries = 0; tries < kTries; ++tries) {
        content = readWith(name, kAsHolderForbids);
        if (content.error != ERROR_ACCESS_DENIED) break;
        std::this_thread::sleep_for(kPause);
    }
    if (content.error != ERROR_SHARING_VIOLATION) return content;
    content = readWith(name, kAsHolderForbids | FILE_SHARE_WRITE);
    content.isOpen = true;
    return content;
}

bool isOfThisMachine(const LockHolder& holder) {
    return holder.host == host().hostName() && holder.machine == host().machineIdentity();
}

/// Whether the process that a lock of this machine names still runs.
bool lives(const LockHolder& holder) {
    if (holder.boot != host().bootIdentity()) return false;
    const auto start = host().processStart(holder.process);
    if (!start) return false;
    if (!start->empty() && !holder.start.empty() && *start != holder.start) return false;
    return holder.process != host().processId() ||
           std::ranges::find(tokens(), holder.token) != tokens().end();
}

LockOutcome outcomeOf(const Content& content, const LockHolder& holder) {
    if (content.isOpen || content.error == ERROR_ACCESS_DENIED) return LockOutcome::held;
    if (!holder.isKnown() || !isOfThisMachine(holder)) return LockOutcome::elsewhere;
    return lives(holder) ? LockOutcome::held : LockOutcome::left;
}

/// When a file was written, in seconds since 1970; 0 when nobody tells.
std::int64_t writtenAt(const std::string& name) {
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    const auto found = files().find(name.c_str());
    return found.size() == 1 ? found.front().written / kPerSecond : 0;
}

/// The same file by the name that its folder has it under: a short name is spelled out.
std::string spelledOut(const std::string& name) {
    const auto found = files().find(name.c_str());
    if (found.size() != 1) return name;
    std::string spelled = name.substr(0, lastSeparator(name) + 1) + found.front().name;
    return files().isSameFile(name.c_str(), spelled.c_str()) ? spelled : name;
}

}  // namespace

LockPlace placeOf(const std::string& document) {
    LockPlace place;
    std::string full;
    std::string target;
    place.error = document.empty() ? ErrorCode{ERROR_PATH_NOT_FOUND}
                                   : files().fullName(document.c_str(), full);
    if (place.error != ERROR_SUCCESS) return place;
    place.error = files().followLinks(full.c_str(), target);
    if (place.error == ERROR_SUCCESS) {
        target = spelledOut(target);
        if (!isReadOnlyFile(target)) place.like = target;
    }
    if (place.error == ERROR_FILE_NOT_FOUND) place.error = ERROR_SUCCESS;
    place.name = target + std::string(kLockEnd);
    return place;
}

LockReport reportOf(const std::string& name) {
    LockReport report;
    const Content content = read(name);
    if (content.error == ERROR_FILE_NOT_FOUND) return report;
    if (content.error != ERROR_SUCCESS && content.error != ERROR_ACCESS_DENIED &&
        content.error != ERROR_SHARING_VIOLATION) {
        report.outcome = LockOutcome::impossible;
        report.error = content.error;
        return report;
    }
    report.holder = holderIn(content.bytes);
    if (!report.holder.isKnown()) report.holder.seen = writtenAt(name);
    report.outcome = outcomeOf(content, report.holder);
    const std::int64_t now = host().now();
    if (report.holder.seen > 0)
        report.age = std::max<std::int64_t>(now, report.holder.seen) - report.holder.seen;
    return report;
}

LockHolder ourselves() {
    constexpr int kParts = 4;
    LockHolder holder;
    holder.user = host().userName();
    holder.host = host().hostName();
    holder.machine = host().machineIdentity();
    holder.boot = host().bootIdentity();
    holder.process = host().processId();
    holder.start = host().processStart(holder.process).value_or("");
    for (int part = 0; part < kParts; ++part) holder.token += digitsOfChance();
    holder.taken = holder.seen = host().now();
    return holder;
}

void remember(const std::string& token) {
    tokens().push_back(token);
}

void forget(const std::string& token) {
    std::erase(tokens(), token);
}

std::string nameOfTakingOver(const std::string& name, const std::string& token) {
    // A '?' can stand in no name.
    return name + '.' + token.substr(token.starts_with('?') ? 1 : 0, kMarkDigits);
}

void removeTakingsOver(const std::string& name) {
    const std::size_t folder = lastSeparator(name) + 1;
    for (const platform::FoundFile& found : files().find((name + ".*").c_str())) {
        const std::string each = name.substr(0, folder) + found.name;
        const std::string mark = each.substr(std::min(each.size(), name.size() + 1), kMarkDigits);
        const bool isMark = mark.size() == kMarkDigits &&
                            mark.find_first_not_of("0123456789abcdef") == std::string::npos;
        if (!isMark) continue;
        // Somebody's own file may have such a name.
        const LockReport report = reportOf(each);
        const bool isOurs = report.holder.isKnown() || found.size == 0;
        if (isOurs && report.outcome != LockOutcome::held) discard(each);
    }
}

}  // namespace toolbox::locks
