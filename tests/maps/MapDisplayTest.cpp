#include "MapsBench.h"
#include "core/Checked.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {
namespace {

using controls::kBlack;
using controls::kBlue;
using controls::kRed;

// Injection mode 2 with multiplier 3: a fuel count is a 24th of a millisecond.
class DisplayBench : public MapsBench {
protected:
    DisplayBench(MapGeometry shape, InjectionScale scale) : window_(machine_.machine, context_, shape, scale) {
        setParameter(tables_.addresses.INJ_MODE_OFFSET, 2);
        setParameter(tables_.addresses.INJ_MULTIPLIER_OFF, 3);
        window_.show();
    }

    // An image as received: no cell is edited.
    static void receive(core::MapImage& in, core::MapImage& out, int cell, std::uint8_t count) {
        core::checked(in, cell) = count;
        core::checked(out, cell) = count;
    }
    void receiveFuel(int cell, std::uint8_t count) { receive(tables_.FuelMapIn, tables_.FuelMapOut, cell, count); }

    static std::string textOf(MapGrid& grid, int cell) { return grid(cell).Text; }
    static controls::Color colorOf(MapGrid& grid, int cell) { return grid(cell).ForeColor; }
    static void expectCell(MapGrid& grid, int cell, const char* text, controls::Color color, const char* toolTip) {
        EXPECT_EQ(textOf(grid, cell), text);
        EXPECT_EQ(colorOf(grid, cell), color);
        EXPECT_EQ(grid(cell).ToolTipText.get(), toolTip);
    }

    std::string chartData(int row, int column) {
        frm3Dmap_.MSChart1.Row = row;
        frm3Dmap_.MSChart1.Column = column;
        return frm3Dmap_.MSChart1.Data();
    }

    BenchWindow window_;
};

class MapDisplayTest : public DisplayBench {
protected:
    MapDisplayTest() : DisplayBench(kOrdinaryMaps, &ordinaryInjectionScale) {}
};

class LargeMapDisplayTest : public DisplayBench {
protected:
    LargeMapDisplayTest() : DisplayBench(kLargeMaps, &largeInjectionScale) {}
};

TEST_F(MapDisplayTest, ScaleIsRoundedToSinglePrecision) {
    window_.updateScale();
    EXPECT_EQ(window_.InjTimeScale, static_cast<float>(768000.0 / 18432000.0));
}

TEST_F(MapDisplayTest, FuelCellShowsMillisecondsAndPower) {
    receiveFuel(0, 36);
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 0), "1.5");
    EXPECT_EQ(colorOf(window_.fuel, 0), kBlack);
    // 550 / 10.51 * 1.5 / 60 / 0.6 * 4 = 8.72 at 1000 rpm, where a cycle of 120 ms has two injections.
    EXPECT_EQ(window_.fuel(0).ToolTipText.get(), " 368.7 hp (550cc) 0");
    EXPECT_EQ(textOf(window_.fuel, 159), "0");
    EXPECT_EQ(window_.fuel(159).ToolTipText.get(), " 00 hp (550cc) 159");
}

TEST_F(MapDisplayTest, FuelScaleIsTakenAnewAtEachPass) {
    receiveFuel(5, 72);
    setParameter(tables_.addresses.INJ_MODE_OFFSET, 3);
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 5), "1");  // 72 counts of a 72nd
    EXPECT_EQ(tables_.EEParams.at(static_cast<std::size_t>(tables_.addresses.INJ_MODE_OFFSET)).value,
              core::ParameterValue(std::uint8_t{2}));
    window_.populateFuelOUT();
    EXPECT_EQ(textOf(window_.fuel, 5), "3");
}

