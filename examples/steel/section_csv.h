// Reading sections from a table in a text file: one per line, fields separated by commas, the names
// of the columns on the first line. Empty lines and lines that start with '#' are skipped, and so
// is a byte-order mark of UTF-8.
#pragma once

#include <iosfwd>
#include <vector>

#include "section.h"

/// The sections of the well-formed lines, in their order. Every other line is reported through the
/// message service with its number, counted from 1, and left out. Nothing is returned, and the
/// reason reported, when the file cannot be read to its end, its heading is not the expected one or
/// no line is a section.
[[nodiscard]] std::vector<Section> readSections(const char* fileName);
/// The same for an open table; it ends where it cannot be read, and an empty one is not reported.
[[nodiscard]] std::vector<Section> readSections(std::istream& table);
