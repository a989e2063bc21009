// One table from the system's codes to reasons.
#include "file/document/reasons.h"

#include <algorithm>
#include <array>

namespace toolbox::document {
namespace {

struct CodeReason {
    platform::ErrorCode code;
    Reason reason;
};

// The system's own names of the codes exist on Windows only.
constexpr auto kReasons = std::to_array<CodeReason>({
    {2, Reason::notThere},         // file not found
    {3, Reason::folderGone},       // path not found
    {5, Reason::noRight},          // access denied
    {8, Reason::noMemory},         // not enough memory
    {14, Reason::noMemory},        // no more memory
    {15, Reason::folderGone},      // invalid drive
    {19, Reason::mediumReadOnly},  // write protect
    {21, Reason::folderGone},      // not ready
    {23, Reason::deviceFailed},    // checksum of the device
    {25, Reason::deviceFailed},    // seek
    {27, Reason::deviceFailed},    // sector not found
    {29, Reason::deviceFailed},    // write fault
    {30, Reason::deviceFailed},    // read fault
    {31, Reason::deviceFailed},    // device failure
    {32, Reason::inUse},           // sharing violation
    {33, Reason::inUse},           // lock violation
    {39, Reason::diskFull},        // handle disk full
    {51, Reason::folderGone},      // remote computer not listed
    {53, Reason::folderGone},      // bad netpath
    {55, Reason::folderGone},      // dev not exist
    {59, Reason::folderGone},      // unexpected network error
    {64, Reason::folderGone},      // netname deleted
    {65, Reason::noRight},         // network access denied
    {67, Reason::folderGone},      // bad net name
    {111, Reason::nameTooLong},    // buffer overflow
    {112, Reason::diskFull},       // disk full
    {123, Reason::badName},        // invalid name
    {161, Reason::badName},        // bad pathname
    {206, Reason::nameTooLong},    // file name too long
    {223, Reason::tooLarge},       // file too large
    {1117, Reason::deviceFailed},  // io device
    {1224, Reason::inUse},         // user mapped file
    {1231, Reason::folderGone},    // network unreachable
    {1295, Reason::diskFull},      // disk quota exceeded
    {1314, Reason::noRight},       // privilege not held
});

/// Windows says of a name that is too long that its folder is not there. What is written beside has
/// a name up to 18 characters longer.
bool isTooLong(const std::string& name, Doing doing) {
#if defined(_WIN32)
    constexpr std::size_t kMostBeside = 18;
    return name.size() + (doing == Doing::writing ? kMostBeside : 0) >= MAX_PATH;
#else
    (void)name, (void)doing;
    return false;
#endif
}

}  // namespace

Fault faultOf(platform::ErrorCode code, Doing doing, const std::string& name) {
    if (code == ERROR_SUCCESS) return {};
    const auto* const found = std::ranges::find(kReasons, code, &CodeReason::code);
    Reason reason = found == kReasons.end() ? Reason::other : found->reason;
    const bool isGone = reason == Reason::notThere || reason == Reason::folderGone;
    if (isGone && isTooLong(name, doing)) reason = Reason::nameTooLong;
    // A file that is to be created can only miss its folder.
    if (reason == Reason::notThere && doing == Doing::writing) reason = Reason::folderGone;
    return {reason, code};
}

TvDocumentResult failure(const Fault& fault, const std::string& name, Doing doing) {
    TvDocumentResult result;
    result.ok = false;
    result.reason = fault.reason;
    result.code = fault.code;
    result.name = RWCString(name);
    result.reading = doing == Doing::reading;
    return result;
}

TvDocumentHolder holderOf(const LockReport& report) {
    TvDocumentHolder holder;
    holder.user = RWCString(report.holder.user);
    holder.machine = RWCString(report.holder.host);
    holder.process = report.holder.process;
    holder.since = static_cast<std::time_t>(report.holder.taken);
    holder.age = static_cast<long>(report.age);
    holder.onThisMachine = report.outcome == LockOutcome::held;
    return holder;
}

}  // namespace toolbox::document
