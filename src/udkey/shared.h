// What all managers of the process share, and what each has of its own.
#pragma once

#include <cstdint>
#include <memory>

#include "udkey/groups.h"
#include "udkey/registry.h"
#include "udkey/selection.h"

namespace toolbox::udkey {

/// Tells one filling of the dictionaries from the next.
[[nodiscard]] inline std::uint64_t nextFilling() {
    static std::uint64_t last = 0;
    return ++last;
}

struct Shared {
    KeyRegistry keys;
    GroupTable groups;
    bool initialized = false;
    std::uint64_t filling = nextFilling();
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
    /// The lists for the keys that are there: what was kept of others is dropped, and all match.
    ManagerState& of(const Shared& all) {
        if (filling != all.filling) begin(all);
        return *this;
    }
    void matchAll(const Shared& all) {
        matching.clear();
        for (const KeyEntry& entry : all.keys.entries()) matching.add(entry.id());
    }

    Selection selection;
    IdList matching;
    bool managerIsGone = false;

  private:
    void begin(const Shared& all) {
        selection.clear();
        matchAll(all);
        filling = all.filling;
    }
    std::uint64_t filling = 0;  ///< of the dictionaries, when the lists were begun
};

}  // namespace toolbox::udkey
