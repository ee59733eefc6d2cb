#include <QComboBox>
#include <QLabel>

#include <gtest/gtest.h>

#include "live/readout/FrmMeter.h"
#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/Views.h"
#include "views/widgets/values/Dial.h"

namespace korvane::views {
namespace {

struct MeterViewTest : testing::Test, support::VirtualMachine {
    MeterViewTest() {
        addViews(host);
        window.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    template <class Widget>
    [[nodiscard]] Widget& find(const char* name) const {
        return findIn<Widget>(view(), name);
    }
    [[nodiscard]] Dial& dial() const { return find<Dial>("SarnMeter1"); }
    void frame() {
        host.clock().tick();
        settle();
    }

    live::FrmMeter window{machine};
    ViewHost host{windows};
};

TEST_F(MeterViewTest, TheDialFitsTheWindow) {
    for (const QSize size : {QSize(355, 410), QSize(800, 600), QSize(300, 700)}) {
        view().resize(size);
        settle();
        EXPECT_EQ(dial().width(), dial().height());
        EXPECT_EQ(dial().width(), window.SarnMeter1.Width / 15);
        EXPECT_TRUE(view().rect().contains(dial().geometry()));
        EXPECT_NEAR(dial().geometry().center().x(), size.width() / 2, 1);
        const auto& list = find<QComboBox>("Combo1");
        EXPECT_TRUE(view().rect().contains(list.geometry()));
        EXPECT_GT(list.y(), dial().geometry().bottom());
    }
}

TEST_F(MeterViewTest, AScriptsSizeFitsTheDialToo) {
    window.Height = 600 * 15;
    window.Width = 800 * 15;
    settle();
    EXPECT_EQ(view().size(), QSize(800, 600));
    EXPECT_EQ(dial().width(), window.SarnMeter1.Width / 15);
}

TEST_F(MeterViewTest, TheNeedleSweeps) {
    window.Combo1.choose(1);
    frame();
    EXPECT_EQ(dial().name(), "RPM");
    pump.wait(1000);
    frame();
    EXPECT_EQ(dial().number(), "1000");
}

TEST_F(MeterViewTest, SaysThatTheNeedleShowsNothingOfTheEngine) {
    view().resize(355, 410);
    settle();
    const auto& note = find<QLabel>("meterNote");
    EXPECT_EQ(note.text(), "moves by itself");
    EXPECT_TRUE(note.isVisible());
    EXPECT_TRUE(view().rect().contains(note.geometry()));
    EXPECT_FALSE(note.geometry().intersects(find<QComboBox>("Combo1").geometry()));
    EXPECT_FALSE(note.geometry().intersects(dial().geometry()));
}

TEST_F(MeterViewTest, TheTypeIsChosenByKeys) {
    auto& list = find<QComboBox>("Combo1");
    list.setFocus();
    EXPECT_EQ(list.accessibleName(), "Type");
    key(list, Qt::Key_Down);
    EXPECT_EQ(window.SarnMeter1.MeterType(), 1);
    key(list, Qt::Key_Down);
    EXPECT_EQ(window.Combo1.ListIndex, 2);
    EXPECT_EQ(window.SarnMeter1.MeterType(), 0);
}

}  // namespace
}  // namespace korvane::views
