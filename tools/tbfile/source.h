// Bytes that are only ever read.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tbfile {

class Source {
  public:
    virtual ~Source() = default;

    [[nodiscard]] virtual std::uint64_t size() const = 0;
    /// Reads up to `n` bytes at `offset`; returns those that there were before the end. A failure
    /// of the system is thrown as Failure.
    virtual std::size_t readAt(std::uint64_t offset, char* buffer, std::size_t n) const = 0;
};

}  // namespace tbfile
