// Why a command cannot go on.
#pragma once

#include <stdexcept>

#include "terminal/texts.h"

namespace tbfile {

/// Holds its text in the user's language, in UTF-8.
class Failure : public std::runtime_error {
  public:
    explicit Failure(Text text, Arguments arguments = {})
        : std::runtime_error(say(text, arguments)) {}
};

}  // namespace tbfile
