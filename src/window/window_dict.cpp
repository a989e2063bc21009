// Windows and their objects: the dictionary and the procedure that keeps it.
#include "window/window_dict.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "toolbox/windowing.h"

namespace toolbox::window {
namespace {

constexpr std::size_t kBuckets = 64;

struct Entry {
    HWND window;
    WindowObject* object;
};

using Bucket = std::vector<Entry>;

std::unique_ptr<std::array<Bucket, kBuckets>> dictionary;
Pending* innermost = nullptr;

Bucket& bucketOf(HWND window) {
    return (*dictionary)[WindowDict::hashHWND(window) % kBuckets];
}

auto entryOf(Bucket& bucket, HWND window) {
    return std::find_if(bucket.begin(), bucket.end(),
                        [window](const Entry& entry) { return entry.window == window; });
}

}  // namespace

bool hasDictionary() {
    return dictionary != nullptr;
}

void bind(HWND window, WindowObject& object) {
    bucketOf(window).push_back({window, &object});
}

WindowObject* unbind(HWND window) {
    if (!dictionary) return nullptr;
    Bucket& bucket = bucketOf(window);
    const auto entry = entryOf(bucket, window);
    if (entry == bucket.end()) return nullptr;
    WindowObject* const object = entry->object;
    bucket.erase(entry);
    return object;
}

Pending::Pending(WindowObject& object) : object_(&object), outer_(innermost) {
    innermost = this;
}

Pending::~Pending() {
    innermost = outer_;
}

WindowObject* Pending::take() {
    return dictionary && innermost ? std::exchange(innermost->object_, nullptr) : nullptr;
}

void Pending::forget(const WindowObject& object) {
    for (Pending* each = innermost; each; each = each->outer_)
        if (each->object_ == &object) each->object_ = nullptr;
}

}  // namespace toolbox::window

void WindowDict::initStaticVars() {
    toolbox::window::dictionary =
        std::make_unique<std::array<toolbox::window::Bucket, toolbox::window::kBuckets>>();
}

void WindowDict::destroyStaticVars() {
    toolbox::window::dictionary.reset();
}

WindowObject* WindowDict::find(HWND window) {
    if (!toolbox::window::dictionary) return nullptr;
    toolbox::window::Bucket& bucket = toolbox::window::bucketOf(window);
    const auto entry = toolbox::window::entryOf(bucket, window);
    return entry == bucket.end() ? nullptr : entry->object;
}

unsigned int WindowDict::hashHWND(HWND window) {
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(window));
}
