// Failed assertions: who is asked, what the box says, how the program ends.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "text/text_resources.h"
#include "toolbox/diagnostics.h"
#include "toolbox/platform.h"

using namespace toolbox;

namespace {

AssertionHandler theHandler = nullptr;
bool inHandler = false;

// A box with one button and the icon for a stop, in front of the whole task.
constexpr unsigned int kBoxStyle = 0x12010;
constexpr int kAbort = 3;
constexpr int kIgnore = 5;

struct AssertionTexts {
    std::string heading;
    std::string programLabel;
    std::string fileLabel;
    std::string lineLabel;
    std::string expressionLabel;
    std::string advice;
};

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

/// At most 540 characters as long as each of the texts has at most 59. Of a long program path and a
/// long file name the ends are kept, of a long expression the beginning.
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

/// One of the texts, at most 59 characters of it.
std::string loadText(unsigned int id) {
    char text[60];
    return {text, static_cast<std::size_t>(text::loadFrom(nullptr, id, text, sizeof text))};
}

int showBox(const FailedAssertion& failed) {
    const AssertionTexts texts{loadText(1060), loadText(1061), loadText(1062),
                               loadText(1063), loadText(1064), loadText(1065)};
    std::string program = platform::current().system->programPath();
    if (program.empty()) program = "<program name unknown>";
    const std::string message = assertionMessage(texts, program, failed);
    return platform::current().prompt->messageBox(nullptr, message.c_str(), loadText(1066).c_str(),
                                                  kBoxStyle);
}

AssertionAnswer askHandler(const FailedAssertion& failed) {
    if (!theHandler || inHandler) return AssertionAnswer::explain;
    inHandler = true;
    const AssertionAnswer answer = theHandler(failed);
    inHandler = false;
    return answer;
}

}  // namespace

void _tvassert(const char* expression, const char* file, int line) {
    const FailedAssertion failed{expression, file, line};
    switch (askHandler(failed)) {
        case AssertionAnswer::goOn:
            return;
        case AssertionAnswer::end:
            std::abort();
        case AssertionAnswer::explain:
            break;
    }
    const int answer = showBox(failed);
    if (answer == kIgnore) return;
    if (answer == kAbort) {
        std::raise(SIGABRT);
        std::_Exit(3);  // the application may have a handler for the signal that returns
    }
    std::abort();
}

namespace toolbox {

AssertionHandler setAssertionHandler(AssertionHandler handler) {
    return std::exchange(theHandler, handler);
}

}  // namespace toolbox
