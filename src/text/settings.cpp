// Settings in the registry or in profile files.
#include "toolbox/settings.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "base/number_scan.h"
#include "base/number_text.h"
#include "text/text_resources.h"
#include "toolbox/messages.h"

namespace toolbox {

RWCString SettingName::loaded(unsigned short resource) {
    return RWCString(text::loadText(resource));
}

}  // namespace toolbox

namespace {

using namespace toolbox;

/// One setting in the store in use.
class Setting {
  public:
    Setting(const SettingName& section, const SettingName& entry, const char* dest)
        : section_(section.text()),
          entry_(entry.text()),
          destination_(dest && *dest ? RWCString(dest) : GMSG::getDestName()) {}

    [[nodiscard]] bool isNamed() const {
        return *section_.c_str() && *entry_.c_str() && *destination_.c_str();
    }

    // The registry.

    [[nodiscard]] int writeValue(unsigned long type, const void* data, std::size_t size) const {
        if (!isNamed() || size > std::numeric_limits<std::uint32_t>::max()) return 0;
        return registry().write(GMSG::getKey(), key().c_str(), entry_,
                                static_cast<std::uint32_t>(type), data,
                                static_cast<std::uint32_t>(size)) == ERROR_SUCCESS;
    }
    /// Reads a value of this type and size; on failure `data` may hold anything.
    [[nodiscard]] int readValue(unsigned long type, void* data, std::size_t size) const {
        std::uint32_t foundType = 0;
        auto foundSize = static_cast<std::uint32_t>(size);
        return isNamed() && data &&
               registry().read(GMSG::getKey(), key().c_str(), entry_, foundType, data, foundSize) ==
                   ERROR_SUCCESS &&
               foundType == type && foundSize == size;
    }
    [[nodiscard]] int readRegistryText(RWCString& value) const;

    // Profile files.

    [[nodiscard]] int writeText(const char* text) const {
        return isNamed() && platform::current().profiles->write(destination_, section_, entry_,
                                                                text) == ERROR_SUCCESS;
    }
    [[nodiscard]] int readText(RWCString& value) const {
        char text[kTextSize];
        if (!isNamed() || !platform::current().profiles->read(destination_, section_, entry_, "",
                                                              text, kTextSize))
            return 0;
        value = RWCString(text);
        return 1;
    }

  private:
    static constexpr int kTextSize = 1024;

    static platform::RegistryStore& registry() { return *platform::current().registry; }
    [[nodiscard]] RWCString key() const {
        return RWCString(destination_.c_str()) + "\\" + section_.c_str();
    }

    RWCString section_;
    RWCString entry_;
    RWCString destination_;
};

int Setting::readRegistryText(RWCString& value) const {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (!isNamed() || registry().read(GMSG::getKey(), key().c_str(), entry_, type, nullptr, size) !=
                          ERROR_SUCCESS)
        return 0;
    // One more, so that a text stored without its terminator has one.
    std::vector<char> text(std::size_t{size} + 1, '\0');
    if (type != REG_SZ || !readValue(REG_SZ, text.data(), size)) return 0;
    value = RWCString(text.data());
    return 1;
}

template <class Number>
int writeReal(const Setting& setting, Number value, int precision) {
    if (GMSG::useRegistry()) return setting.writeValue(REG_BINARY, &value, sizeof value);
    constexpr int kUsual = 6;
    char text[base::kNumberTextMax + 1];
    *base::printFixed(text, value, precision < 0 ? kUsual : precision) = '\0';
    return setting.writeText(text);
}

template <class Number>
int readReal(const Setting& setting, Number& value, Number byDefault) {
    Number stored{};
    RWCString text;
    int found = 0;
    if (GMSG::useRegistry()) {
        found = setting.readValue(REG_BINARY, &stored, sizeof stored);
    } else {
        found = setting.readText(text);
        stored = static_cast<Number>(base::leadingReal(text.view()));
    }
    value = found ? stored : byDefault;
    return found;
}

int writeInteger(const Setting& setting, std::int32_t value) {
    if (GMSG::useRegistry()) return setting.writeValue(REG_DWORD, &value, sizeof value);
    return setting.writeText(std::to_string(value).c_str());
}

/// The number in a profile may be larger than the 32 bits of the registry: the nearer of the two
/// ends is read then.
int readInteger(const Setting& setting, long long& value, long long lowest, long long highest) {
    if (GMSG::useRegistry()) {
        std::int32_t stored = 0;
        const int found = setting.readValue(REG_DWORD, &stored, sizeof stored);
        value = stored;
        return found;
    }
    RWCString text;
    const int found = setting.readText(text);
    value = std::clamp(base::leadingInteger(text.view()), lowest, highest);
    return found;
}

}  // namespace

