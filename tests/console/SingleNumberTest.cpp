#include <gtest/gtest.h>

#include "console/ConsoleError.h"
#include "console/text/Convert.h"

namespace korvane::console {
namespace {

TEST(SingleNumber, TakesWhatSinglePrecisionHolds) {
    EXPECT_EQ(singleNumber(Json(3.5)), 3.5F);
    EXPECT_EQ(singleNumber(Json(-2)), -2.0F);
    EXPECT_EQ(singleNumber(Json(3.4e38)), 3.4e38F);
}

TEST(SingleNumber, RefusesWhatItCantHold) {
    EXPECT_THROW(static_cast<void>(singleNumber(Json(1e39))), ConsoleError);
    EXPECT_THROW(static_cast<void>(singleNumber(Json(-1e308))), ConsoleError);
    EXPECT_THROW(static_cast<void>(singleNumber(Json("1"))), ConsoleError);
}

}  // namespace
}  // namespace korvane::console
