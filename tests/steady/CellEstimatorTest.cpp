#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "analysis/steady/CellEstimator.h"

namespace korvane::steady {
namespace {

// Need in counts times target, smooth over the map.
double needAt(const Place& place) {
    return std::log(12.5 * (50.0 + 9.0 * place.row + 2.0 * place.column));
}

Place centreOf(std::size_t cell) {
    return {static_cast<double>(cell % 16) + 0.5, static_cast<double>(cell / 16) + 0.5};
}

class SteadyCells : public testing::Test {
protected:
    SteadyCells() {
        reset([](std::size_t) { return 1.0; });
    }

    // The map gives so much of what is needed.
    template <typename Share>
    void reset(const Share& share) {
        std::vector<std::uint8_t> bytes(160);
        for (std::size_t cell = 0; cell < bytes.size(); ++cell) {
            bytes[cell] = static_cast<std::uint8_t>(std::exp(needAt(centreOf(cell))) / 12.5 * share(cell));
        }
        PulseMap map;
        map.reset(setup_, bytes);
        estimator_.reset(setup_, map);
    }
    void sampleAt(const Place& place, const Departures& departures = {}, double off = 0.0) {
        const std::size_t cell = setup_.grid.cellAt(place);
        estimator_.enginePassed(place, cell);
        estimator_.add({.place = place,
                        .cell = cell,
                        .need = needAt(place) + off + 0.01 * noise_(random_),
                        .weight = 1.0,
                        .departures = departures,
                        .pure = true,
                        .seconds = seconds_ += 0.075});
    }
    // All over the rows 3 to 7 and columns 2 to 8.
    void drive(int samples) {
        for (int i = 0; i < samples; ++i) {
            sampleAt({2.0 + 7.0 * uniform_(random_), 3.0 + 5.0 * uniform_(random_)});
        }
    }
    void settle() {
        estimator_.commit();
        for (int i = 0; i < 3000; ++i) {
            estimator_.relax();
        }
    }

