// A program without resources of its own has the library's newer texts all the same.
#include <gtest/gtest.h>

#include "toolbox/messages.h"

namespace {

struct Supplied {
    unsigned short id;
    const char* french;
    const char* english;
};
constexpr Supplied kSupplied[] = {
#define TOOLBOX_TEXT(id, french, english) {id, french, english},
#include "toolbox_texts.inc"
#undef TOOLBOX_TEXT
};

std::string loaded(unsigned short id, GMSG::Language language) {
    GMSG::language = language;
    char text[512];
    const int length = GMSG::loadString(id, text, sizeof text);
    GMSG::language = GMSG::French;
    return {text, static_cast<std::size_t>(length)};
}

TEST(LastResort, HasTheTextsFrom1300OnInBothLanguages) {
    int found = 0;
    for (const Supplied& text : kSupplied) {
        if (text.id < 1300) continue;
        EXPECT_EQ(loaded(text.id, GMSG::French), text.french) << text.id;
        EXPECT_EQ(loaded(text.id, GMSG::English), text.english) << text.id;
        ++found;
    }
    EXPECT_GE(found, 18);
    EXPECT_EQ(loaded(1699, GMSG::French), "");
}

}  // namespace
