#include <gtest/gtest.h>

#include "platform/Nesting.h"

namespace korvane::platform {
namespace {

TEST(Nesting, LetsAsManyStartsInsideEachOtherAsItsLimit) {
    Nesting nesting(2);
    const Nesting::Level outer(nesting);
    {
        const Nesting::Level inner(nesting);
        const Nesting::Level beyond(nesting);
        EXPECT_TRUE(outer);
        EXPECT_TRUE(inner);
        EXPECT_FALSE(beyond);
        EXPECT_EQ(nesting.depth(), 2) << "one that is refused does not count";
    }
    EXPECT_EQ(nesting.depth(), 1);
    EXPECT_TRUE(Nesting::Level(nesting)) << "what has ended makes room";
}

}  // namespace
}  // namespace korvane::platform
