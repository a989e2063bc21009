#include <gtest/gtest.h>

#include <string>

#include "toolbox/errors.h"

namespace {

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
