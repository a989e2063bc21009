#include "agreement.h"

#include <gtest/gtest.h>

namespace {

TEST(Grid, AgreesWithOneThatGoesStepByStep) {
    testing::internal::CaptureStdout();
    const Agreement result = compareGrids(50'000, 1);
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(result.agrees) << result.differsOn;
    EXPECT_GT(result.formulas, 20'000) << "the generated texts test too little";
}

}  // namespace
