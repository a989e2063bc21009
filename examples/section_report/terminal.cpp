// Texts are converted to UTF-8 and flushed at once, because the library may print between two
// calls.
#include "terminal.h"

#include <cstdio>
#include <string>

#include "toolbox/utf8.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>

#include "toolbox/win_types.h"
#endif

namespace {

void write(std::FILE* stream, std::string_view text) {
    const std::string utf8 = toolbox::toUtf8(text);
    std::fwrite(utf8.data(), 1, utf8.size(), stream);
    std::fflush(stream);
}

}  // namespace

void prepareTerminal() {
#if defined(_WIN32)
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
#endif
}

void print(std::string_view text) {
    write(stdout, text);
}

void printError(std::string_view text) {
    write(stderr, text);
}

bool isAllPrinted() {
    return std::fflush(stdout) == 0 && !std::ferror(stdout);
}