    SteadySetup setup_;
    CellEstimator estimator_;
    double seconds_ = 0.0;
    std::mt19937 random_{11};
    std::uniform_real_distribution<double> uniform_{0.0, 1.0};
    std::normal_distribution<double> noise_{0.0, 1.0};
};

TEST_F(SteadyCells, FindTheNeedWhateverTheMapHolds) {
    reset([](std::size_t cell) { return (cell + cell / 16) % 2 == 0 ? 1.12 : 0.88; });
    drive(6000);
    settle();
    for (std::size_t row = 4; row < 7; ++row) {
        for (std::size_t column = 3; column < 8; ++column) {
            const std::size_t cell = row * 16 + column;
            EXPECT_NEAR(estimator_.cell(cell, Firmware::FourBytes).need, needAt(centreOf(cell)), 0.006) << cell;
        }
    }
}

TEST_F(SteadyCells, KnowNothingOfCellsThatWereNeverVisited) {
    drive(3000);
    settle();
    EXPECT_EQ(estimator_.cell(15, Firmware::FourBytes).weight, 0.0);
    EXPECT_EQ(estimator_.cell(15, Firmware::FourBytes).confidence, 0.0);
    EXPECT_EQ(estimator_.cell(15, Firmware::OneByte).confidence, 0.0);
}

TEST_F(SteadyCells, CountOnlySamplesThatWereVouchedFor) {
    drive(1000);
    EXPECT_EQ(estimator_.cell(5 * 16 + 5, Firmware::FourBytes).weight, 0.0);
    estimator_.discard();
    settle();
    EXPECT_EQ(estimator_.cell(5 * 16 + 5, Firmware::FourBytes).weight, 0.0);
    drive(1000);
    settle();
    // A share of 1 in 35 cells, of the second thousand alone.
    EXPECT_NEAR(estimator_.cell(5 * 16 + 5, Firmware::FourBytes).weight, 1000.0 / 35.0, 14.0);
}

TEST_F(SteadyCells, AreSurerWithMoreSamples) {
    drive(200);
    settle();
    const CellNeed few = estimator_.cell(5 * 16 + 5, Firmware::FourBytes);
    drive(5000);
    settle();
    const CellNeed many = estimator_.cell(5 * 16 + 5, Firmware::FourBytes);
    EXPECT_LT(many.error, few.error);
    EXPECT_GT(many.confidence, few.confidence);
    EXPECT_GT(many.confidence, 0.8);
}

TEST_F(SteadyCells, CountAVisitWhereTheSmearedPlaceIs) {
    // The engine has left for the cell beside it, but the gas at the sensor is still mostly from here.
    for (int i = 0; i < 100; ++i) {
        estimator_.add({.place = {4.9, 5.5}, .cell = 5 * 16 + 5, .need = needAt({4.9, 5.5})});
    }
    settle();
    EXPECT_GT(estimator_.cell(5 * 16 + 4, Firmware::FourBytes).confidence, 0.5);
}

TEST_F(SteadyCells, CountAVisitOnlyAfterASecondElsewhere) {
    // To and fro over the border between two cells, ten times in a second, and then away for two.
    for (int i = 0; i < 40; ++i) {
        sampleAt({i % 2 == 0 ? 4.95 : 5.05, 5.5});
    }
    seconds_ += 2.0;
    sampleAt({4.95, 5.5});
    settle();
    EXPECT_EQ(estimator_.cell(5 * 16 + 4, Firmware::FourBytes).visits, 2.0);
    EXPECT_EQ(estimator_.cell(5 * 16 + 5, Firmware::FourBytes).visits, 1.0);
}

TEST_F(SteadyCells, NeedTheMeanOfTheirPlacesForOneByte) {
    // Always in the lower part of the cell: 5.7 to 5.9.
    for (int i = 0; i < 400; ++i) {
        sampleAt({4.2 + 0.6 * uniform_(random_), 5.7 + 0.2 * uniform_(random_)});
    }
    settle();
    EXPECT_NEAR(estimator_.cell(5 * 16 + 4, Firmware::OneByte).need, needAt({4.5, 5.8}), 0.004);
}

TEST_F(SteadyCells, AllowForFuelOnTheWalls) {
    for (int i = 0; i < 6000; ++i) {
        // Always late in coming: without allowing for it the need would be too high.
        const double departure = 0.1 + 0.3 * (uniform_(random_) - 0.5);
        const double slow = departure + 0.2 * (uniform_(random_) - 0.5);
        sampleAt({2.0 + 7.0 * uniform_(random_), 3.0 + 5.0 * uniform_(random_)}, {departure, slow},
                 0.25 * departure + 0.1 * slow);
        if (i % 200 == 0) {
            settle();
        }
    }
    settle();
    const std::size_t cell = 5 * 16 + 5;
    EXPECT_NEAR(estimator_.cell(cell, Firmware::FourBytes).need, needAt(centreOf(cell)), 0.008);
}

TEST_F(SteadyCells, CarryToANeighbourOnlyWithTwoKnownBesideIt) {
    drive(6000);
    settle();
    EXPECT_EQ(estimator_.carried(15, Firmware::FourBytes).weight, 0.0);
    // Row 2 lies above the visited rows: one neighbour alone is known well.
    EXPECT_EQ(estimator_.carried(1 * 16 + 5, Firmware::FourBytes).weight, 0.0);
}

// The spread beyond a per cent, where a visit has fewer than four samples.
TEST_F(SteadyCells, SamplesOfShortVisitsThatDifferMuchLeaveADoubt) {
    const std::size_t cell = 5 * 16 + 5;
    const auto visits = [&](int each) {
        reset([](std::size_t) { return 1.0; });
        for (int i = 0; i < 100 * each; ++i) {
            seconds_ += i % each == 0 ? 2.0 : 0.0;
            sampleAt(centreOf(cell), {}, i % 2 == 0 ? 0.015 : -0.015);
        }
        settle();
        return estimator_.cell(cell, Firmware::FourBytes);
    };
    const CellNeed brief = visits(3);
    EXPECT_NEAR(brief.spread, 0.018, 0.004);
    EXPECT_NEAR(brief.doubt, brief.spread - 0.01, 1e-12);
    EXPECT_EQ(visits(5).doubt, 0.0);
}

// A fifth of them 13 per cent rich: a spread of 5 per cent around a mean that is off by 2.6, however many there are.
TEST_F(SteadyCells, SamplesOfWhichAPartIsWrongLeaveTheirSpreadAsADoubt) {
    const std::size_t cell = 5 * 16 + 5;
    for (int i = 0; i < 1000; ++i) {
        sampleAt(centreOf(cell), {}, i % 5 == 0 ? -0.13 : 0.0);
    }
    settle();
    EXPECT_NEAR(estimator_.cell(cell, Firmware::FourBytes).doubt, 0.053, 0.008);
    EXPECT_GT(estimator_.cell(cell, Firmware::FourBytes).error, 0.0035) << "0.05 by the root of 250, and the visit";
}

// Rows are 9 per cent apart. Two visits, 0.45 rows above the centre and 0.15 below it: their mean is 1.4 per cent off,
// with a standard error of 1.5 (0.3 rows, of whose square 0.1 and a half count, over two).
TEST_F(SteadyCells, AFewVisitsOfARightMapTellLittleForOneByte) {
    const std::size_t cell = 4 * 16 + 5;
    const auto offAt = [&](double mapOff) {
        reset([mapOff](std::size_t) { return 1.0 + mapOff; });
        for (int i = 0; i < 8 * 16; ++i) {
            const Place centre = centreOf(4 * 16 + 2 + static_cast<std::size_t>(i / 16));
            seconds_ += i % 8 == 0 ? 2.0 : 0.0;
            sampleAt({centre.column, centre.row + (i % 16 < 8 ? -0.45 : 0.15)});
        }
        settle();
        return estimator_.cell(cell, Firmware::OneByte).need - needAt(centreOf(cell));
    };
    EXPECT_NEAR(offAt(0.12), -0.014, 0.006) << "of a map that is far off it is believed";
    EXPECT_NEAR(offAt(0.0), 0.0, 0.007);
}

}  // namespace
}  // namespace korvane::steady
