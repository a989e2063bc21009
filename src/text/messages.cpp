// The message service's state, and loading and printing texts.
#include "toolbox/messages.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "base/template_text.h"
#include "text/text_resources.h"

GMSG* GMSG::theMSG = nullptr;
GMSG::Language GMSG::language = GMSG::French;

namespace {

using namespace toolbox;

static_assert(std::is_same_v<MessageArgument, base::TemplateValue>);

struct ServiceState {
    HINSTANCE module = nullptr;
    HWND parent = nullptr;
    std::unique_ptr<RWCString> destination;
    std::unique_ptr<RWCString> title;
    int useRegistry = 1;
    HKEY key = HKEY_CURRENT_USER;
};

ServiceState& state() {
    // Never destroyed: a report may come from the destructor of another static object.
    static auto& state = *new ServiceState;
    return state;
}

RWCString textOf(const std::unique_ptr<RWCString>& text) {
    return text ? *text : RWCString();
}

/// What both ways of passing arguments share: `print` prints a template into a message buffer.
template <class Print>
int printText(unsigned short id, char* buf, int size, const Print& print) {
    text::MessageBuffer format;
    const int length = GMSG::loadString(id, format, sizeof format);
    if (length == 0) return 0;
    text::MessageBuffer printed;
    print(printed, format);
    if (buf && size > 0) {
        const std::size_t kept = std::min(std::strlen(printed), static_cast<std::size_t>(size) - 1);
        std::memcpy(buf, printed, kept);
        buf[kept] = '\0';
    }
    return length;
}

template <class Print>
int printText(unsigned short id, RWCString& out, const Print& print) {
    text::MessageBuffer printed = "";
    const int length = printText(id, printed, sizeof printed, print);
    out = RWCString(printed);
    return length;
}

auto printerOf(MessageArguments args) {
    return [args](text::MessageBuffer& out, const char* format) {
        base::printTemplateValues(out, sizeof out, format, args);
    };
}

}  // namespace

GMSG::GMSG() {
    theMSG = this;
}

GMSG::~GMSG() {
    if (theMSG != this) return;
    CloseLogFile();
    theMSG = nullptr;
}

void GMSG::initStaticVars() {
    destroyStaticVars();
    state().destination = std::make_unique<RWCString>();
    state().title = std::make_unique<RWCString>();
}

void GMSG::destroyStaticVars() {
    state().destination.reset();
    state().title.reset();
}

void GMSG::setInstance(void* module) {
    state().module = static_cast<HINSTANCE>(module);
}
void* GMSG::getInstance() {
    return state().module;
}

void GMSG::setParent(HWND parent) {
    state().parent = parent;
}
HWND GMSG::getParent() {
    return state().parent;
}
int GMSG::isValidParent() {
    const HWND parent = state().parent;
    return parent && platform::current().prompt->isWindow(parent) ? 1 : 0;
}

void GMSG::setAppTitle(const RWCString& title) {
    state().title = std::make_unique<RWCString>(title);
}
RWCString GMSG::getAppTitle() {
    return textOf(state().title);
}

void GMSG::setDestName(const RWCString& name) {
    state().destination = std::make_unique<RWCString>(name);
}
RWCString GMSG::getDestName() {
    return textOf(state().destination);
}

void GMSG::setUseRegistry(int use) {
    state().useRegistry = use;
}
int GMSG::useRegistry() {
    return state().useRegistry;
}
void GMSG::setKey(HKEY key) {
    state().key = key;
}
HKEY GMSG::getKey() {
    return state().key;
}

int GMSG::loadString(unsigned short id, char* buf, int size) {
    return text::loadText(id, buf, size);
}

int GMSG::getStringVaList(unsigned short id, char* buf, int size, std::va_list args) {
    return printText(id, buf, size, [&](text::MessageBuffer& out, const char* format) {
        base::printTemplateV(out, sizeof out, format, args);
    });
}

int GMSG::getStringVaList(unsigned short id, RWCString& out, std::va_list args) {
    return printText(id, out, [&](text::MessageBuffer& printed, const char* format) {
        base::printTemplateV(printed, sizeof printed, format, args);
    });
}

int GMSG::printInto(unsigned short id, char* buf, int size, MessageArguments args) {
    return printText(id, buf, size, printerOf(args));
}

int GMSG::printInto(unsigned short id, RWCString& out, MessageArguments args) {
    return printText(id, out, printerOf(args));
}

int GMSG::getLastErrorMsg(unsigned long code, char* buf) {
    constexpr std::size_t kRoom = 1024;
    const std::string text =
        platform::current().system->errorText(static_cast<platform::ErrorCode>(code));
    if (text.empty() || !buf) return 0;
    const std::size_t kept = std::min(text.size(), kRoom - 1);
    std::memcpy(buf, text.data(), kept);
    buf[kept] = '\0';
    return static_cast<int>(kept);
}
