#include "terminal.h"

#include <cstdio>
#include <string>

#include "toolbox/utf8.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>

#include "toolbox/win_types.h"
#endif

void prepareTerminal() {
#if defined(_WIN32)
    _setmode(_fileno(stdout), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
#endif
}

void print(std::string_view windows1252) {
    const std::string text = toolbox::toUtf8(windows1252);
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);  // the library may write there between two calls
}
