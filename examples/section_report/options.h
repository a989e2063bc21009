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
    GMSG::Language language = GMSG::English;
    TarvDate date;
    Beam beam;
    const char* label = nullptr;  ///< null: the usual one
    std::string keys;             ///< profile file of the users' changes
    std::vector<KeyChange> changes;
    const char* table = nullptr;
    const char* file = nullptr;
};

inline constexpr const char* kUsage =
    "usage: section_report [OPTION]... TABLE.csv FILE.tbf\n"
    "  --french                texts in French\n"
    "  --date YYYYMMDD         date of the report, today's when left out\n"
    "  --span M --load KN/M    the beam: 6 and 10 when left out\n"
    "  --label TEMPLATE        label of each section: $KEY$ stands for a value\n"
    "  --keys FILE.ini         where changed keys are kept: FILE.ini beside FILE.tbf\n"
    "  --describe KEY TEXT     changes a key's description\n"
    "  --format KEY W[.D]      changes a key's width and decimals\n";

/// Nothing when the arguments are wrong.
[[nodiscard]] std::optional<Options> parseOptions(int count, char** arguments);
