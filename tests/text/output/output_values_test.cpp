#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

template <class T>
CString shown(const T& value, const char* format = "") {
    const CString byReference = TvOutVal(value, format).getStr();
    EXPECT_EQ(TvOutVal(&value, format).getStr(), byReference);
    return byReference;
}

TEST(OutputValue, PrintsEachKindByItsDefault) {
    EXPECT_EQ(shown<unsigned char>(200), "200");
    EXPECT_EQ(shown<short>(-3), "-3");
    EXPECT_EQ(shown(42), "42");
    EXPECT_EQ(shown(4000000000u), "4000000000");
    EXPECT_EQ(shown(-2000000000L), "-2000000000");
    EXPECT_EQ(shown(4294967295UL), "4294967295");
    EXPECT_EQ(shown(0.5f), "0.5");
    EXPECT_EQ(shown(1e10), "1e+010");
    EXPECT_EQ(shown(RWCString("abc")), "abc");
    EXPECT_EQ(shown(RWCollectableString("abc")), "abc");
    EXPECT_EQ(shown(CString("abc"), "%10s"), "abc");
    EXPECT_EQ(shown(LONG_MAX, "%d"), CString(std::to_string(LONG_MAX)));
}

TEST(OutputValue, SurvivesAFormatThatDoesNotSuit) {
    EXPECT_EQ(shown(42, "%n%d%s%d"), "42");
    EXPECT_EQ(shown(42, "%2000000000d").GetLength(), 4095);
}

TEST(OutputValue, ShowsTheVariableAsItIsNow) {
    int n = 42;
    const TvOutVal value(&n, "%05d");
    TvOutVal copy;
    copy = value;
    n = 7;
    EXPECT_EQ(copy.getStr(), "00007");
}

TEST(OutputValue, RendersACharacterSetInWords) {
    toolbox::testing::FakedTexts texts;
    texts.strings.put(1095, "et");
    EXPECT_EQ(shown(TvCharSet(CString("ab")), "%5s"), "'a' et 'b'");
}

TEST(OutputValue, IsEmptyWhenItRefersToNothing) {
    EXPECT_FALSE(TvOutVal().isValid());
    EXPECT_EQ(TvOutVal().getStr(), "");
    const TvOutVal null(static_cast<const double*>(nullptr), "%g");
    EXPECT_FALSE(null.isValid());
    EXPECT_EQ(null.getStr(), "");
#if defined(_WIN32)
    const TvOutVal wild(reinterpret_cast<const int*>(16), "%d");
    EXPECT_EQ(wild.getStr(), "");
#endif
}

// What would dangle, or be read as another type, does not compile.
static_assert(std::is_constructible_v<TvOutVal, int&, const char*>);
static_assert(std::is_constructible_v<TvOutVal, const CString&, const char*>);
static_assert(std::is_constructible_v<TvOutVal, TvCharSet*, CString>);
static_assert(!std::is_constructible_v<TvOutVal, int, const char*>);
static_assert(!std::is_constructible_v<TvOutVal, char&, const char*>);
static_assert(!std::is_constructible_v<TvOutVal, char*, const char*>);
static_assert(!std::is_constructible_v<TvOutVal, CString, const char*>);

}  // namespace
