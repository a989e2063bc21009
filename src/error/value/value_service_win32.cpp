// The value service: every operation makes its dialog the message service's parent and lets that do
// the work.
#include <climits>
#include <string>

#include "base/number_text.h"
#include "toolbox/value_service.h"

namespace {

/// Of those that live.
Val* youngest = nullptr;

constexpr unsigned short kBetween = 1320;

/// A limit in a message.
std::string limitText(double limit) {
    constexpr int kDigits = 15;
    char text[toolbox::base::kNumberTextMax];
    return {text, toolbox::base::printGeneral(text, limit, kDigits)};
}
std::string limitText(float limit) {
    constexpr int kDigits = 6;
    char text[toolbox::base::kNumberTextMax];
    return {text, toolbox::base::printGeneral(text, double{limit}, kDigits)};
}
std::string limitText(long limit) {
    return std::to_string(limit);
}
std::string limitText(int limit) {
    return std::to_string(limit);
}

}  // namespace

Val::InParent::InParent(HWND dialog) : dialog_(dialog), before_(GMSG::getParent()) {
    GMSG::setParent(dialog);
}

Val::InParent::~InParent() {
    // Whoever made another window the parent meanwhile, or none, had a reason.
    if (GMSG::getParent() == dialog_) GMSG::setParent(before_);
}

Val::Val(HWND dialog) : dialog_(dialog), before_(GMSG::getParent()), older_(youngest) {
    youngest = this;
    GMSG::setParent(dialog);
}

Val::~Val() {
    if (youngest == this) {
        youngest = older_;
        GMSG::setParent(before_);
        return;
    }
    // One that is younger goes back to what was before both.
    Val* younger = youngest;
    while (younger && younger->older_ != this) younger = younger->older_;
    if (!younger) return;
    younger->older_ = older_;
    younger->before_ = before_;
}

void Val::setText(unsigned short id, const char* text, int maxLength) {
    const InParent here(dialog_);
    GMSG::setCtrlString(id, text, maxLength);
}

void Val::setInteger(unsigned short id, long value) {
    const InParent here(dialog_);
    GMSG::setLong(id, value);
}

void Val::setReal(unsigned short id, double value, int decimals) {
    const InParent here(dialog_);
    GMSG::setDouble(id, value, decimals);
}

void Val::setFormattedReal(unsigned short id, double value, unsigned short rangeId) {
    const InParent here(dialog_);
    GMSG::setFormatDouble(id, value, rangeId);
}

void Val::addUnit(unsigned short id, const char* unit) {
    if (!unit || !*unit) return;
    RWCString text;
    getText(id, text, INT_MAX);
    const std::string after = " " + std::string(unit);
    if (text.view().ends_with(after) || text == unit) return;
    text += text.empty() ? std::string(unit) : after;
    SetDlgItemTextA(dialog_, id, text);
}

void Val::addUnit(unsigned short id, unsigned short unitId) {
    char unit[128];
    GMSG::loadString(unitId, unit, sizeof unit);
    addUnit(id, unit);
}

int Val::getText(unsigned short id, RWCString& out, int size) {
    const InParent here(dialog_);
    return GMSG::getCtrlString(id, out, size);
}

int Val::select(HWND dialog, unsigned short id) {
    const HWND control = GetDlgItem(dialog, id);
    if (!control) return 0;
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    if (!IsWindow(control)) return 0;
    if (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageA(control, EM_SETSEL, 0, -1);
    return 0;
}

/// Reads by the message service, which may show a box.
template <class Number, class Read>
int Val::get(unsigned short id, Number& out, const Read& read) {
    const HWND dialog = dialog_;
    int accepted = 0;
    {
        const InParent here(dialog);
        accepted = read(out);
    }
    return accepted ? 1 : select(dialog, id);
}

int Val::getInteger(unsigned short id, int& out, unsigned short rangeId) {
    return get(id, out, [&](int& number) { return GMSG::getInt(id, number, rangeId); });
}

int Val::getInteger(unsigned short id, long& out, unsigned short rangeId) {
    return get(id, out, [&](long& number) { return GMSG::getLong(id, number, rangeId); });
}

int Val::getReal(unsigned short id, float& out, unsigned short rangeId) {
    return get(id, out, [&](float& number) { return GMSG::getFloat(id, number, rangeId); });
}

int Val::getReal(unsigned short id, double& out, unsigned short rangeId) {
    return get(id, out, [&](double& number) { return GMSG::getDouble(id, number, rangeId); });
}

template <class Number>
int Val::getBetween(unsigned short id, Number& out, Number minimum, Number maximum) {
    constexpr bool kIsReal = std::is_floating_point_v<Number>;
    if constexpr (kIsReal) {
        getReal(id, out);
    } else {
        getInteger(id, out);
    }
    if (minimum <= out && out <= maximum) return 1;
    return refuse(id, kBetween, limitText(minimum), limitText(maximum));
}

int Val::getInteger(unsigned short id, int& out, int minimum, int maximum) {
    return getBetween(id, out, minimum, maximum);
}

int Val::getInteger(unsigned short id, long& out, long minimum, long maximum) {
    return getBetween(id, out, minimum, maximum);
}

int Val::getReal(unsigned short id, float& out, double minimum, double maximum) {
    // As floats, so that a limit itself is never refused.
    return getBetween(id, out, static_cast<float>(minimum), static_cast<float>(maximum));
}

int Val::getReal(unsigned short id, double& out, double minimum, double maximum) {
    return getBetween(id, out, minimum, maximum);
}
