// A tuner and the steady agent with real keys and a real mouse: connect, open the maps, tick the box, look at the
// details, and back to the baseline.
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "app/RealWindows.h"
#include "maps/MapForm.h"
#include "maps/steady/FrmSteady.h"
#include "views/maps/MapGridView.h"

namespace korvane::app {
namespace {

using platform::until;

class SteadyStory : public RealWindows {
protected:
    template <class Widget>
    static Widget& widget(QWidget& view, const char* name) {
        auto* const found = view.findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static void press(QAbstractButton& button) {
        QTest::mouseClick(&button, Qt::LeftButton, {}, {6, button.height() / 2});
    }
    // What the read of all settings tells, which takes long.
    void tellSettings() {
        const auto& places = program_.tables().addresses;
        window_.ecuEeprom.told(places.LOAD_MODE, 0);
        window_.ecuEeprom.told(places.MAPGAIN_OFF, 10);
        window_.ecuEeprom.told(places.MAPOFFSET_OFF, 0);
    }
};

TEST_F(SteadyStory, TickLookAndPutBack) {
    program_.connectTo(2);
    ASSERT_TRUE(until(pump_, [this] { return program_.tables().SWType == 11; }));
    program_.mapWindows().open();
    auto& maps = dynamic_cast<maps::FrmMaps&>(*windows_.loaded().back());
    ASSERT_TRUE(until(pump_, [&] { return maps.Caption.get().starts_with("PWM table Received "); }));
    tellSettings();
    auto& view = *views_.viewOf(maps);
    press(widget<QCheckBox>(view, "chkInjAnal"));
    auto& agent = program_.steadyAgent();
    press(widget<QCheckBox>(view, "chkSteadyAgent"));
    EXPECT_EQ(agent.whyStopped(), "");
    EXPECT_EQ(agent.state(), "waiting for proof of life");
    const auto baseline = program_.tables().FuelMapOut;

    press(widget<QPushButton>(view, "steadyDetails"));
    auto* const details = dynamic_cast<maps::FrmSteady*>(windows_.loaded().back());
    ASSERT_NE(details, nullptr);
    EXPECT_TRUE(until(pump_, [&] {
        return widget<QLabel>(*views_.viewOf(*details), "lblState").text() == "waiting for proof of life";
    }));
    EXPECT_TRUE(until(pump_, [&] { return details->lstSamples.ListCount() > 1; })) << "cranking, cold";

    maps.chkOnlineChanges.press();
    auto& grid = widget<views::MapGridView>(view, "txtFuel");
    view.activateWindow();
    QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.cellRect(17).center());
    QTest::keyClick(&grid, Qt::Key_Plus);
    EXPECT_EQ(program_.tables().FuelMapOut[17], baseline[17] + 1);
    QTest::keyClick(&grid, Qt::Key_F8);
    EXPECT_TRUE(until(pump_, [&] { return agent.state() == "stopped"; }));
    EXPECT_EQ(agent.whyStopped(), "put back by the tuner");
    EXPECT_EQ(program_.tables().FuelMapOut, baseline);
    EXPECT_TRUE(until(pump_, [&] { return !widget<QCheckBox>(view, "chkSteadyAgent").isChecked(); }));
}

}  // namespace
}  // namespace korvane::app
