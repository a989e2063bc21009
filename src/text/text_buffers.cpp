// The free functions on plain character buffers.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>

#include "text/text_resources.h"
#include "toolbox/text.h"

namespace {

using namespace toolbox;

constexpr std::size_t kRingSize = 16;
constexpr std::size_t kRingRoom = 255;

void reportMissing(const char* id) {
    const std::string text = std::string("String resource not found\n\nResource ID = ") + id;
    ShowMsgBox("Fatal error", text.c_str(), MB_ICONSTOP);
}

/// The part of the first n characters that the string has.
std::size_t clamped(const char* s, int n) {
    return n > 0 ? std::min(static_cast<std::size_t>(n), std::strlen(s)) : 0;
}

bool isBlankOrLineEnd(char c) {
    return c == ' ' || c == '\n' || c == '\r';
}

}  // namespace

char* GetString(HINSTANCE hInstance, unsigned int id) {
    static char ring[kRingSize][kRingRoom];
    static std::size_t next = 0;
    // Not loaded into the ring itself: while a box is shown further calls may come in.
    char text[kRingRoom];
    if (text::loadFrom(hInstance, id, text, sizeof text) == 0) {
        *std::to_chars(text, text + sizeof text - 1, id).ptr = '\0';
        reportMissing(text);
    }
    char* result = ring[next];
    next = (next + 1) % kRingSize;
    return std::strcpy(result, text);
}

int ShowMsgBox(const char* title, const char* text, unsigned int flags) {
    return platform::current().prompt->messageBox(nullptr, text, title, flags | MB_TASKMODAL);
}

int Lead(char* s, int n) {
    if (!s || n <= 0) return 0;
    const std::size_t length = clamped(s, n);
    const std::size_t blanks = std::min(std::strspn(s, " "), length);
    if (blanks == static_cast<std::size_t>(n)) return 0;
    if (blanks > 0) std::memmove(s, s + blanks, length - blanks + 1);
    return static_cast<int>(std::strlen(s));
}

int Trail(char* s, int n) {
    if (!s) return 0;
    std::size_t length = clamped(s, n);
    const bool looked = length > 1;
    while (length > 0 && isBlankOrLineEnd(s[length - 1])) --length;
    if (looked && length > 0) s[length] = '\0';
    return static_cast<int>(std::strlen(s));
}
