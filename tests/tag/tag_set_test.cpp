#include <gtest/gtest.h>

#include "toolbox/tag_layout.h"
#include "toolbox/tags.h"

namespace {

TEST(Tags, AddsAndFinds) {
    TvTagSet set;
    TvTag tag;
    tag.text = "a";
    EXPECT_EQ(set.add(tag), 1U);
}

}  // namespace
