// Values as a record stores them: little-endian, long double as a double.
#include "base/codec.h"
#include "toolbox/records.h"

namespace {

template <class T>
VarRecord& put(VarRecord& record, T value) {
    const auto stored = static_cast<toolbox::base::OnDiskT<T>>(value);
    char bytes[sizeof stored];
    toolbox::base::store(bytes, stored);
    record.write(bytes, sizeof bytes);
    return record;
}

template <class T>
VarRecord& get(VarRecord& record, T& value) {
    using Stored = toolbox::base::OnDiskT<T>;
    char bytes[sizeof(Stored)];
    record.read(bytes, sizeof bytes);
    value = static_cast<T>(toolbox::base::load<Stored>(bytes));
    return record;
}

}  // namespace

VarRecord& VarRecord::operator<<(char value) {
    return put(*this, value);
}
VarRecord& VarRecord::operator<<(short value) {
    return put(*this, value);
}
VarRecord& VarRecord::operator<<(int value) {
    return put(*this, value);
}
VarRecord& VarRecord::operator<<(float value) {
    return put(*this, value);
}
VarRecord& VarRecord::operator<<(double value) {
    return put(*this, value);
}
VarRecord& VarRecord::operator<<(long double value) {
    return put(*this, value);
}

VarRecord& VarRecord::operator>>(char& value) {
    return get(*this, value);
}
VarRecord& VarRecord::operator>>(short& value) {
    return get(*this, value);
}
VarRecord& VarRecord::operator>>(int& value) {
    return get(*this, value);
}
VarRecord& VarRecord::operator>>(float& value) {
    return get(*this, value);
}
VarRecord& VarRecord::operator>>(double& value) {
    return get(*this, value);
}
VarRecord& VarRecord::operator>>(long double& value) {
    return get(*this, value);
}
