#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "toolbox/errors.h"

namespace {

class ErrorObject : public testing::Test {
  protected:
    ~ErrorObject() override { ErrObj::setLanguage(ErrObj::French); }
};

TEST_F(ErrorObject, WithoutTextNamesItsCodeInTheProcessLanguage) {
    EXPECT_STREQ(ErrObj(12).getText(), "Condition # 12 detectee");
    EXPECT_STREQ(ErrObj(5, "").getText(), "Condition # 5 detectee");
    EXPECT_STREQ(ErrObj(INT_MIN).getText(), "Condition # -2147483648 detectee");
    ErrObj::setLanguage(ErrObj::English);
    EXPECT_STREQ(ErrObj(12).getText(), "Condition # 12 detected");
    EXPECT_STREQ(ErrObj(5, "disk full").getText(), "disk full");
}

TEST_F(ErrorObject, SharesOneSentenceBuffer) {
    const ErrObj one(1), two(2);
    const char* const earlier = one.getText();
    static_cast<void>(two.getText());
    EXPECT_STREQ(earlier, "Condition # 2 detectee");
    ErrObj::setLanguage(static_cast<ErrObj::Language>(2));
    EXPECT_STREQ(one.getText(), "Condition # 2 detectee");
}

TEST_F(ErrorObject, OwnsItsText) {
    std::string text = "disk full";
    ErrObj error(7, text.c_str());
    text[0] = 'X';
    ErrObj copy(error), assigned(1, "other");
    assigned = copy;
    copy.setText("changed").setCode(8);
    EXPECT_STREQ(error.getText(), "disk full");
    EXPECT_STREQ(assigned.getText(), "disk full");
    EXPECT_EQ(int(assigned), 7);
    EXPECT_EQ(copy + 1, 9);
}

TEST_F(ErrorObject, TakesItsOwnTextBack) {
    ErrObj error(7, "disk full");
    const ErrObj& same = error;
    error = same;
    EXPECT_STREQ(error.getText(), "disk full");
    error.setText(error.getText() + 5);
    EXPECT_STREQ(error.getText(), "full");
    EXPECT_STREQ(error.setText(nullptr).getText(), "Condition # 7 detectee");
}

}  // namespace