int GMSG::writeProfile(const SettingName& section, const SettingName& entry, const char* value,
                       const char* dest) {
    const Setting setting(section, entry, dest);
    const char* text = value ? value : "";
    return useRegistry() ? setting.writeValue(REG_SZ, text, std::strlen(text) + 1)
                         : setting.writeText(text);
}
int GMSG::writeProfile(const SettingName& section, const SettingName& entry, const RWCString& value,
                       const char* dest) {
    return writeProfile(section, entry, value.c_str(), dest);
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, RWCString& value,
                     const RWCString& byDefault, const char* dest) {
    const Setting setting(section, entry, dest);
    RWCString stored;
    const int found = useRegistry() ? setting.readRegistryText(stored) : setting.readText(stored);
    value = found ? stored : byDefault;
    return found;
}

int GMSG::writeProfile(const SettingName& section, const SettingName& entry, double value,
                       int precision, const char* dest) {
    return writeReal(Setting(section, entry, dest), value, precision);
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, double& value,
                     double byDefault, const char* dest) {
    return readReal(Setting(section, entry, dest), value, byDefault);
}
int GMSG::writeProfile(const SettingName& section, const SettingName& entry, float value,
                       int precision, const char* dest) {
    return writeReal(Setting(section, entry, dest), value, precision);
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, float& value,
                     float byDefault, const char* dest) {
    return readReal(Setting(section, entry, dest), value, byDefault);
}

int GMSG::writeProfile(const SettingName& section, const SettingName& entry, int value,
                       const char* dest) {
    return writeInteger(Setting(section, entry, dest), value);
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, int& value,
                     int byDefault, const char* dest) {
    using Limits = std::numeric_limits<int>;
    long long stored = 0;
    const int found =
        readInteger(Setting(section, entry, dest), stored, Limits::min(), Limits::max());
    value = found ? static_cast<int>(stored) : byDefault;
    return found;
}

int GMSG::writeProfile(const SettingName& section, const SettingName& entry, unsigned long value,
                       const char* dest) {
    if (value > std::numeric_limits<std::uint32_t>::max()) return 0;
    const auto bits = static_cast<std::uint32_t>(value);
    return writeInteger(Setting(section, entry, dest), static_cast<std::int32_t>(bits));
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, unsigned long& value,
                     unsigned long byDefault, const char* dest) {
    using Low = std::numeric_limits<std::int32_t>;
    using High = std::numeric_limits<std::uint32_t>;
    long long stored = 0;
    const int found = readInteger(Setting(section, entry, dest), stored, Low::min(), High::max());
    value = found ? static_cast<std::uint32_t>(stored) : byDefault;
    return found;
}

int GMSG::writeProfile(const SettingName& section, const SettingName& entry,
                       const unsigned char* value, unsigned long length, const char* dest) {
    if (!useRegistry() || (!value && length > 0)) return 0;
    return Setting(section, entry, dest).writeValue(REG_BINARY, value, length);
}
int GMSG::getProfile(const SettingName& section, const SettingName& entry, unsigned char* value,
                     unsigned long length, const unsigned char* byDefault, const char* dest) {
    if (!value) return 0;
    if (useRegistry()) {
        // Into other memory first: `value` and `byDefault` may be the same.
        std::vector<unsigned char> stored(length + 1ul);
        if (Setting(section, entry, dest).readValue(REG_BINARY, stored.data(), length)) {
            std::copy_n(stored.begin(), length, value);
            return 1;
        }
    }
    if (byDefault)
        std::memmove(value, byDefault, length);
    else
        std::memset(value, 0, length);
    return 0;
}
