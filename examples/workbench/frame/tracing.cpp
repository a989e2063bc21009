// Traces and failed assertions are written to files, so that a user can send them.
#include "frame/tracing.h"

#include <fstream>

#include "toolbox/messages.h"

namespace {

std::ofstream traces;

void writeTrace(unsigned long, const char* text) {
    traces << text << std::endl;  // on the disk should the program end with it
}

toolbox::AssertionAnswer logFailure(const toolbox::FailedAssertion& failed) {
    GMSG::errorMsg("%s, %d: %s", MB_ICONSTOP, failed.file, failed.line, failed.expression);
    return toolbox::AssertionAnswer::explain;
}

}  // namespace

void startTracing(const CString& file) {
    traces.open(file.c_str());
    CTvTrace::SetCurrentTraceCategoryEnabled(TraceCommands | TraceFiles | TraceComputing);
    toolbox::setTraceSink(writeTrace);
}

void logFailedAssertions() {
    toolbox::setAssertionHandler(logFailure);
}
