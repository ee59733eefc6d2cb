// Maps that were edited without an ECU, or beyond the size of its maps, come back whole.
#include <gtest/gtest.h>

#include "keep/point/PointExport.h"

namespace korvane::keep {
namespace {

constexpr std::uint8_t kSmall = 11;
constexpr std::uint8_t kLarge = 14;

core::MapImage counting() {
    core::MapImage image{};
    for (std::size_t cell = 0; cell < image.size(); ++cell) {
        image.at(cell) = static_cast<std::uint8_t>(1 + cell % 200);
    }
    return image;
}

Snapshot pointOf(std::uint8_t type) {
    Snapshot point;
    point.ecu.swType = type;
    point.fuel.edited = counting();
    return point;
}

TEST(DeskMaps, OfALargeWindowWithoutAnEcuComeBackWhole) {
    core::MapImage desk{};
    bringBack(pointOf(0), &Snapshot::fuel, MapFrom::Desk, desk);
    EXPECT_EQ(desk, counting());
}

TEST(DeskMaps, OfALargeWindowOnASmallEcuComeBackWhole) {
    core::MapImage desk{};
    bringBack(pointOf(kSmall), &Snapshot::fuel, MapFrom::Desk, desk);
    EXPECT_EQ(desk, counting());
}

TEST(DeskMaps, Of160CellsLeaveTheRestAlone) {
    for (const std::uint8_t type : {std::uint8_t{0}, kSmall}) {
        auto point = pointOf(type);
        std::fill(point.fuel.edited.begin() + 160, point.fuel.edited.end(), std::uint8_t{0});
        core::MapImage desk = counting();
        std::fill(desk.begin(), desk.begin() + 160, std::uint8_t{9});
        bringBack(point, &Snapshot::fuel, MapFrom::Desk, desk);
        EXPECT_EQ(desk, counting()) << int{type};
    }
}

TEST(DeskMaps, UseLargeMapsByTheTypeOrByTheCells) {
    EXPECT_TRUE(usesLargeMaps(pointOf(0)));
    Snapshot empty;
    EXPECT_FALSE(usesLargeMaps(empty));
    empty.ecu.swType = kLarge;
    EXPECT_TRUE(usesLargeMaps(empty));
    Snapshot ignition;
    ignition.ignition.edited.at(319) = 1;
    EXPECT_TRUE(usesLargeMaps(ignition));
}

}  // namespace
}  // namespace korvane::keep
