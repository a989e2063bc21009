// The progress meter: its life, and what it shows. Most operations handle messages first, and their
// handlers may delete the meter: nothing of it is touched then.
#include "toolbox/meter.h"

#include <commctrl.h>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "meter_dialog.h"
#include "window/dialog_template.h"

using toolbox::detail::Watch;

namespace {

constexpr char kTemplate[] = "DLG_METER";

HINSTANCE meterInstance = nullptr;
int metersEnabled = 1;

/// The wait cursor of a window class, which all windows of the class share.
struct ClassWait {
    int meters = 0;  // that show it
    ULONG_PTR own = 0;
};

std::map<ULONG_PTR, ClassWait>& classWaits() {
    static std::map<ULONG_PTR, ClassWait> waits;
    return waits;
}

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
    const Watch self(life_);
    if (parent_) EnableWindow(parent_, FALSE);
    if (!self.gone()) setCurPos(0);
    if (!self.gone()) setStepInc(1);
    if (!self.gone()) setPartsInJob(1);
    if (!self.gone()) setPartsComplete(0);
    return !self.gone() && meter_;
}

void TarvMeter::deleteMeter() {
    if (!meter_) return;
    const HWND dialog = meter_;
    release();
    DestroyWindow(dialog);
}

void TarvMeter::enableCancel(int enable) {
    if (!meter_) return;
    const HWND button = GetDlgItem(meter_, IDCANCEL);
    EnableWindow(button, enable != 0);
    // Nothing has the focus where the button lost it by being disabled: keys would go nowhere.
    if (enable && GetActiveWindow() == meter_ && !IsChild(meter_, GetFocus())) SetFocus(button);
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
    const HWND former = std::exchange(parent_, parent);
    if (!meter_ || !former || parent == former || IsWindowEnabled(former)) return;
    EnableWindow(former, TRUE);
    if (parent) EnableWindow(parent, FALSE);
}

int TarvMeter::getCurPos() const {
    return position_;
}

int TarvMeter::getStepInc() const {
    return step_;
}

void TarvMeter::setMeterVisibility(int show) {
    if (!pumped() || !meter_) return;
    const HWND dialog = meter_;
    if (show)
        showWaitCursor();
    else
        restoreCursor();
    if (parent_) EnableWindow(parent_, !show);
    ShowWindow(dialog, show ? SW_SHOW : SW_HIDE);
}

void TarvMeter::showWaitCursor() {
    if (showsWaitCursor_) return;
    showsWaitCursor_ = 1;
    const HCURSOR wait = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT));
    ClassWait& shared = classWaits()[GetClassLongPtrA(meter_, GCW_ATOM)];
    if (shared.meters++ == 0)
        shared.own = SetClassLongPtrA(meter_, GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(wait));
}

void TarvMeter::restoreCursor() {
    if (!showsWaitCursor_) return;
    showsWaitCursor_ = 0;
    ClassWait& shared = classWaits()[GetClassLongPtrA(meter_, GCW_ATOM)];
    if (--shared.meters == 0)
        SetClassLongPtrA(meter_, GCLP_HCURSOR, static_cast<LONG_PTR>(shared.own));
}

int TarvMeter::isMeterVisible() const {
    return pumped() && meter_ && IsWindowVisible(meter_);
}

int TarvMeter::getCaption(char* out, int size) const {
    return copyText(pumped() ? meter_ : nullptr, out, size);
}

void TarvMeter::setMeterString(unsigned int line, const char* text) {
    if (pumped() && meter_ && lineControl(line))
        SetDlgItemTextA(meter_, lineControl(line), text ? text : "");
}

int TarvMeter::getMeterString(unsigned int line, char* out, int size) const {
    const bool exists = pumped() && meter_ && lineControl(line);
    return copyText(exists ? GetDlgItem(meter_, lineControl(line)) : nullptr, out, size);
}

void TarvMeter::sendToBar(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (meter_) SendDlgItemMessageA(meter_, IDC_METER_BAR, message, wParam, lParam);
}

void TarvMeter::setRange(int low, int high) {
    if (!pumped()) return;
    rangeLow_ = low;
    rangeHigh_ = high;
    sendToBar(PBM_SETRANGE, 0, MAKELPARAM(low, high));
}

unsigned long TarvMeter::getRange() const {
    return pumped() ? static_cast<DWORD>(MAKELONG(rangeLow_, rangeHigh_)) : 0;
}

void TarvMeter::setStepInc(int step) {
    if (!pumped()) return;
    step_ = step;
    sendToBar(PBM_SETSTEP, static_cast<WPARAM>(step), 0);
}

void TarvMeter::setCurPos(int position) {
    if (!pumped()) return;
    position_ = position;
    sendToBar(PBM_SETSTEP, static_cast<WPARAM>(position), 0);
}

void TarvMeter::setDeltaPos(int delta) {
    if (pumped()) sendToBar(PBM_DELTAPOS, static_cast<WPARAM>(delta), 0);
}

void TarvMeter::setPartsInJob(unsigned int parts) {
    if (!pumped()) return;
    if (parts == 0) position_ = -1;
    if (meter_) setRange(0, static_cast<int>(parts));
}

unsigned int TarvMeter::getPartsInJob() const {
    return pumped() && meter_ ? static_cast<unsigned int>(rangeHigh_) : 0;
}

void TarvMeter::setPartsComplete(unsigned int parts) {
    constexpr unsigned int kMost = std::numeric_limits<int>::max();
    if (!pumped() || !meter_) return;
    if (parts == 0) position_ = -1;
    for (const int last = static_cast<int>(std::min(parts, kMost)); meter_ && position_ < last;
         ++position_)
        sendToBar(PBM_STEPIT, 0, 0);
}

int TarvMeter::getPartsComplete() const {
    return pumped() && meter_ ? position_ : 0;
}

int TarvMeter::isMeterCancelled() const {
    return pumped() ? cancelled_ : 0;
}

void TarvMeter::resetMeterCancelledFlag() {
    if (pumped()) cancelled_ = 0;
}
