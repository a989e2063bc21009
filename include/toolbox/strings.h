// The three string types of the library's signatures.
//
// CString, RWCString and RWCollectableString are distinct types over the same thing: a counted
// string of bytes, in Windows-1252. They are distinct because overloads and the kinds of output
// values (TvOutVal) depend on which one the caller holds; they convert to each other freely, and
// from and to character pointers. A string may hold NUL bytes; conversion to a character pointer
// shows the part before the first one to C functions.
//
// All six comparisons, and <=>, take any two of these types, or one of them and a `const char*`, a
// std::string_view or a std::string. They compare the unsigned bytes; case counts. A null pointer
// is the empty text.
//
// All are plain values. A pointer taken from one is valid until the string changes or is destroyed.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "toolbox/export.h"

namespace toolbox {

class ByteString;

/// One of the three string types, or a class derived from one.
template <class S>
concept AnyString = std::derived_from<S, ByteString>;

/// What a string compares with.
template <class T>
concept TextOperand = AnyString<T> || std::convertible_to<const T&, const char*> ||
    std::convertible_to<const T&, std::string_view>;

/// A comparison with a string on at least one side.
template <class A, class B>
concept TextOperands = (AnyString<A> && TextOperand<B>) || (AnyString<B> && TextOperand<A>);

/// What the three string types share. Not used by itself in signatures.
class ByteString {
  public:
    ByteString() = default;                                     ///< the empty string
    ByteString(const char* text) : bytes_(text ? text : "") {}  ///< null is the empty string
    // Copies of these bytes.
    ByteString(const char* text, std::size_t length) : bytes_(text, length) {}
    ByteString(std::string text) noexcept : bytes_(std::move(text)) {}
    ByteString(std::string_view text) : bytes_(text) {}

    // The bytes followed by a NUL; never null.
    operator const char*() const noexcept { return bytes_.c_str(); }
    [[nodiscard]] const char* c_str() const noexcept { return bytes_.c_str(); }
    [[nodiscard]] const char* data() const noexcept { return bytes_.data(); }
    // The same bytes as standard types. Changing str() changes the string.
    [[nodiscard]] const std::string& str() const noexcept { return bytes_; }
    [[nodiscard]] std::string& str() noexcept { return bytes_; }
    [[nodiscard]] std::string_view view() const noexcept { return bytes_; }

    /// Number of bytes, the terminator not counted.
    [[nodiscard]] std::size_t length() const noexcept { return bytes_.size(); }
    /// True for a string without bytes.
    [[nodiscard]] bool empty() const noexcept { return bytes_.empty(); }

    /// The byte at an index; a NUL for any index outside the string.
    template <std::integral Index>
    [[nodiscard]] char operator[](Index index) const noexcept {
        const auto at = static_cast<std::size_t>(index);
        return at < bytes_.size() ? bytes_[at] : '\0';
    }

    // Each order operator is written out: for operands that convert to pointers std::less<> and its
    // kin compare addresses unless they find the operator itself.
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend bool operator==(const A& a, const B& b) {
        return bytesOf(a) == bytesOf(b);
    }
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend std::strong_ordering operator<=>(const A& a, const B& b) {
        return bytesOf(a) <=> bytesOf(b);
    }
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend bool operator<(const A& a, const B& b) { return bytesOf(a) < bytesOf(b); }
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend bool operator<=(const A& a, const B& b) {
        return bytesOf(a) <= bytesOf(b);
    }
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend bool operator>(const A& a, const B& b) { return bytesOf(a) > bytesOf(b); }
    template <class A, class B>
    requires TextOperands<A, B>
    [[nodiscard]] friend bool operator>=(const A& a, const B& b) {
        return bytesOf(a) >= bytesOf(b);
    }
    // A literal 0 or NULL, which is a null pointer.
    template <AnyString A>
    [[nodiscard]] friend bool operator==(const A& a, std::nullptr_t) {
        return a.empty();
    }
    template <AnyString A>
    [[nodiscard]] friend std::strong_ordering operator<=>(const A& a, std::nullptr_t) {
        return a.view() <=> std::string_view();
    }

  protected:
    /// All of the string.
    std::string bytes_;

  private:
    template <TextOperand T>
    static std::string_view bytesOf(const T& operand) {
        if constexpr (AnyString<T>) {
            return operand.view();
        } else if constexpr (std::convertible_to<const T&, const char*>) {
            const char* text = operand;
            return text ? text : "";
        } else {
            return operand;
        }
    }
};

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
