// What the tests of typed numbers share.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>

#include "support/speaking.h"
#include "toolbox/numbers.h"

namespace toolbox::testing {

/// What scanning gives: the number and no sentence, or a sentence.
template <class T>
struct Scanned {
    bool taken = false;
    T value = 77;  ///< as it was before for a text that is refused
    std::string why;
};

template <class T>
Scanned<T> scanned(const TvNumber<T>& number, const std::string& text) {
    Scanned<T> result;
    CString why;
    result.taken = number.scan(text, result.value, &why);
    result.why = why.str();
    return result;
}

template <class T>
void expectTaken(const TvNumber<T>& number, const std::string& text, T value) {
    const Scanned<T> result = scanned(number, text);
    EXPECT_TRUE(result.taken) << text << ": " << result.why;
    EXPECT_EQ(result.value, value) << text;
    EXPECT_EQ(result.why, "") << text;
}

template <class T>
void expectRefused(const TvNumber<T>& number, const std::string& text, const std::string& why) {
    const Scanned<T> result = scanned(number, text);
    EXPECT_FALSE(result.taken) << text << " is " << result.value;
    EXPECT_EQ(result.value, 77) << text;
    EXPECT_EQ(result.why, why) << text;
}

inline std::uint64_t bitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

}  // namespace toolbox::testing
