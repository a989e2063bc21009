// A typed reference to one of the caller's variables, with the template that prints it.
//
// Lists of TvOutVal are the arguments of TvFormatMessage (text.h). The variable is referred to, not
// copied: getStr() shows what it holds at that moment, and it must outlive the TvOutVal and its
// copies. Temporary values do not compile, nor do variables of other types than those below, whose
// converted copies would be temporary.
#pragma once

#include <concepts>
#include <cstdint>
#include <type_traits>

#include "toolbox/export.h"
#include "toolbox/strings.h"

class TvCharSet;

namespace toolbox {

template <class T, class... Kinds>
concept OneOf = (std::same_as<T, Kinds> || ...);

/// Types that a TvOutVal can refer to.
template <class T>
concept OutputVariable = OneOf<T, unsigned char, short, int, unsigned int, long, unsigned long,
                               float, double, TvCharSet> || std::derived_from<T, ByteString>;

/// An argument that names such a variable, or points to something.
template <class T>
concept NamesOutputVariable = std::is_pointer_v<std::decay_t<T>> ||
    (std::is_lvalue_reference_v<T>&& OutputVariable<std::remove_cvref_t<T>>);

}  // namespace toolbox

/// The reference. A plain value: copies refer to the same variable.
class TB_API TvOutVal {
  public:
    /// Refers to nothing: not valid, prints nothing.
    TvOutVal() = default;

    // An empty format stands for the kind's default: %u, %hd, %d, %u, %ld, %lu, %g, %lg for the
    // numbers, %s for the texts. A null pointer gives a value that is not valid.
    TvOutVal(const unsigned char* value, const CString& format);
    TvOutVal(const unsigned char& value, const CString& format);
    TvOutVal(const short* value, const CString& format);
    TvOutVal(const short& value, const CString& format);
    TvOutVal(const int* value, const CString& format);
    TvOutVal(const int& value, const CString& format);
    TvOutVal(const unsigned int* value, const CString& format);
    TvOutVal(const unsigned int& value, const CString& format);
    TvOutVal(const long* value, const CString& format);
    TvOutVal(const long& value, const CString& format);
    TvOutVal(const unsigned long* value, const CString& format);
    TvOutVal(const unsigned long& value, const CString& format);
    TvOutVal(const float* value, const CString& format);
    TvOutVal(const float& value, const CString& format);
    TvOutVal(const double* value, const CString& format);
    TvOutVal(const double& value, const CString& format);
    TvOutVal(const CString* value, const CString& format);
    TvOutVal(const CString& value, const CString& format);
    TvOutVal(const RWCString* value, const CString& format);
    TvOutVal(const RWCString& value, const CString& format);
    TvOutVal(const RWCollectableString* value, const CString& format);
    TvOutVal(const RWCollectableString& value, const CString& format);
    TvOutVal(const TvCharSet* value, const CString& format);
    TvOutVal(const TvCharSet& value, const CString& format);

    template <class T>
    requires(!toolbox::NamesOutputVariable<T>) TvOutVal(T&& value, const CString& format)
    = delete;

    /// True when there is a kind, an address and a format. On Windows the memory at the address
    /// must be readable too.
    [[nodiscard]] bool isValid() const;

    /// The variable's text, at most 4095 characters for a number; empty when not valid. A number is
    /// printed by the format, converted where the format does not suit its kind (%s prints
    /// decimal); conversions after the first print nothing. A string is its own text and a
    /// character set its friendly rendering: their format is not applied, "%10s" pads nothing.
    [[nodiscard]] CString getStr() const;

  private:
    enum class Kind : std::int32_t {
        none,
        unsignedChar,
        shortInt,
        integer,
        unsignedInt,
        longInt,
        unsignedLong,
        singleReal,
        doubleReal,
        string,
        libraryString,
        collectableString,
        charSet
    };

    TvOutVal(Kind kind, const void* value, const CString& format);

    Kind kind_ = Kind::none;
    const void* value_ = nullptr;
    CString format_;
};
