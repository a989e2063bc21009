// A value stored in a registry file of any bytes reads back with its type, from memory and from
// disk.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "platform/posix/registry_text.h"
#include "require.h"

namespace {

using namespace toolbox::platform::posix;

/// A name up to the next 0xFF of the input, without line breaks, which the store refuses.
std::string takeName(std::string_view& input) {
    std::string name(input.substr(0, input.find('\xFF')));
    input.remove_prefix(std::min(input.size(), name.size() + 1));
    name.resize(std::min(name.size(), name.find('\0')));
    std::erase_if(name, [](char c) { return c == '\r' || c == '\n'; });
    return name;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string key = "HKEY_CURRENT_USER\\" + takeName(input);
    const std::string name = takeName(input);
    RegistryValue value;
    value.type = input.empty() ? 1 : static_cast<unsigned char>(input.front()) % 16;
    value.data = input.substr(0, input.find('\xFF'));
    input.remove_prefix(std::min(input.size(), value.data.size() + 1));

    RegistryText text(input);
    require(input.empty() || text.bytes() == input);
    text.set(key, name, value);
    const RegistryText again(text.bytes());
    for (const RegistryText* read : {&std::as_const(text), &again}) {
        const auto found = read->value(key, name);
        require(found && found->type == value.type && found->data == value.data);
    }
    require(!text.set(key, name, value));
    return 0;
}
