// Values of keys as text.
#include "base/trimmed.h"
#include "udkey/shared.h"

namespace udkey = toolbox::udkey;

namespace {

void appendText(const RWCString& text, int strip, std::string& out) {
    out += strip ? toolbox::base::trimmed(text.view()) : text.view();
}

}  // namespace

void UDManager::appendFormatted(const udkey::KeyEntry& entry, int strip, std::string& out) {
    const auto append = [&](auto value) {
        value.setFormat(*entry.data().getFormat());
        // From here on the application runs, and the entry may go.
        if (getKeyValue(entry.id(), &value) == 1) appendText(value.getStringValue(), strip, out);
    };
    if (entry.key().empty()) return;
    switch (entry.kind()) {
        case udkey::FormatKind::real:
            return append(RealFormatedValue());
        case udkey::FormatKind::number:
            return append(NumberFormatedValue());
        case udkey::FormatKind::string:
            return append(StringFormatedValue());
        case udkey::FormatKind::none:
            return;
    }
}

RWCString UDManager::getFormatedString(UINT id, int strip) {
    const udkey::Shared* all = udkey::ready();
    const udkey::KeyEntry* entry = all ? all->keys.find(id) : nullptr;
    std::string text;
    if (entry) appendFormatted(*entry, strip, text);
    return text;
}

RWCString UDManager::getFormatedString(UINT id, FormatedValue& value, int strip) {
    const udkey::Shared* all = udkey::shared().get();
    const udkey::KeyEntry* entry = all ? all->keys.find(id) : nullptr;
    if (!entry) return {};
    const FormatType& format = *entry->data().getFormat();
    if (!value.isA(format)) return {};
    if (!value.operator==(format)) value.setFormat(format);
    std::string text;
    appendText(value.getStringValue(), strip, text);
    return text;
}
