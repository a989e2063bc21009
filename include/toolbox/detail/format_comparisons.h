// Comparisons of formats and formatted values of different static types: formats.h includes them.
#pragma once

#include <concepts>

#include "toolbox/formats.h"

// Always by the left one's operator==. Without these the language would also try the right one's
// with the operands swapped, and find the two ambiguous.

template <class A, class B>
requires std::derived_from<A, FormatType> && std::derived_from<B, FormatType>
int operator==(const A& a, const B& b) {
    return static_cast<const FormatType&>(a).operator==(static_cast<const FormatType&>(b));
}
template <class A, class B>
requires std::derived_from<A, FormatType> && std::derived_from<B, FormatType>
int operator!=(const A& a, const B& b) {
    return !(a == b);
}

inline int operator!=(const FormatType& a, const FormatType& b) {
    return !a.operator==(b);
}

// A template loses to the swapped comparison when one of the two is a FormatType itself.
#define TOOLBOX_COMPARE_FORMAT_WITH(Kind)                       \
    inline int operator==(const FormatType& a, const Kind& b) { \
        return a.operator==(b);                                 \
    }                                                           \
    inline int operator!=(const FormatType& a, const Kind& b) { \
        return !a.operator==(b);                                \
    }                                                           \
    inline int operator!=(const Kind& a, const FormatType& b) { \
        return !a.operator==(b);                                \
    }
TOOLBOX_COMPARE_FORMAT_WITH(NumberFormat)
TOOLBOX_COMPARE_FORMAT_WITH(RealFormat)
TOOLBOX_COMPARE_FORMAT_WITH(StringFormat)
TOOLBOX_COMPARE_FORMAT_WITH(NoFormatType)
TOOLBOX_COMPARE_FORMAT_WITH(NumberFormatedValue)
TOOLBOX_COMPARE_FORMAT_WITH(RealFormatedValue)
TOOLBOX_COMPARE_FORMAT_WITH(StringFormatedValue)
TOOLBOX_COMPARE_FORMAT_WITH(NoFormatedValue)
#undef TOOLBOX_COMPARE_FORMAT_WITH
