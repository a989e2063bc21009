// Durations, and objects by window and by other keys.
#include <algorithm>
#include <array>

#include "toolbox/processes.h"

namespace {

class Associations {
  public:
    bool store(const void* key, void* object) {
        Slot* const free = find(nullptr);
        if (free) *free = {key, object};
        return free != nullptr;
    }

    /// `otherwise` when the key is not there; a null key never is.
    void* fetch(const void* key, bool remove, void* otherwise) {
        Slot* const slot = key ? find(key) : nullptr;
        if (!slot) return otherwise;
        void* const object = slot->object;
        if (remove) *slot = {};
        return object;
    }

  private:
    struct Slot {
        const void* key = nullptr;  ///< null: free
        void* object = nullptr;
    };

    Slot* find(const void* key) {
        const auto found = std::find_if(slots_.begin(), slots_.end(),
                                        [key](const Slot& slot) { return slot.key == key; });
        return found == slots_.end() ? nullptr : &*found;
    }

    std::array<Slot, 100> slots_{};
};

Associations windows;
Associations pointers;
void* pending = nullptr;

}  // namespace

int SetHandleObject(void* object, void* window) {
    if (window) return windows.store(window, object) ? 1 : 0;
    pending = object;
    return 1;
}

void* GetHandleObject(HWND window, int remove) {
    return windows.fetch(window, remove != 0, pending);
}

int SetPointerObject(void* object, void* key) {
    return key && pointers.store(key, object) ? 1 : 0;
}

void* GetPointerObject(void* key, int remove) {
    return pointers.fetch(key, remove != 0, nullptr);
}

void Secs2HMS(long seconds, int* h, int* m, int* s) {
    constexpr long kHour = 3600;
    constexpr long kMinute = 60;
    *h = static_cast<int>(seconds / kHour);
    *m = static_cast<int>(seconds % kHour / kMinute);
    *s = static_cast<int>(seconds % kMinute);
}
