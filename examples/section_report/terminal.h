// Printing on standard output and standard error.
#pragma once

#include <string_view>

/// Prepares both for what is printed: UTF-8, lines that end with '\n' alone.
void prepareTerminal();
/// Texts are in Windows-1252.
void print(std::string_view text);
void printError(std::string_view text);
/// False when some of what was printed on standard output did not arrive: its disk is full, say.
[[nodiscard]] bool isAllPrinted();
