// Writing numbers and texts to the controls of the parent window, and reading them.
#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "base/template_text.h"
#include "text/message_ranges.h"
#include "text/text_resources.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox;

void put(unsigned short id, const char* text) {
    const HWND parent = GMSG::getParent();
    constexpr auto kFromTheStart = static_cast<WPARAM>(-1);
    SendDlgItemMessageA(parent, id, CB_SELECTSTRING, kFromTheStart, reinterpret_cast<LPARAM>(text));
    SetDlgItemTextA(parent, id, text);
}

void putReal(unsigned short id, double value, int decimals) {
    constexpr std::size_t kBesideDecimals = 16;
    const auto kept = static_cast<std::size_t>(std::clamp(decimals, 0, base::kMaxPrecision));
    std::string text(kept + kBesideDecimals, '\0');
    put(id, GMSG::ftoa(value, decimals, text.data(), 0));
}

void putLimited(unsigned short id, const char* text, int maxLength) {
    SendDlgItemMessageA(GMSG::getParent(), id, EM_LIMITTEXT,
                        static_cast<WPARAM>(std::max(maxLength, 1) - 1), 0);
    put(id, text);
}

/// The number at the start of a control's text, of which 40 characters count.
template <class Number>
Number numberIn(unsigned short id) {
    char text[40 + 1] = "";
    GMSG::getCtrlString(id, text, sizeof text);
    return text::leadingNumber<Number>(text);
}

}  // namespace

void GMSG::setInt(unsigned short id, int value) {
    setLong(id, value);
}

void GMSG::setLong(unsigned short id, long value) {
    char text[22];
    put(id, ntoa(value, text, 0));
}

void GMSG::setDouble(unsigned short id, double value, int decimals) {
    putReal(id, value, decimals);
}

void GMSG::setFloat(unsigned short id, float value, int decimals) {
    putReal(id, value, decimals);
}

void GMSG::setFormatDouble(unsigned short id, double value, unsigned short formatId) {
    const std::optional<std::string> format = text::displayFormat(formatId);
    if (!format) return putReal(id, value, 1);
    text::MessageBuffer printed;
    base::printTemplateValue(printed, sizeof printed, format->c_str(), value);
    put(id, printed);
}

void GMSG::setFormatFloat(unsigned short id, float value, unsigned short formatId) {
    setFormatDouble(id, value, formatId);
}

void GMSG::setCtrlString(unsigned short id, const char* text, int maxLength) {
    putLimited(id, text ? text : "", maxLength);
}

void GMSG::setCtrlString(unsigned short id, const RWCString& text, int maxLength) {
    putLimited(id, text, maxLength);
}

int GMSG::readControl(unsigned short id, char* buf, int size) {
    if (!buf || size <= 0) return 0;
    buf[0] = '\0';
    return static_cast<int>(GetDlgItemTextA(getParent(), id, buf, size));
}

int GMSG::readControl(unsigned short id, RWCString& out, int size) {
    // No more than the text needs, whatever size the caller allows.
    const int present = GetWindowTextLengthA(GetDlgItem(getParent(), id));
    std::string text(static_cast<std::size_t>(std::clamp(size, 1, present + 1)), '\0');
    const int length = readControl(id, text.data(), static_cast<int>(text.size()));
    out = RWCString(text.data(), static_cast<std::size_t>(length));
    return length;
}

int GMSG::getInt(unsigned short id, int& out, unsigned short formatId) {
    out = numberIn<int>(id);
    return text::checkRange(out, formatId);
}

int GMSG::getLong(unsigned short id, long& out, unsigned short formatId) {
    out = numberIn<long>(id);
    return text::checkRange(out, formatId);
}

int GMSG::getFloat(unsigned short id, float& out, unsigned short formatId) {
    out = static_cast<float>(numberIn<double>(id));
    return text::checkRange(out, formatId);
}

int GMSG::getFloat(unsigned short id, char* buf, int size, unsigned short formatId) {
    if (formatId == 0 || !getInstance()) return 1;
    readControl(id, buf, size);
    float value = 0;
    return getFloat(id, value, formatId);
}

int GMSG::getDouble(unsigned short id, double& out, unsigned short formatId) {
    out = numberIn<double>(id);
    return text::checkRange(out, formatId);
}
