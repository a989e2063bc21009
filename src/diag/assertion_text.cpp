#include "diag/assertion_text.h"

#include <algorithm>

namespace toolbox::diag {
namespace {

constexpr std::size_t kLongestMessage = 540;
constexpr std::size_t kLongestLine = 60;
constexpr std::string_view kDots = "...";

/// Label and value in one line of at most kLongestLine characters; the value loses its beginning.
std::string line(const std::string& label, std::string_view value) {
    if (label.size() + value.size() <= kLongestLine) return label + std::string(value);
    std::string kept(value.substr(value.size() - (kLongestLine - label.size())));
    std::fill_n(kept.begin(), std::min(kept.size(), kDots.size()), '.');
    return label + kept;
}

/// The text without its end, in at most `room` characters.
std::string beginning(std::string_view text, std::size_t room) {
    if (text.size() <= room) return std::string(text);
    const std::size_t dots = std::min(room, kDots.size());
    return std::string(text.substr(0, room - dots)).append(kDots.substr(0, dots));
}

std::string_view orEmpty(const char* text) {
    return text ? text : "";
}

}  // namespace

std::string assertionMessage(const AssertionTexts& texts, std::string_view program,
                             const FailedAssertion& failed) {
    std::string message = texts.heading + "\n\n" + line(texts.programLabel, program) + '\n' +
                          line(texts.fileLabel, orEmpty(failed.file)) + '\n' + texts.lineLabel +
                          std::to_string(failed.line) + "\n\n" + texts.expressionLabel;
    const std::string end = "\n\n" + texts.advice + "\n\n";
    const std::size_t taken = message.size() + end.size();
    const std::size_t room = kLongestMessage > taken ? kLongestMessage - taken : 0;
    return message + beginning(orEmpty(failed.expression), room) + end;
}

}  // namespace toolbox::diag
