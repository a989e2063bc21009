// The services in use, and what an implementation need not write itself.
#include "platform/host.h"

namespace toolbox::platform {

Services& current() noexcept {
    static Services services = hostServices();
    return services;
}

std::vector<std::optional<std::string>> ProfileStore::readMany(
    const char* file, const char* section, std::span<const char* const> entries) {
    constexpr std::size_t kLongest = std::size_t{1} << 26;
    std::vector<std::optional<std::string>> values;
    values.reserve(entries.size());
    std::string text(512, '\0');
    for (const char* entry : entries) {
        values.emplace_back();
        while (read(file, section, entry, "", text.data(), static_cast<int>(text.size()))) {
            const std::size_t length = text.find('\0');
            if (length + 1 >= text.size() && text.size() < kLongest) {
                text.resize(text.size() * 4);  // it may have been cut
                continue;
            }
            values.back() = text.substr(0, length);
            break;
        }
    }
    return values;
}

}  // namespace toolbox::platform
