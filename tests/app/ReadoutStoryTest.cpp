// A tuner in a dyno room, with real keys and a real mouse: two big readouts, another channel, an alarm, a drag, and the
// window to try the dial.
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "app/RealWindows.h"
#include "live/readout/FrmBigText.h"
#include "live/readout/FrmMeter.h"
#include "views/widgets/values/BigFigures.h"

namespace korvane::app {
namespace {

using platform::until;

class ReadoutStory : public RealWindows {
protected:
    live::FrmBigText& openReadout() {
        const auto before = readouts().size();
        views_.viewOf(window_)->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(views_.viewOf(window_)));
        QTest::keyClick(views_.viewOf(window_), Qt::Key_6, Qt::AltModifier);
        EXPECT_TRUE(until(pump_, [&] { return readouts().size() == before + 1; }));
        auto& readout = *readouts().back();
        auto& view = *views_.viewOf(readout);
        view.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        return readout;
    }
    [[nodiscard]] std::vector<live::FrmBigText*> readouts() { return program_.readoutWindows().bigTexts().all(); }
    template <class Widget>
    [[nodiscard]] Widget& find(const controls::Window& window, const char* name) const {
        return dynamic_cast<Widget&>(*views_.viewOf(window)->findChild<QWidget*>(QString::fromLatin1(name)));
    }
};

TEST_F(ReadoutStory, TwoReadoutsAreOpenedTurnedToChannelsDraggedAndClosed) {
    program_.connectTo(2);
    ASSERT_TRUE(until(pump_, [this] { return program_.tables().liveValues[0].value > 0; }));
    auto& speed = openReadout();
    auto& voltage = openReadout();
    ASSERT_EQ(readouts().size(), 2U);

    auto& list = find<QComboBox>(voltage, "Combo1");
    list.setFocus();
    for (int row = 0; row < 3; ++row) {
        QTest::keyClick(&list, Qt::Key_Down);
    }
    EXPECT_EQ(voltage.Combo1.ListIndex, 3);
    const auto shown = [&](live::FrmBigText& readout) {
        return find<views::BigFigures>(readout, "Label1").text().toDouble();
    };
    EXPECT_TRUE(until(pump_, [&] { return shown(speed) > 400 && shown(voltage) > 9 && shown(voltage) < 16; }));

    program_.tables().liveValues[3].limit = 5;
    QTest::keyClick(&find<QComboBox>(voltage, "Combo1"), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(until(pump_, [&] { return voltage.Check1.Value == 1; }));
    EXPECT_TRUE(until(pump_, [&] { return voltage.Label1.ForeColor == controls::kRed; }));
    EXPECT_FALSE(speed.Label1.ForeColor == controls::kRed);

    auto& view = *views_.viewOf(speed);
    view.resize(900, 700);
    EXPECT_TRUE(until(pump_, [&] { return view.size() == QSize(900, 375); }))
        << "(13500 - 350) / 3 + 1250 = 5633 twips: " << view.height();
    EXPECT_EQ(speed.Label1.Width, 13150);

    QTest::keyClick(&view, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(readouts(), std::vector{&voltage});
    EXPECT_TRUE(until(pump_, [&] { return shown(voltage) > 9; }));
}

TEST_F(ReadoutStory, TheDialIsTried) {
    QTest::mouseClick(views_.viewOf(window_)->findChild<QPushButton*>("Command8"), Qt::LeftButton);
    auto& meter = dynamic_cast<live::FrmMeter&>(*windows_.loaded().back());
    auto& list = find<QComboBox>(meter, "Combo1");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(meter.SarnMeter1.MeterType(), 1);
    EXPECT_TRUE(until(pump_, [&] { return meter.SarnMeter1.value() >= 300; }));
    views_.viewOf(meter)->close();
    EXPECT_NE(windows_.loaded().back()->name(), "frmMeter");
}

}  // namespace
}  // namespace korvane::app
