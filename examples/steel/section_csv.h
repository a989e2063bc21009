// Reading sections from a table in a text file: one a line, fields separated by commas, the names
// of the columns on the first line. Empty lines and lines that start with '#' are skipped.
#pragma once

#include <iosfwd>
#include <vector>

#include "section.h"

/// The sections of the lines that are well formed, in their order. Every other line is reported
/// through the message service with its number, counted from 1, and left out; so are a file that
/// cannot be read and a heading that is not the expected one, which leave nothing.
[[nodiscard]] std::vector<Section> readSections(const char* fileName);
/// The same of a table that is open already; what cannot be read ends it.
[[nodiscard]] std::vector<Section> readSections(std::istream& table);
