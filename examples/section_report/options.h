// What the program is asked to do.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "beam_grid.h"
#include "toolbox/dates.h"
#include "toolbox/messages.h"

/// A change of a key by the user: its description or its format.
struct KeyChange {
    enum class What { description, format };
    What what;
    const char* key;
    const char* value;
};

struct Options {
    TarvDate date;
    Beam beam;
    const char* label = nullptr;  ///< null: the usual one
    std::string keys;             ///< profile file of the user's changes
    std::vector<KeyChange> changes;
    const char* table = nullptr;
    const char* file = nullptr;
};

/// Nothing when the arguments are wrong.
[[nodiscard]] std::optional<Options> parseOptions(int count, char** arguments);
/// The language that the arguments ask for, be they right or wrong.
[[nodiscard]] GMSG::Language languageOf(int count, char** arguments);
