// The progress meter: its life, and what it shows.
#include "toolbox/meter.h"

#include <commctrl.h>

#include <algorithm>
#include <limits>

#include "meter_dialog.h"
#include "window/dialog_template.h"

namespace {

constexpr char kTemplate[] = "DLG_METER";

HINSTANCE meterInstance = nullptr;
int metersEnabled = 1;

/// Identifier of a text line; 0 when there is no such line.
int lineControl(unsigned int line) {
    if (line > 1) return 0;
    return line == 0 ? IDC_METER_LINE_0 : IDC_METER_LINE_1;
}

/// Copies the text of a window, null for none, as getCaption() tells.
int copyText(HWND window, char* out, int size) {
    if (!out || size <= 0) return 0;
    out[0] = '\0';
    return window ? GetWindowTextA(window, out, size) : 0;
}

}  // namespace

TarvMeter::TarvMeter() {
    InitCommonControls();
}

TarvMeter::~TarvMeter() {
    deleteMeter();
}

void TarvMeter::cancelMeter() const {}

void TarvMeter::setInstance(HINSTANCE instance) {
    meterInstance = instance;
}

HINSTANCE TarvMeter::getMeterInstance() {
    return meterInstance;
}

void TarvMeter::setEnable(int enable) {
    metersEnabled = enable;
}

int TarvMeter::createMeter(const char* caption, int cancelEnabled) {
    if (!meterInstance) return 0;
    if (meter_) return 1;
    if (!IsWindow(parent_)) parent_ = GetActiveWindow();
    cancelled_ = 0;
    if (!metersEnabled) return 0;
    if (!toolbox::window::createDialog(meterInstance, kTemplate, parent_, dialogProcedure,
                                       reinterpret_cast<LPARAM>(this)) ||
        !meter_)
        return 0;
    SetWindowTextA(meter_, caption ? caption : "");
    enableCancel(cancelEnabled);
    if (parent_) EnableWindow(parent_, FALSE);
    setCurPos(0);
    setStepInc(1);
    setPartsInJob(1);
    setPartsComplete(0);
    return meter_ != nullptr;
}

void TarvMeter::deleteMeter() {
    if (!meter_) return;
    const HWND dialog = meter_;
    release();
    DestroyWindow(dialog);
}

void TarvMeter::enableCancel(int enable) {
    if (meter_) EnableWindow(GetDlgItem(meter_, IDCANCEL), enable != 0);
}

int TarvMeter::isCancelEnabled() const {
    return meter_ && IsWindowEnabled(GetDlgItem(meter_, IDCANCEL));
}

HWND TarvMeter::getMeterHandle() const {
    return meter_;
}

int TarvMeter::isMeterCreated() const {
    return meter_ != nullptr;
}

void TarvMeter::setParentWindow(HWND parent) {
    if (meter_ && parent_ && parent != parent_ && !IsWindowEnabled(parent_)) {
        EnableWindow(parent_, TRUE);
        if (parent) EnableWindow(parent, FALSE);
    }
    parent_ = parent;
}

int TarvMeter::getCurPos() const {
    return position_;
}

int TarvMeter::getStepInc() const {
    return step_;
}

void TarvMeter::setMeterVisibility(int show) {
    dispatch();
    if (!meter_) return;
    if (show) {
        if (parent_) EnableWindow(parent_, FALSE);
        if (!savedCursor_) savedCursor_ = GetClassLongPtrA(meter_, GCLP_HCURSOR);
        SetClassLongPtrA(
            meter_, GCLP_HCURSOR,
            reinterpret_cast<LONG_PTR>(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT))));
        ShowWindow(meter_, SW_SHOW);
    } else {
        restoreCursor();
        if (parent_) EnableWindow(parent_, TRUE);
        ShowWindow(meter_, SW_HIDE);
    }
}

void TarvMeter::restoreCursor() {
    if (!savedCursor_) return;
    SetClassLongPtrA(meter_, GCLP_HCURSOR, static_cast<LONG_PTR>(savedCursor_));
    savedCursor_ = 0;
}

int TarvMeter::isMeterVisible() const {
    dispatch();
    return meter_ && IsWindowVisible(meter_);
}

int TarvMeter::getCaption(char* out, int size) const {
    dispatch();
    return copyText(meter_, out, size);
}

void TarvMeter::setMeterString(unsigned int line, const char* text) {
    dispatch();
    if (meter_ && lineControl(line)) SetDlgItemTextA(meter_, lineControl(line), text ? text : "");
}

int TarvMeter::getMeterString(unsigned int line, char* out, int size) const {
    dispatch();
    const bool exists = meter_ && lineControl(line);
    return copyText(exists ? GetDlgItem(meter_, lineControl(line)) : nullptr, out, size);
}

void TarvMeter::sendToBar(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (meter_) SendDlgItemMessageA(meter_, IDC_METER_BAR, message, wParam, lParam);
}

void TarvMeter::setRange(int low, int high) {
    dispatch();
    rangeLow_ = low;
    rangeHigh_ = high;
    sendToBar(PBM_SETRANGE, 0, MAKELPARAM(low, high));
}

unsigned long TarvMeter::getRange() const {
    dispatch();
    return static_cast<DWORD>(MAKELONG(rangeLow_, rangeHigh_));
}

void TarvMeter::setStepInc(int step) {
    dispatch();
    step_ = step;
    sendToBar(PBM_SETSTEP, static_cast<WPARAM>(step), 0);
}

void TarvMeter::setCurPos(int position) {
    dispatch();
    position_ = position;
    sendToBar(PBM_SETSTEP, static_cast<WPARAM>(position), 0);
}

void TarvMeter::setDeltaPos(int delta) {
    dispatch();
    sendToBar(PBM_DELTAPOS, static_cast<WPARAM>(delta), 0);
}

void TarvMeter::setPartsInJob(unsigned int parts) {
    dispatch();
    if (parts == 0) position_ = -1;
    if (meter_) setRange(0, static_cast<int>(parts));
}

unsigned int TarvMeter::getPartsInJob() const {
    dispatch();
    return meter_ ? static_cast<unsigned int>(rangeHigh_) : 0;
}

void TarvMeter::setPartsComplete(unsigned int parts) {
    constexpr unsigned int kMost = std::numeric_limits<int>::max();
    dispatch();
    if (!meter_) return;
    if (parts == 0) position_ = -1;
    for (const int last = static_cast<int>(std::min(parts, kMost)); meter_ && position_ < last;
         ++position_)
        sendToBar(PBM_STEPIT, 0, 0);
}

int TarvMeter::getPartsComplete() const {
    dispatch();
    return meter_ ? position_ : 0;
}

int TarvMeter::isMeterCancelled() const {
    dispatch();
    return cancelled_;
}

void TarvMeter::resetMeterCancelledFlag() {
    dispatch();
    cancelled_ = 0;
}