TEST_F(MapDisplayTest, EditedFuelIsBlueWhicheverImageIsShown) {
    tables_.FuelMapIn[3] = 24;
    tables_.FuelMapOut[3] = 48;
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 3), "1");
    EXPECT_EQ(colorOf(window_.fuel, 3), kBlue);
    EXPECT_EQ(window_.fuel(3).ToolTipText.get().substr(0, 3), " 24");
    window_.populateFuelOUT();
    EXPECT_EQ(textOf(window_.fuel, 3), "2");
    EXPECT_EQ(colorOf(window_.fuel, 3), kBlue);
    EXPECT_EQ(window_.fuel(3).ToolTipText.get().substr(0, 3), " 48");
    tables_.FuelMapOut[3] = 24;
    window_.populateFuelOUT();
    EXPECT_EQ(colorOf(window_.fuel, 3), kBlack);
}

TEST_F(MapDisplayTest, FuelThatDoesNotFitBetweenTwoInjectionsIsRed) {
    // Column 10 is 6000 rpm: 20 ms, 10 for each of two injections.
    receiveFuel(10, 240);
    receiveFuel(26, 241);
    tables_.FuelMapIn[42] = 1;
    tables_.FuelMapOut[42] = 241;
    window_.populateFuelOUT();
    EXPECT_EQ(textOf(window_.fuel, 10), "10");
    EXPECT_EQ(colorOf(window_.fuel, 10), kBlack);
    EXPECT_EQ(textOf(window_.fuel, 26), "10.041");
    EXPECT_EQ(colorOf(window_.fuel, 26), kRed);
    EXPECT_EQ(colorOf(window_.fuel, 42), kRed);
}

TEST_F(MapDisplayTest, OffsetCountsInTimeUnitsOf288thsUnlessItCountsAsMapCounts) {
    window_.txtMisc(2).Text = "10";
    receiveFuel(0, 0);
    receiveFuel(1, 250);
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 0), "0.034");   // 10 / 288
    EXPECT_EQ(textOf(window_.fuel, 1), "10.451");  // 250 / 24 + 10 / 288 = 10.45138
    tables_.InjOff_type = 1;
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 0), "0.416");   // 10 / 24
    EXPECT_EQ(textOf(window_.fuel, 1), "10.625");  // 255 counts, not 260
}

TEST_F(MapDisplayTest, OffsetThatIsNoNumberIsZero) {
    window_.txtMisc(2).Text = "mitään";
    receiveFuel(0, 36);
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 0), "1.5");
}

TEST_F(MapDisplayTest, AnOffsetInCountsKnowsNeitherRedNorPower) {
    tables_.InjOff_type = 1;
    receiveFuel(15, 255);  // 10.625 ms in the 14.1 ms of 8500 rpm
    tables_.FuelMapOut[14] = 255;
    window_.populateFuelOUT();
    EXPECT_EQ(colorOf(window_.fuel, 15), kBlack);
    EXPECT_EQ(colorOf(window_.fuel, 14), kBlue);
    EXPECT_EQ(window_.fuel(15).ToolTipText.get(), " 255 hp (550cc) 15");
    tables_.InjOff_type = 0;
    window_.populateFuelOUT();
    EXPECT_EQ(colorOf(window_.fuel, 15), kRed);
}

TEST_F(MapDisplayTest, AnAbsurdOffsetFailsAndLeavesTheCellsLocked) {
    window_.txtMisc(2).Text = "1E300";
    EXPECT_THROW(window_.populateFuelOUT(), platform::RuntimeError);
    EXPECT_THROW(window_.populateFuel(), platform::RuntimeError);
    for (auto& cell : window_.fuel.cells) {
        EXPECT_TRUE(cell.Locked);
    }
}

TEST_F(MapDisplayTest, ToolTipHoldsAnyInjectorSize) {
    tables_.NewInjectorSize = 3e38F;
    receiveFuel(159, 255);
    window_.populateFuel();
    EXPECT_THAT(window_.fuel(159).ToolTipText.get(), testing::HasSubstr(" hp (3E+38cc) 159"));
}

