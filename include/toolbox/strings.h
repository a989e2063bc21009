// The three string types of the library's signatures.
//
// CString, RWCString and RWCollectableString are distinct types over the same thing: a counted
// string of bytes, in Windows-1252. They are distinct because overloads and the kinds of output
// values (TvOutVal) depend on which one the caller holds; they convert to each other freely, and
// from and to character pointers. A string may hold NUL bytes; conversion to a character pointer
// shows the part before the first one to C functions.
//
// All are plain values. A pointer got from one lives until the string changes or dies.
#pragma once

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "toolbox/export.h"

namespace toolbox {

/// What the three string types share. Not used by itself in signatures.
class ByteString {
  public:
    ByteString() = default;                                     ///< the empty string
    ByteString(const char* text) : bytes_(text ? text : "") {}  ///< null is the empty string
    // These bytes.
    ByteString(const char* text, std::size_t length) : bytes_(text, length) {}
    ByteString(std::string text) noexcept : bytes_(std::move(text)) {}
    ByteString(std::string_view text) : bytes_(text) {}

    // The bytes with a NUL behind them; never null.
    operator const char*() const noexcept { return bytes_.c_str(); }
    [[nodiscard]] const char* c_str() const noexcept { return bytes_.c_str(); }
    [[nodiscard]] const char* data() const noexcept { return bytes_.data(); }
    // The same bytes as the standard library sees them. Changing them changes the string.
    [[nodiscard]] const std::string& str() const noexcept { return bytes_; }
    [[nodiscard]] std::string& str() noexcept { return bytes_; }
    [[nodiscard]] std::string_view view() const noexcept { return bytes_; }

    /// Number of bytes, the terminator not counted.
    [[nodiscard]] std::size_t length() const noexcept { return bytes_.size(); }
    /// True for a string without bytes.
    [[nodiscard]] bool empty() const noexcept { return bytes_.empty(); }

    /// The byte at an index from 0 to length() (the terminator); beyond that, a NUL.
    template <std::integral Index>
    [[nodiscard]] char operator[](Index index) const noexcept {
        const auto at = static_cast<std::size_t>(index);
        return at < bytes_.size() ? bytes_[at] : '\0';
    }

  protected:
    /// All of the string.
    std::string bytes_;
};

template <class S>
concept AnyString = std::derived_from<S, ByteString>;

/// Writes the bytes as they stand.
TB_API std::ostream& operator<<(std::ostream& out, const ByteString& text);

/// Constructors and appending for one concrete string type.
template <class Self>
class StringOf : public ByteString {
  public:
    using ByteString::ByteString;
    StringOf() = default;  ///< the empty string
    /// The bytes of any of the string types.
    StringOf(const ByteString& other) : ByteString(other) {}

    /// Appends; a null pointer appends nothing.
    Self& operator+=(const ByteString& tail) { return append(tail.view()); }
    Self& operator+=(const char* tail) { return append(tail ? tail : ""); }
    Self& operator+=(std::string_view tail) { return append(tail); }
    Self& operator+=(const std::string& tail) { return append(tail); }
    Self& operator+=(char tail) { return append({&tail, 1}); }

  private:
    Self& append(std::string_view tail) {
        bytes_ += tail;
        return static_cast<Self&>(*this);
    }
};

// Equality is by bytes, case counts; a null pointer equals the empty string.
template <AnyString A, AnyString B>
[[nodiscard]] bool operator==(const A& a, const B& b) {
    return a.view() == b.view();
}
template <class A>
[[nodiscard]] bool operator==(const StringOf<A>& a, std::string_view b) {
    return a.view() == b;
}
template <class A>
[[nodiscard]] bool operator==(const StringOf<A>& a, const char* b) {
    return a.view() == std::string_view(b ? b : "");
}
/// Order of the unsigned bytes.
template <AnyString A, AnyString B>
[[nodiscard]] bool operator<(const A& a, const B& b) {
    return a.view() < b.view();
}

// A sum has the type of its first string.
template <AnyString A, class B>
requires requires(A& a, const B& b) {
    a += b;
}
[[nodiscard]] A operator+(A a, const B& b) {
    a += b;
    return a;
}
template <class A>
[[nodiscard]] A operator+(const char* a, const StringOf<A>& b) {
    return A(a) += b;
}

}  // namespace toolbox

/// The platform's string type.
class CString : public toolbox::StringOf<CString> {
  public:
    using StringOf::StringOf;
    CString() = default;

    // Number of bytes, and whether there are none.
    [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(length()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return empty(); }
    /// Makes it the empty string.
    void Empty() noexcept { bytes_.clear(); }
};

/// The container library's string type.
class RWCString : public toolbox::StringOf<RWCString> {
  public:
    using StringOf::StringOf;
    RWCString() = default;

    /// True for the empty string.
    [[nodiscard]] bool isNull() const noexcept { return empty(); }
};

/// The container library's string type that can be kept in collections.
class RWCollectableString : public toolbox::StringOf<RWCollectableString> {
  public:
    using StringOf::StringOf;
    RWCollectableString() = default;

    /// True for the empty string.
    [[nodiscard]] bool isNull() const noexcept { return empty(); }
};
