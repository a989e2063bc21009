// Strict reading of one value from a text.
#include "base/entered_number.h"
#include "toolbox/text.h"

namespace {

template <class Number>
bool scanNumber(const CString& text, Number* out) {
    Number number{};
    const bool oneReading = GMSG::language != GMSG::French;
    if (toolbox::base::readEntry(text.view(), oneReading, number).fault !=
        toolbox::base::EntryFault::none)
        return false;
    if (out) *out = number;
    return true;
}

template <class String>
bool scanText(const CString& text, String* out) {
    if (out) *out = String(text);
    return true;
}

}  // namespace

bool TvScanfSingle(const CString& text, CString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, RWCString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, RWCollectableString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, unsigned char* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, short* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, int* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, unsigned int* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, long* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, unsigned long* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, float* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, double* out) {
    return scanNumber(text, out);
}
