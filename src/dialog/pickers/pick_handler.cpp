// The handler of the process, and the source that asks it.
#include "dialog/pickers/pick_handler.h"

namespace toolbox {
namespace {

PickHandler* theHandler = nullptr;

}  // namespace

PickHandler::~PickHandler() {
    if (theHandler == this) theHandler = nullptr;
}

bool PickHandler::replaces(const CString&) {
    return true;
}

PickHandler* PickHandler::install(PickHandler* handler) {
    PickHandler* const before = theHandler;
    theHandler = handler;
    return before;
}

PickHandler* PickHandler::installed() {
    return theHandler;
}

namespace pickers {

SourceAnswer HandlerSource::ask(const PickQuestion& question) {
    // The handler may take itself out, or be gone, by the time it has answered.
    PickHandler* const handler = theHandler;
    if (handler) return {{handler->answer(question)}, {}};
    return {};
}

bool HandlerSource::mayReplace(const CString& name) {
    return theHandler && theHandler->replaces(name);
}

}  // namespace pickers
}  // namespace toolbox
