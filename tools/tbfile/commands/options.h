// What the user asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "system/files.h"

namespace tbfile {

enum class Command { info, ls, dump, extract, pack, verify, recover, diff, repack };
enum class Order { file, id, length, description };

struct Options {
    Command command = Command::info;
    Path input;
    Path output;  ///< or the other file of a comparison
    std::uint32_t id = 0;
    std::optional<std::string> raw;  ///< where a block's data goes; "-" is the standard output
    Order order = Order::file;
    bool reverse = false;
    bool json = false;
    bool quick = false;
    bool certain = false;
    bool checksums = false;
    bool ignoreDates = false;
    bool force = false;
};

/// Chooses the language, from the arguments or the environment, then reads the arguments. Without a
/// result the program ends with `status`: help was asked for and printed, or the arguments were
/// wrong and that was said.
[[nodiscard]] std::optional<Options> readOptions(std::vector<std::string> arguments, int& status);

}  // namespace tbfile
