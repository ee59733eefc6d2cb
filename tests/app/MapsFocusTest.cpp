// Keys that reach a map window's button past the focus.
#include <QApplication>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "maps/MapForm.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"
#include "views/frame/WindowView.h"

namespace korvane::app {
namespace {

// The real frmMaps on the offscreen display, on a quiet line. 8500 and 9000 turns a minute, bits 0, 5 and 15, offsets
// 10 and 153, the longer opening.
class MapsFocus : public testing::Test, public support::VirtualProgram {
protected:
    MapsFocus() {
        views::addViews(views_);
        tables.Features = 0xFFFF;
        connect();
        program.mapWindows().open();
        maps_ = dynamic_cast<maps::MapForm*>(windows.loaded().back());
        pump.wait(1000);
        receiveFrame('m', {0x34, 0x21, 0x28, 0x23, 0x21, 0x80, 10, 153, 6});
        pump.wait(500);
        window.TimerGetSettings.Enabled = false;
        window.TimerRequestData.Enabled = false;
        pump.wait(100);
        static_cast<void>(sent());
        view().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view()));
    }

    [[nodiscard]] views::WindowView& view() const { return *views_.viewOf(*maps_); }
    void typeInto(controls::Control& box, const QString& text) {
        auto* const widget = view().findChild<QWidget*>(QString::fromStdString(box.path()));
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton);
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, text);
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    views::ViewHost views_{windows};
    maps::MapForm* maps_ = nullptr;
};

// 10000 is 10 27; all else goes out as it came.
TEST_F(MapsFocus, TheLetterOfSendMiscTakesTheFocusFromTheBoxFirst) {
    typeInto(maps_->txtMisc(0), "70000");
    ASSERT_EQ(maps_->txtMisc(0).Text.get(), "70000");
    ASSERT_EQ(maps_->activeControl(), &maps_->txtMisc(0));
    press(Qt::Key_C, Qt::AltModifier);
    // The toolkit shows the button down for a moment before it counts as pressed.
    EXPECT_TRUE(QTest::qWaitFor([this] { return maps_->activeControl() == &maps_->btnSaveMisc; }));
    EXPECT_EQ(maps_->txtMisc(0).Text.get(), "10000");
    EXPECT_EQ(sent(), (support::Bytes{'M', 0x10, 0x27, 0x28, 0x23, 0x21, 0x80, 10, 153, 6, 0xB2, 'd'}));
}

TEST_F(MapsFocus, SoDoesAClickOnIt) {
    typeInto(maps_->txtMisc(0), "70000");
    QTest::mouseClick(view().findChild<QWidget*>("btnSaveMisc"), Qt::LeftButton);
    EXPECT_EQ(sent(), (support::Bytes{'M', 0x10, 0x27, 0x28, 0x23, 0x21, 0x80, 10, 153, 6, 0xB2, 'd'}));
}

}  // namespace
}  // namespace korvane::app
