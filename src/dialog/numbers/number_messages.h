// The library's sentences about what was entered as a number, in the language of the message
// service.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "base/entered_number.h"
#include "toolbox/strings.h"

namespace toolbox::numbers {

/// Numbers of the texts, in resources/toolbox_texts.inc.
enum class Sentence : unsigned int {
    empty = 1300,
    incomplete,
    badCharacter,
    grouping,
    notWhole,
    tooLarge,
    tooSmall,
    nearZero,
    twoReadings,
    atLeast,
    atMost,
    between,
    forbidden,
    formulaFault,
    formulaNamesCell,
    formulaNoResult,
    noBreakSpace,
    formulaUnknownName
};

/// The sentence with its arguments in place of %1, %2... Arguments are not searched for those.
/// Where the text is missing, the arguments alone: never empty.
[[nodiscard]] CString sentence(Sentence id, std::initializer_list<std::string_view> arguments = {});

/// A text as a message shows it: what is long is cut, what cannot be seen is a question mark.
[[nodiscard]] std::string shownText(std::string_view text);

/// What is wrong with a text that readEntry() refused. The ends of the type's range are texts.
[[nodiscard]] CString entryMessage(const base::EntryCheck& check, std::string_view text,
                                   std::string_view least, std::string_view most);

}  // namespace toolbox::numbers
