// Fixed-width little-endian values in byte buffers: the one way numbers reach the disk.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace toolbox::base {

template <class T>
concept Fixed = (std::integral<T> || std::floating_point<T>)&&sizeof(T) <= 8;

static_assert(std::endian::native == std::endian::little,
              "the codec copies bytes; a big-endian host needs byte swaps in load and store");

template <Fixed T>
[[nodiscard]] T load(const void* bytes) noexcept {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <Fixed T>
void store(void* bytes, T value) noexcept {
    std::memcpy(bytes, &value, sizeof value);
}

/// Stores and returns the first byte after the value, so that fields can be laid out in a row.
template <Fixed T>
[[nodiscard]] std::byte* put(std::byte* bytes, T value) noexcept {
    store(bytes, value);
    return bytes + sizeof value;
}

/// The type a C++ type has on disk: long is 4 bytes whatever the host, long double is a double.
template <class T>
struct OnDisk {
    using type = T;
};
template <>
struct OnDisk<long> {
    using type = std::int32_t;
};
template <>
struct OnDisk<unsigned long> {
    using type = std::uint32_t;
};
template <>
struct OnDisk<long double> {
    using type = double;
};
template <class T>
using OnDiskT = typename OnDisk<T>::type;

}  // namespace toolbox::base
