// Validated texts: their rules, checking, and filling the message. The message's arguments refer to
// the object's own fields, so every copy binds its own.
#include <algorithm>
#include <charconv>
#include <string>

#include "toolbox/text.h"

void TvFormatMessage(CString& result, const CString& templ,
                     const CArray<TvOutVal, TvOutVal&>& args) {
    std::string text = templ.str();
    char placeholder[12] = "%";
    for (int n = 1;; ++n) {
        const char* end = std::to_chars(placeholder + 1, placeholder + sizeof placeholder, n).ptr;
        const std::string_view wanted(placeholder, static_cast<std::size_t>(end - placeholder));
        const std::size_t at = text.find(wanted);
        if (at == std::string::npos) break;
        if (n <= args.GetSize()) text.replace(at, wanted.size(), args.GetAt(n - 1).getStr().str());
    }
    result = CString(std::move(text));
}

TvString::TvString(unsigned int resourceId) {
    // Not virtual: the derived object does not exist yet.
    if (!TvString::setToResStr(resourceId)) TvString::setToDefaults();
}

TvString::TvString(const TvString& other)
    : value_(other.value_),
      message_(other.message_),
      minLength_(other.minLength_),
      maxLength_(other.maxLength_),
      defaultValue_(other.defaultValue_),
      validChars_(other.validChars_),
      invalidChars_(other.invalidChars_),
      forbiddenValues_(other.forbiddenValues_),
      rules_(other.rules_) {
    bindArguments();
}

TvString& TvString::operator=(const TvString& other) {
    value_ = other.value_;
    message_ = other.message_;
    minLength_ = other.minLength_;
    maxLength_ = other.maxLength_;
    defaultValue_ = other.defaultValue_;
    validChars_ = other.validChars_;
    invalidChars_ = other.invalidChars_;
    forbiddenValues_ = other.forbiddenValues_;
    rules_ = other.rules_;
    bindArguments();
    return *this;
}

CString TvString::operator=(const char* text) {
    value_ = text;
    return value_;
}

bool TvString::setToResStr(unsigned int resourceId) {
    if (resourceId == 0) return false;
    // The fields change together or not at all.
    TvString read(*this);
    CString valid;
    CString invalid;
    const auto supplied = static_cast<unsigned char>(
        TvStringParseResStr(resourceId, &read.message_, &read.defaultValue_, &read.minLength_,
                            &read.maxLength_, &valid, &invalid, &read.forbiddenValues_));
    if (supplied == 0) return false;
    read.validChars_ = valid;
    read.invalidChars_ = invalid;
    read.rules_ = static_cast<unsigned char>(supplied & ~(HasMessage | HasDefault));
    *this = read;
    return true;
}

void TvString::setToDefaults() {
    message_.Empty();
    arguments_.RemoveAll();
    minLength_ = -1;
    maxLength_ = -1;
    defaultValue_.Empty();
    validChars_ = CString();
    invalidChars_ = CString();
    forbiddenValues_.RemoveAll();
    rules_ = 0;
}

/// The message names the rules in this order.
void TvString::bindArguments() {
    arguments_.RemoveAll();
    if (rules_ & MinLength) arguments_.Add(TvOutVal(&minLength_, ""));
    if (rules_ & MaxLength) arguments_.Add(TvOutVal(&maxLength_, ""));
    if (rules_ & ValidChars) arguments_.Add(TvOutVal(&validChars_, ""));
    if (rules_ & InvalidChars) arguments_.Add(TvOutVal(&invalidChars_, ""));
    if (rules_ & ForbiddenValues)
        for (const CString& value : forbiddenValues_) arguments_.Add(TvOutVal(&value, ""));
}

unsigned char TvString::brokenRules(const CString& text) const {
    const auto active = [this](Rule rule) { return (rules_ & rule) != 0; };
    int broken = 0;
    if (active(MinLength) && minLength_ != -1 && text.GetLength() < minLength_) broken |= MinLength;
    if (active(MaxLength) && maxLength_ != -1 && text.GetLength() > maxLength_) broken |= MaxLength;
    if (active(ValidChars) && invalidChars_.definition().IsEmpty() &&
        !validChars_.allStringCharsAreInSet(text))
        broken |= ValidChars;
    if (active(InvalidChars) && validChars_.definition().IsEmpty() &&
        invalidChars_.atLeastOneStringCharIsInSet(text))
        broken |= InvalidChars;
    if (active(ForbiddenValues) &&
        std::find(forbiddenValues_.begin(), forbiddenValues_.end(), text) != forbiddenValues_.end())
        broken |= ForbiddenValues;
    return static_cast<unsigned char>(broken);
}

bool TvString::isValid(CString* errorMessage, const CString* text, char* failedRules) const {
    const unsigned char broken = brokenRules(text ? *text : value_);
    if (broken && errorMessage) TvFormatMessage(*errorMessage, message_, arguments_);
    if (failedRules) *failedRules = static_cast<char>(broken);
    return broken == 0;
}

namespace {

/// Checks a text of another string type.
template <class String>
bool isValidAs(const TvString& rules, String* errorMessage, const String* text, char* failedRules) {
    CString message;
    CString copy;
    if (text) copy = CString(*text);
    const bool valid = rules.isValid(&message, text ? &copy : nullptr, failedRules);
    if (!valid && errorMessage) *errorMessage = String(message);
    return valid;
}

}  // namespace

bool TvString::isValid(RWCString* errorMessage, const RWCString* text, char* failedRules) const {
    return isValidAs(*this, errorMessage, text, failedRules);
}

bool TvString::isValid(RWCollectableString* errorMessage, const RWCollectableString* text,
                       char* failedRules) const {
    return isValidAs(*this, errorMessage, text, failedRules);
}

void TvString::removeInvalidChars() {
    const auto removeWhere = [this](auto unwanted) { std::erase_if(value_.str(), unwanted); };
    if (!validChars_.definition().IsEmpty())
        removeWhere([this](char c) { return !validChars_.charIsInSet(c); });
    if (!invalidChars_.definition().IsEmpty())
        removeWhere([this](char c) { return invalidChars_.charIsInSet(c); });
}
