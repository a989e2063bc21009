#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "toolbox/errors.h"

namespace {

TEST(ErrorObject, WithoutTextNamesItsCodeInTheProcessLanguage) {
    EXPECT_STREQ(ErrObj(5, "").getText(), "Condition # 5 detectee");
    EXPECT_STREQ(ErrObj(INT_MIN).getText(), "Condition # -2147483648 detectee");
    ErrObj::setLanguage(ErrObj::English);
    const ErrObj one(1), two(2);
    const char* const earlier = one.getText();
    static_cast<void>(two.getText());
    EXPECT_STREQ(earlier, "Condition # 2 detected") << "the sentence buffer is shared";
    ErrObj::setLanguage(static_cast<ErrObj::Language>(2));
    EXPECT_STREQ(one.getText(), "Condition # 2 detected") << "no sentence in another language";
    ErrObj::setLanguage(ErrObj::French);
}

TEST(ErrorObject, OwnsItsTextAndTakesItBack) {
    std::string text = "disk full";
    ErrObj error(7, text.c_str());
    text[0] = 'X';
    ErrObj copy(error);
    copy.setText("changed").setCode(8);
    EXPECT_EQ(copy + 1, 9);
    const ErrObj& same = error;
    error = same;
    EXPECT_STREQ(error.getText(), "disk full");
    error.setText(error.getText() + 5);
    EXPECT_STREQ(error.getText(), "full");
    EXPECT_STREQ(error.setText(nullptr).getText(), "Condition # 7 detectee");
}

}  // namespace
