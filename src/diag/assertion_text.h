// What the box of a failed assertion says.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/diagnostics.h"

namespace toolbox::diag {

struct AssertionTexts {
    std::string heading;
    std::string programLabel;
    std::string fileLabel;
    std::string lineLabel;
    std::string expressionLabel;
    std::string advice;
};

/// At most 540 characters as long as each of the texts has at most 59. Of a long program path and a
/// long file name the ends are kept, of a long expression the beginning.
[[nodiscard]] std::string assertionMessage(const AssertionTexts& texts, std::string_view program,
                                           const FailedAssertion& failed);

}  // namespace toolbox::diag
