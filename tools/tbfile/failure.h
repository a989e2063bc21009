// Why a command cannot go on.
#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

#include "texts.h"

namespace tbfile {

/// Holds its text in the user's language, in UTF-8.
class Failure : public std::runtime_error {
  public:
    explicit Failure(Text text, Arguments arguments = {})
        : std::runtime_error(say(text, arguments)) {}
};

/// The system's reason for a failure: an error number of the C library, on Windows of the system.
[[nodiscard]] std::string reasonOf(int code);
[[nodiscard]] std::string reasonOf(const std::error_code& error);

}  // namespace tbfile