// Whether each cell was locked when its text changed.
class LockWatcher : public controls::Observer {
public:
    explicit LockWatcher(MapGrid& grid) : grid_(grid) {
        for (auto& cell : grid_.cells) {
            cell.addObserver(*this);
        }
    }
    void propertyChanged(controls::Object& object, const void* property) override {
        if (auto& cell = dynamic_cast<controls::TextBox&>(object); property == &cell.Text) {
            locked.push_back(cell.Locked);
        }
    }

    std::vector<bool> locked;

private:
    MapGrid& grid_;
};

TEST_F(MapDisplayTest, CellsOfAnEditedImageAreUnlockedWhileTheyAreRewritten) {
    LockWatcher fuel(window_.fuel);
    LockWatcher ign(window_.ign);
    tables_.FuelMapOut.fill(1);
    tables_.IgnMapOut.fill(1);
    window_.populateFuelOUT();
    window_.populateIGNOUT();
    EXPECT_EQ(fuel.locked, std::vector<bool>(160, false));
    EXPECT_EQ(ign.locked, std::vector<bool>(160, false));
    for (auto* grid : {&window_.fuel, &window_.ign}) {
        for (auto& cell : grid->cells) {
            EXPECT_TRUE(cell.Locked);
            cell.removeObserver(grid == &window_.fuel ? fuel : ign);
        }
    }
}

TEST_F(MapDisplayTest, CellsOfAReceivedImageStayLocked) {
    LockWatcher fuel(window_.fuel);
    tables_.FuelMapIn.fill(1);
    window_.populateFuel();
    EXPECT_EQ(fuel.locked, std::vector<bool>(160, true));
    for (auto& cell : window_.fuel.cells) {
        cell.removeObserver(fuel);
    }
}

TEST_F(MapDisplayTest, EventsRunAtEachFuelCellAndAtNoOther) {
    int events = 0;
    std::unique_ptr<platform::Alarm> alarm;
    alarm = machine_.pump.makeAlarm([&] {
        ++events;
        alarm->callAt(machine_.pump.now());
    });
    alarm->callAt(machine_.pump.now());
    window_.populateFuel();
    EXPECT_EQ(events, 160);
    window_.populateIGN();
    window_.populatePWM();
    EXPECT_EQ(events, 160);
}

TEST_F(MapDisplayTest, TheWindowMayCloseInTheMiddle) {
    const auto alarm = machine_.pump.makeAlarm([&] { static_cast<void>(window_.unload()); });
    alarm->callAt(machine_.pump.now());
    receiveFuel(159, 36);
    window_.populateFuel();
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_EQ(textOf(window_.fuel, 159), "1.5");
}

TEST_F(MapDisplayTest, AModeOfZeroInTheMiddleIsNoFailure) {
    const auto alarm = machine_.pump.makeAlarm([&] { setParameter(tables_.addresses.INJ_MODE_OFFSET, 0); });
    alarm->callAt(machine_.pump.now());
    receiveFuel(15, 255);
    window_.populateFuel();
    expectCell(window_.fuel, 15, "10.625", kBlack, " 255 hp (550cc) 15");
}

TEST_F(MapDisplayTest, IgnitionIsShownInDegrees) {
    receive(tables_.IgnMapIn, tables_.IgnMapOut, 0, 255);
    tables_.IgnMapIn[1] = 7;
    tables_.IgnMapOut[1] = 128;
    window_.populateIGN();
    expectCell(window_.ign, 0, "51", kBlack, "255");
    expectCell(window_.ign, 1, "1.4", kBlue, "7");
    EXPECT_EQ(textOf(window_.ign, 159), "0");
    window_.populateIGNOUT();
    expectCell(window_.ign, 1, "25.6", kBlue, "128");
}

