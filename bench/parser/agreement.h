// Holds the library's grid to the answers of the one that goes step by step.
#pragma once

#include <string>

struct Agreement {
    /// The first text on which kind, value, stored text, error flag or stack overflow differ.
    std::string differsOn;
    bool agrees = true;
    long formulas = 0;  ///< texts that were formulas
};

/// Sets and reads cells of both with generated texts. Values are compared bit for bit, but any
/// not-a-number equals any other. The library writes its messages to standard output.
Agreement compareGrids(long texts, unsigned seed);
