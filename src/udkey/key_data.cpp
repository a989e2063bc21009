// The record of one key, and the text that a profile keeps of it.
#include <algorithm>
#include <string_view>

#include "base/trimmed.h"
#include "toolbox/keys.h"

using toolbox::base::trimmed;

namespace {

template <class Kind>
std::unique_ptr<FormatType> copyAs(const FormatType& source) {
    auto copy = std::make_unique<Kind>();
    // By assignment: it keeps the justification of a real format whose width is not accepted.
    *copy = source;
    return copy;
}

std::unique_ptr<FormatType> copyOfKind(const FormatType& source) {
    if (source.isReal()) return copyAs<RealFormat>(source);
    if (source.isNumber()) return copyAs<NumberFormat>(source);
    if (source.isString()) return copyAs<StringFormat>(source);
    return std::make_unique<NoFormatType>();
}

/// Cuts the next part off `text`: what lies between separators, none of them counting as empty.
std::string_view nextPart(std::string_view& text, char separator) {
    text.remove_prefix(std::min(text.find_first_not_of(separator), text.size()));
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(part.size());
    return part;
}

}  // namespace

UDKeyData::UDKeyData() : format_(std::make_unique<NoFormatType>()) {}

UDKeyData::UDKeyData(const RWCString& key) : key_(key), format_(std::make_unique<NoFormatType>()) {}

UDKeyData::UDKeyData(const UDKeyData& other)
    : key_(other.key_),
      description_(other.description_),
      format_(copyOfKind(*other.format_)),
      header_(other.header_),
      units_(other.units_) {}

UDKeyData::~UDKeyData() = default;

UDKeyData& UDKeyData::operator=(const UDKeyData& other) {
    if (this == &other) return *this;
    key_ = other.key_;
    description_ = other.description_;
    setFormat(*other.format_);
    header_ = other.header_;
    units_ = other.units_;
    return *this;
}

int UDKeyData::operator==(const UDKeyData& other) const {
    // "No format" equals every format, so the kinds are compared too.
    return key_ == other.key_ && description_ == other.description_ && header_ == other.header_ &&
           units_ == other.units_ &&
           std::string_view(format_->getClassName()) == other.format_->getClassName() &&
           format_->operator==(*other.format_);
}

int UDKeyData::operator==(const RWCString& key) const {
    return key_ == key;
}

void UDKeyData::setDescStr(const RWCString& description) {
    description_ = RWCString(description.view().substr(0, kMaxDescription));
}

void UDKeyData::setFormat(const FormatType& format) {
    format_ = copyOfKind(format);
}

RWCString UDKeyData::saveStringData() const {
    std::string record("|");
    record.append(kMaxDescription - description_.length(), ' ');
    record += description_.view();
    record += '|';
    record += format_->saveStringFormat().view();
    if (!header_.empty()) {
        for (const RWCString& text : {header_, units_}) {
            record += ',';
            record += text.view();
        }
    }
    return record;
}

int UDKeyData::restoreStringData(RWCString text) {
    std::string_view rest = text.view();
    setDescStr(RWCString(trimmed(nextPart(rest, '|'))));
    const std::string_view format = trimmed(nextPart(rest, '|'));
    return format_->restoreStringFormat(RWCString(format.substr(0, format.find(','))));
}
