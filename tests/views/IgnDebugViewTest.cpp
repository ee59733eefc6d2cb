#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gmock/gmock.h>

#include "live/FrmIGNDebug.h"
#include "views/ProgramViews.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

constexpr QSize kSmallScreen(683, 360);  // 1366x768 at 200 %, less a title bar

struct IgnDebugViewTest : testing::Test, ProgramViews {
    IgnDebugViewTest() {
        window.Command5.press();
        debug = dynamic_cast<live::FrmIGNDebug*>(windows.loaded().back());
        lookAt(*debug);
        view().activateWindow();
        settle();
    }
    ~IgnDebugViewTest() override { static_cast<void>(debug->unload()); }

    [[nodiscard]] QString spoken(const char* name) const {
        return QAccessible::queryAccessibleInterface(&find(name))->text(QAccessible::Name);
    }
    void expectAllInSight() const {
        for (const char* name : {"lblIgnDeb", "lblSparkDeb", "lblRPMticks", "lblEnnakkoTicks", "lblIgnErr",
                                 "lblSparkErr", "Command1", "Command2", "txtSparks", "btnCleanSparkPlugs"}) {
            const auto& widget = find(name);
            EXPECT_TRUE(view().rect().contains(QRect(widget.mapTo(&view(), QPoint()), widget.size()))) << name;
            if (const auto* const readout = dynamic_cast<const Readout*>(&widget)) {
                EXPECT_FALSE(readout->isCut()) << name;
            }
        }
    }

    live::FrmIGNDebug* debug = nullptr;
};

TEST_F(IgnDebugViewTest, ShowsWhatAFrameBrings) {
    debug->showDebugFrame(support::Bytes{0x55, 0x55, 0xD0, 0x02, 0xAB, 0xAA, 0x3C, 0x00});
    frame();
    EXPECT_EQ(find<Readout>("lblIgnDeb").text(), "21845");
    EXPECT_EQ(find<Readout>("lblSparkDeb").text(), "43691");
    EXPECT_EQ(find<Readout>("lblRPMticks").text(), "720");
    EXPECT_EQ(find<Readout>("lblEnnakkoTicks").text(), "60");
    EXPECT_EQ(find<Readout>("lblIgnErr").text(), "0");
    EXPECT_EQ(find<Readout>("lblSparkErr").text(), "1");
}

TEST_F(IgnDebugViewTest, EachWordStandsBesideItsName) {
    std::vector<std::string> labels;
    for (const auto* label : view().findChildren<QLabel*>()) {
        labels.push_back(label->text().toStdString());
    }
    EXPECT_THAT(labels, IsSupersetOf({"IgnDebug", "SparkDebug", "rpm_t", "ennakko_t", "Errors"}));
    EXPECT_EQ(view().windowTitle(), "Ignition Debug");
}

TEST_F(IgnDebugViewTest, AScreenReaderHearsNameAndNumber) {
    debug->lblIgnDeb.Caption = "21845";
    debug->lblSparkErr.Caption = "7";
    host.clock().tick();
    EXPECT_EQ(spoken("lblIgnDeb"), "IgnDebug 21845");
    EXPECT_EQ(spoken("lblEnnakkoTicks"), "ennakko_t 0");
    EXPECT_EQ(spoken("lblSparkErr"), "Errors SparkDebug 7");
    EXPECT_EQ(spoken("txtSparks"), "Hundreds of sparks");
}

TEST_F(IgnDebugViewTest, TabGoesThroughThePollThenThePlugs) {
    find("Command1").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 4; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        key(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("Command1", "Command2", "txtSparks", "btnCleanSparkPlugs"));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command1");
}

TEST_F(IgnDebugViewTest, EachButtonHasALetter) {
    EXPECT_EQ(find<QPushButton>("Command1").text(), "&Start");
    EXPECT_EQ(find<QPushButton>("Command2").text(), "s&top");
    EXPECT_EQ(find<QPushButton>("btnCleanSparkPlugs").text(), "&cleanPlugs");
}

TEST_F(IgnDebugViewTest, AllOfItIsInSightAtTheSizeThatItOpensWithAndOnASmallScreen) {
    for (const char* word : {"lblIgnDeb", "lblSparkDeb", "lblRPMticks", "lblEnnakkoTicks"}) {
        find<Readout>(word).setText(QStringLiteral("65535"));
    }
    find<Readout>("lblIgnErr").setText(QStringLiteral("1000000"));
    expectAllInSight();
    view().resize(kSmallScreen);
    settle();
    expectAllInSight();
    view().resize(view().minimumSize());
    settle();
    expectAllInSight();
}

}  // namespace
}  // namespace korvane::views
