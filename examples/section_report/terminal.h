// Text on the standard output: the library's Windows-1252 becomes UTF-8, and line ends stay '\n' on
// every system.
#pragma once

#include <string_view>

/// Call once, before the first print().
void prepareTerminal();
void print(std::string_view windows1252);
