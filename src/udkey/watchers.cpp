// The watchers of the process. One that leaves while all are told is not told any more.
#include "udkey/watchers.h"

#include <algorithm>
#include <vector>

#include "toolbox/keys.h"

namespace toolbox {
namespace {

std::vector<KeyWatcher*>& watchers() {
    static std::vector<KeyWatcher*> all;
    return all;
}

}  // namespace

KeyWatcher::KeyWatcher() {
    watchers().push_back(this);
}

KeyWatcher::~KeyWatcher() {
    std::erase(watchers(), this);
}

int udkey::told(int done) {
    if (!done || watchers().empty()) return done;
    const std::vector<KeyWatcher*> now = watchers();
    for (KeyWatcher* const each : now)
        if (std::ranges::find(watchers(), each) != watchers().end()) each->keysChanged();
    return done;
}

}  // namespace toolbox
