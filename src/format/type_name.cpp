#include "format/type_name.h"

#include "toolbox/platform.h"

namespace toolbox::format {
namespace {

HINSTANCE moduleOf([[maybe_unused]] HWND window) {
#if defined(_WIN32)
    if (window) return reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE));
#endif
    return nullptr;
}

}  // namespace

RWCString typeName(HWND window, unsigned int id) {
    char name[99];
    platform::current().strings->load(moduleOf(window), id, platform::Language::system, name,
                                      sizeof name);
    return RWCString(name);
}

}  // namespace toolbox::format
