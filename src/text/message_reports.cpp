// Error reports: the box, the list, the log.
#include <ostream>

#include "base/template_text.h"
#include "text/text_resources.h"
#include "toolbox/messages.h"

using namespace toolbox;

bool GMSG::drops() {
    return theMSG && theMSG->option_ == ReportNothing;
}

int GMSG::report(const char* text, unsigned short flags) {
    if (!isValidParent()) setParent(nullptr);
    if (!theMSG || theMSG->option_ == ReportInBox) {
        const RWCString title = getAppTitle();
        return platform::current().prompt->messageBox(getParent(), text, title,
                                                      flags | MB_TASKMODAL | MB_SETFOREGROUND);
    }
    theMSG->errors_.append(text);
    // Flushed, so that the log has what preceded a crash.
    if (theMSG->log_) *theMSG->log_ << text << '\n' << std::flush;
    return 0;
}

int GMSG::reportText(unsigned short id, unsigned short flags, MessageArguments args) {
    text::MessageBuffer format;
    if (drops() || loadString(id, format, sizeof format) == 0) return 0;
    return reportFormat(format, flags, args);
}

int GMSG::reportFormat(const char* format, unsigned short flags, MessageArguments args) {
    if (drops()) return 0;
    text::MessageBuffer printed;
    base::printTemplateValues(printed, sizeof printed, format, args);
    return report(printed, flags);
}

int GMSG::errorMsgVaList(unsigned short id, unsigned short flags, std::va_list args) {
    text::MessageBuffer format;
    if (drops() || loadString(id, format, sizeof format) == 0) return 0;
    return errorMsgVaList(format, flags, args);
}

int GMSG::errorMsgVaList(const char* format, unsigned short flags, std::va_list args) {
    if (drops()) return 0;
    text::MessageBuffer printed;
    base::printTemplateV(printed, sizeof printed, format, args);
    return report(printed, flags);
}

void GMSG::setErrorReportingOption(ErrorReporting option) {
    if (!theMSG) return;
    theMSG->option_ = option;
    if (option == ReportInList) theMSG->errors_.clear();
}

RWTValSlist<RWCString> GMSG::getLstErrors() {
    return theMSG ? theMSG->errors_ : RWTValSlist<RWCString>();
}

RWCString GMSG::getLstErrorsInString() {
    RWCString all;
    for (const RWCString& error : getLstErrors()) {
        all += error;
        all += '\n';
    }
    return all;
}

RWCString GMSG::getLastErrorMsg() {
    return theMSG ? theMSG->errors_.last() : RWCString();
}

void GMSG::setLogStream(std::ostream* log) {
    if (theMSG) theMSG->log_ = log;
}
