// Which name, unit and head a person sees at a box, and what is read out there. A box under a wrong name saves a wrong
// setting.
#include <QLabel>

#include <algorithm>
#include <cstdlib>

#include "views/MiscViewBench.h"

namespace korvane::views {
namespace {

constexpr int kNear = 3;      // pixels
constexpr int kUnitGap = 12;  // a unit follows its box directly

struct Line {
    int tab;
    const char* box;
    const char* name;  // left of it
    const char* unit;  // right of it
};

constexpr Line kLines[] = {
    {1, "txtchargetime", "Latausaika 13.5 Voltilla", "ms"},
    {1, "txtIgnEdge", "Edge", ""},
    {1, "txtMotorBrakeLow", "Motorbrake start RPM", ""},
    {1, "txtMotorBrakeHigh", "Stop RPM", ""},
    {2, "txtInjMode", "Mode (1, 2, 4)", ""},
    {2, "txtInjMultiplier", "Multiplier", ""},
    {2, "txtStart", "Start help", "ms"},
    {2, "txtStartHelpLen", "Start help length", ""},
    {2, "txtRyyppy", "Choke", "ms"},
    {2, "txtChokeEnd", "Choke end", ""},
    {5, "txtLoadOffset", "Offset", ""},
    {5, "txtLoadGain", "Gain", "10 = factor 1"},
    {7, "txtBoostIgnCut", "Boost Ignition CUT", ""},
    {7, "txtColdRPMlimit", "cold RPM limit, active while choke is ON", ""},
    {7, "txtWaterWarning", "Water temperature, forced RPM-limiter (2500)", ""},
    {7, "txtOilWarning", "Oil temperature, forced RPM-limiter (2500)", ""},
    {7, "txtAirWarning", "Temperature4 Warning", ""},      // crossed with the next
    {7, "txtTemp4Warning", "Air temperatureWarning", ""},  // on purpose
    {7, "txtVolt1Warning", "Volt1 Warning", "meas"},
    {7, "txtVolt2Warning", "Volt2 Warning", "meas"},
    {7, "txtVolt3Warning", "Volt3 Warning", "meas"},
    {7, "txtVolt4Warning", "Volt4 Warning", "meas"},
    {8, "txtLaunchcontrol", "Launch control rpm limit", "rpm"},
    {8, "Combolaunchmode", "Mode", ""},
    {8, "txtlaunchdelay", "Launch stop delay", ""},
    {8, "txtflatshiftstartdelay", "Flat shift start delay", ""},
    {8, "txtflatshiftstopdelay", "Flat shift stop delay", ""},
    {8, "txtALS_fuel", "ALS, Fuel enrichment (%)", ""},
    {8, "txtALS_ign_retard", "ALS, ignition advance  (degrees) after TDC", ""},
    {8, "txtAccelLimiterMode", "Acceleration limiter mode", ""},
    {8, "txtAccelLimiterValue", "Acceleration limiter value", ""},
};

struct Cell {
    int tab;
    const char* box;
    const char* head;    // over it
    const char* row;     // left of its row
    const char* spoken;  // row and head together
};

constexpr Cell kCells[] = {
    {1, "txtIdleAdv(0)", "500", "", "Idle Ignition 500 RPM"},
    {1, "txtIdleAdv(4)", "900", "", "Idle Ignition 900 RPM"},
    {2, "txtVolt(0)", "<13.5", "", "Voltage correction <13.5 V"},
    {2, "txtVolt(3)", "<10", "", "Voltage correction <10 V"},
    {2, "txtInjAdv(0)", "1.0", "", "Injection advance 1.0 RPM"},
    {2, "txtInjAdv(15)", "8.5", "", "Injection advance 8.5 RPM"},
    {2, "txtAccel(0)", "0", "", "Acceleration pump 0"},
    {2, "txtAccel(9)", "90", "", "Acceleration pump 90"},
    {3, "txtIdleValveSetpoint", "rpm Setpoint", "", "Idle valve rpm Setpoint"},
    {3, "txtIdleValveMin", "% min", "", "Idle valve % min"},
    {3, "txtIdleValveMax", "% max", "", "Idle valve % max"},
    {3, "txtBoostTav(0)", "1.0", "", "Boost 1.0 RPM"},
    {3, "txtBoostTav(15)", "8.5", "", "Boost 8.5 RPM"},
    {4, "txtLambdaTav(0)", "1", "Setpoint", "Lambda setpoint 1"},
    {4, "txtLambdaVaik(9)", "10", "", "Lambda authority 10"},
    {4, "txtLambdaVaik(0)", "1", "Authority", "Lambda authority 1"},
    {4, "txtInjIdleMap(0)", "0.5", "", "Idle Fuel 0.5 RPM"},
    {4, "txtInjIdleMap(15)", "2.0", "", "Idle Fuel 2.0 RPM"},
    {5, "txtNTC1", "NTC1, water", "", "NTC1, water"},
    {5, "txtNTC2", "NTC2, air", "", "NTC2, air"},
    {5, "txtNTC3", "NTC3, oil", "", "NTC3, oil"},
    {5, "txtNTC4", "NTC4", "", "NTC4"},
    {5, "txtNTCMultiplier", "Multiplier", "", "Multiplier"},
};

struct MiscNamesTest : testing::Test, MiscViewBench {
    [[nodiscard]] QRect place(const QWidget& widget) const {
        return {widget.mapTo(&view(), QPoint(0, 0)), widget.size()};
    }
    // The label nearest to a box among those that `distance` measures; it gives less than 0 for all others.
    template <class Distance>
    [[nodiscard]] std::string nearest(const std::string& box, Distance distance) const {
        const QWidget& widget = find(box);
        std::string text;
        int least = 10'000;
        for (const auto* label : widget.parentWidget()->findChildren<QLabel*>()) {
            const int far = label->isVisible() ? distance(place(*label), place(widget)) : -1;
            if (far >= 0 && far < least) {
                least = far;
                text = label->text().toStdString();
            }
        }
        return text;
    }
    [[nodiscard]] static bool shareLine(const QRect& one, const QRect& other) {
        return std::abs(one.center().y() - other.center().y()) <= kNear;
    }
    [[nodiscard]] std::string leftOf(const std::string& box) const {
        return nearest(box, [](const QRect& label, const QRect& field) {
            return shareLine(label, field) ? field.left() - label.right() : -1;
        });
    }
    [[nodiscard]] std::string rightOf(const std::string& box) const {
        return nearest(box, [](const QRect& label, const QRect& field) {
            const int gap = label.left() - field.right();
            return shareLine(label, field) && gap <= kUnitGap ? gap : -1;
        });
    }
    [[nodiscard]] std::string above(const std::string& box) const {
        return nearest(box, [](const QRect& label, const QRect& field) {
            return std::abs(label.center().x() - field.center().x()) <= kNear ? field.top() - label.bottom() : -1;
        });
    }
    [[nodiscard]] std::string spoken(const std::string& box) const { return find(box).accessibleName().toStdString(); }
    [[nodiscard]] long count(int tab, const char* text) const {
        const auto labels = find("picOptions(" + std::to_string(tab - 1) + ")").findChildren<QLabel*>();
        return std::count_if(labels.begin(), labels.end(), [&](const auto* label) { return label->text() == text; });
    }
};

TEST_F(MiscNamesTest, EachBoxStandsBetweenItsNameAndItsUnit) {
    for (const Line& row : kLines) {
        showTab(row.tab);
        EXPECT_EQ(leftOf(row.box), row.name) << row.box;
        EXPECT_EQ(rightOf(row.box), row.unit) << row.box;
        EXPECT_EQ(spoken(row.box), row.name) << row.box;
    }
}

TEST_F(MiscNamesTest, EachBoxOfARowStandsUnderItsHead) {
    for (const Cell& cell : kCells) {
        showTab(cell.tab);
        EXPECT_EQ(above(cell.box), cell.head) << cell.box;
        EXPECT_EQ(spoken(cell.box), cell.spoken) << cell.box;
        if (*cell.row != '\0') {
            EXPECT_EQ(leftOf(cell.box), cell.row) << cell.box;
        }
    }
}

TEST_F(MiscNamesTest, NotesSayWhatTheNumbersMean) {
    EXPECT_EQ(count(1, "1 = Rising edge (hamlin), others = falling edge "), 1);
    EXPECT_EQ(count(2, "Information only."), 1);
    EXPECT_EQ(count(3, "MPX sensor: value in 10mbars --> 1bar boost = 200, 1.25bar=225"), 1);
    EXPECT_EQ(count(3, "Other sensors:  max boost = 250, smaller value = lowerboost"), 1);
    EXPECT_EQ(count(5, "Measure the sensor at 25 C and enter ten times the value:"), 1);
    EXPECT_EQ(count(5, "2.2 kOhm is entered as 22"), 1);
    EXPECT_EQ(count(7, "HUOM arvo 0 poistaa h\u00E4lytyksen k\u00E4yt\u00F6st\u00E4."), 1);
}

}  // namespace
}  // namespace korvane::views
