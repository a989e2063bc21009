// Looks a text up in the registered module, then in the application, then in the library.
#include "text/text_resources.h"

#include "platform/host.h"

namespace toolbox::text {
namespace {

/// Texts that programs need not bring.
constexpr bool libraryHas(unsigned int id) {
    return id >= 1300 && id <= 1699;
}

}  // namespace

int loadFrom(HINSTANCE module, unsigned int id, char* out, int size) {
    if (!out || size <= 0) return 0;
    return platform::current().strings->load(module, id, textLanguage(), out, size);
}

int loadText(unsigned int id, char* out, int size) {
    if (const auto module = static_cast<HINSTANCE>(GMSG::getInstance())) {
        if (const int length = loadFrom(module, id, out, size)) return length;
    }
    const int length = loadFrom(nullptr, id, out, size);
    if (length || !libraryHas(id)) return length;
    const HINSTANCE library = platform::libraryModule();
    return library ? loadFrom(library, id, out, size) : 0;
}

std::string loadText(unsigned int id) {
    // A string table counts its characters with 16 bits.
    constexpr std::size_t kLongest = 0x10000;
    std::string text(256, '\0');
    for (;;) {
        const auto length =
            static_cast<std::size_t>(loadText(id, text.data(), static_cast<int>(text.size())));
        if (length + 1 < text.size() || text.size() >= kLongest) {
            text.resize(length);
            return text;
        }
        text.resize(text.size() * 4);
    }
}

}  // namespace toolbox::text
