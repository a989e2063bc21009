// Looks a text up in the registered module, then in the application.
#include "text/text_resources.h"

namespace toolbox::text {

int loadFrom(HINSTANCE module, unsigned int id, char* out, int size) {
    if (!out || size <= 0) return 0;
    return platform::current().strings->load(module, id, textLanguage(), out, size);
}

int loadText(unsigned int id, char* out, int size) {
    if (const auto module = static_cast<HINSTANCE>(GMSG::getInstance())) {
        if (const int length = loadFrom(module, id, out, size)) return length;
    }
    return loadFrom(nullptr, id, out, size);
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
