// Traces, and the entry points that do nothing.
#include <cstdarg>
#include <utility>

#include "base/template_text.h"
#include "toolbox/diagnostics.h"

namespace {

toolbox::TraceSink theSink = nullptr;
bool inSink = false;

}  // namespace

std::uint32_t CTvTrace::m_eCurrentTraceCategoryEnabled = 0;

void CTvTrace::SetCurrentTraceCategoryEnabled(unsigned long mask) {
    m_eCurrentTraceCategoryEnabled = static_cast<std::uint32_t>(mask);
}

unsigned long CTvTrace::GetCurrentTraceCategoryEnabled() {
    return m_eCurrentTraceCategoryEnabled;
}

void CTvTrace::Trace(unsigned long category, const char* format, ...) {
    if ((category & m_eCurrentTraceCategoryEnabled) == 0 || !format) return;
    char text[512];
    std::va_list arguments;
    va_start(arguments, format);
    toolbox::base::printTemplateV(text, sizeof text, format, arguments);
    va_end(arguments);
    if (!theSink || inSink) return;
    inSink = true;
    theSink(category, text);
    inSink = false;
}

namespace toolbox {

TraceSink setTraceSink(TraceSink sink) {
    return std::exchange(theSink, sink);
}

}  // namespace toolbox

void Debug(const char*, ...) {}

void Debug2(const char*, ...) {}

void Debug3(const char*, ...) {}

void Debug4(const char*, ...) {}

void InitConsole() {}

void DestroyConsole() {}
