// The system's registry.
#include "platform/host.h"

namespace toolbox::platform {
namespace {

class OpenKey {
  public:
    OpenKey() = default;
    ~OpenKey() {
        if (key_) RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    [[nodiscard]] HKEY get() const { return key_; }
    [[nodiscard]] HKEY* receive() { return &key_; }

  private:
    HKEY key_ = nullptr;
};

class WindowsRegistry final : public RegistryStore {
  public:
    ErrorCode write(HKEY root, const char* key, const char* name, std::uint32_t type,
                    const void* data, std::uint32_t size) override {
        OpenKey open;
        const LSTATUS created = RegCreateKeyExA(root, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                                open.receive(), nullptr);
        if (created != ERROR_SUCCESS) return static_cast<ErrorCode>(created);
        return static_cast<ErrorCode>(
            RegSetValueExA(open.get(), name, 0, type, static_cast<const BYTE*>(data), size));
    }

    ErrorCode read(HKEY root, const char* key, const char* name, std::uint32_t& type, void* data,
                   std::uint32_t& size) override {
        DWORD room = size;
        DWORD kind = 0;
        type = size = 0;
        OpenKey open;
        LSTATUS result = RegOpenKeyExA(root, key, 0, KEY_QUERY_VALUE, open.receive());
        if (result != ERROR_SUCCESS) return static_cast<ErrorCode>(result);
        result =
            RegQueryValueExA(open.get(), name, nullptr, &kind, static_cast<BYTE*>(data), &room);
        if (result == ERROR_SUCCESS || result == ERROR_MORE_DATA) {
            type = kind;
            size = room;
        }
        return static_cast<ErrorCode>(result);
    }
};

}  // namespace

RegistryStore& hostRegistry() {
    static WindowsRegistry registry;
    return registry;
}

}  // namespace toolbox::platform