TEST_F(MapDisplayTest, PwmIsShownInMilliseconds) {
    receive(tables_.PwmMapIn, tables_.PwmMapOut, 0, 1);
    tables_.PwmMapIn[1] = 72;
    tables_.PwmMapOut[1] = 36;
    window_.populatePWM();
    expectCell(window_.pwm, 0, "0.013", kBlack, "1");
    EXPECT_EQ(textOf(window_.pwm, 1), "1");
    window_.populatePWMOUT();
    expectCell(window_.pwm, 1, "0.5", kBlue, "36");
    EXPECT_EQ(textOf(window_.pwm, 159), "0");
}

TEST_F(MapDisplayTest, PwmLongerThanAQuarterOfTheCycleIsRed) {
    // Column 15 is 8500 rpm: 14.117 ms, a quarter of it 3.529.
    receive(tables_.PwmMapIn, tables_.PwmMapOut, 15, 254);  // 3.527
    receive(tables_.PwmMapIn, tables_.PwmMapOut, 31, 255);  // 3.541
    receive(tables_.PwmMapIn, tables_.PwmMapOut, 30, 255);
    window_.populatePWM();
    EXPECT_EQ(colorOf(window_.pwm, 15), kBlack);
    EXPECT_EQ(colorOf(window_.pwm, 31), kRed);
    EXPECT_EQ(colorOf(window_.pwm, 30), kBlack);
}

TEST_F(MapDisplayTest, EachTableRefreshesItsOwn3DView) {
    frm3Dmap_.open();
    tables_.FuelMapOut[0] = 11;
    tables_.IgnMapOut[0] = 22;
    tables_.PwmMapOut[0] = 33;
    window_.populateFuel();
    EXPECT_EQ(chartData(1, 1), "11");
    window_.populateIGN();
    EXPECT_EQ(chartData(1, 1), "22");
    window_.populatePWM();
    EXPECT_EQ(chartData(1, 1), "33");
    window_.populateFuelOUT();
    EXPECT_EQ(chartData(1, 1), "11");
    window_.populateIGNOUT();
    EXPECT_EQ(chartData(1, 1), "22");
    window_.populatePWMOUT();
    EXPECT_EQ(chartData(1, 1), "33");
}

TEST_F(LargeMapDisplayTest, AllRowsAndColumnsAreShown) {
    receiveFuel(319, 36);
    receive(tables_.IgnMapIn, tables_.IgnMapOut, 319, 5);
    receive(tables_.PwmMapIn, tables_.PwmMapOut, 319, 72);
    window_.populateFuel();
    window_.populateIGN();
    window_.populatePWM();
    EXPECT_EQ(textOf(window_.fuel, 319), "1.5");
    EXPECT_EQ(textOf(window_.ign, 319), "1");
    EXPECT_EQ(textOf(window_.pwm, 319), "1");
    // 550 / 10.51 * 1.5 / 5.714285 / 0.6 * 4 = 91.57 at 10500 rpm.
    EXPECT_EQ(window_.fuel(319).ToolTipText.get(), " 3691.5 hp (550cc) 319");
}

TEST_F(LargeMapDisplayTest, ModeOneTakesItsScaleFromTheMultiplier) {
    setParameter(tables_.addresses.INJ_MODE_OFFSET, 1);
    setParameter(tables_.addresses.INJ_MULTIPLIER_OFF, 6);
    receiveFuel(0, 36);
    window_.populateFuel();
    EXPECT_EQ(textOf(window_.fuel, 0), "3");  // 36 counts of a 12th
}

TEST_F(LargeMapDisplayTest, RedGoesByTwentyColumns) {
    receiveFuel(16, 180);  // 7.5 ms; 9000 rpm leave 6.67 of 13.33
    receiveFuel(20, 180);  // 1000 rpm
    window_.populateFuel();
    EXPECT_EQ(colorOf(window_.fuel, 16), kRed);
    EXPECT_EQ(colorOf(window_.fuel, 20), kBlack);
}

}  // namespace
}  // namespace korvane::maps
