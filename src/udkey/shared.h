// What all managers of the process share, and what each has of its own.
#pragma once

#include <memory>

#include "udkey/groups.h"
#include "udkey/registry.h"
#include "udkey/selection.h"

namespace toolbox::udkey {

struct Shared {
    KeyRegistry keys;
    GroupTable groups;
    bool initialized = false;
};

/// Null outside initStaticVars() and destroyStaticVars().
inline constinit std::unique_ptr<Shared> sharedState;
[[nodiscard]] inline std::unique_ptr<Shared>& shared() {
    return sharedState;
}

/// The shared state once the keys are restored, else null.
[[nodiscard]] inline Shared* ready() {
    Shared* all = shared().get();
    return all && all->initialized ? all : nullptr;
}

struct ManagerState {
    Selection selection;
    IdList matching;
};

}  // namespace toolbox::udkey
