#include <csignal>
#include <cstdlib>
#include <utility>

#include "diag/assertion_text.h"
#include "text/text_resources.h"
#include "toolbox/platform.h"

using namespace toolbox;

namespace {

AssertionHandler theHandler = nullptr;
bool inHandler = false;

// A box with one button and the icon for a stop, in front of the whole task.
constexpr unsigned int kBoxStyle = 0x12010;
constexpr int kAbort = 3;
constexpr int kIgnore = 5;

/// One of the texts, at most 59 characters of it.
std::string loadText(unsigned int id) {
    char text[60];
    return {text, static_cast<std::size_t>(text::loadFrom(nullptr, id, text, sizeof text))};
}

int showBox(const FailedAssertion& failed) {
    const diag::AssertionTexts texts{loadText(1060), loadText(1061), loadText(1062),
                                     loadText(1063), loadText(1064), loadText(1065)};
    std::string program = platform::current().system->programPath();
    if (program.empty()) program = "<program name unknown>";
    const std::string message = diag::assertionMessage(texts, program, failed);
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
