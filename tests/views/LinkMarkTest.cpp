#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Views.h"
#include "views/frame/LinkMark.h"
#include "views/frame/LinkWords.h"
#include "views/frame/TransferBar.h"
#include "views/widgets/Veil.h"
#include "views/widgets/values/BigFigures.h"
#include "views/widgets/values/Dial.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::Each;
using testing::HasSubstr;

const support::Bytes kLive(19, 60);

// The identity is not asked for; live frames come from the test.
struct LinkMarkTest : testing::Test, support::VirtualProgram {
    LinkMarkTest() {
        host.setLink(window.linkState, [this] { program.disconnect(); });
        addViews(host);
    }

    void open() {
        connect();
        window.TimerGetSettings.Enabled = false;
    }
    void live() {
        receiveFrame('R', kLive);
        settle();
    }
    void openAll() {
        open();
        for (auto* button :
             {&window.btnKartat, &window.btnAsetukset, &window.btnTuningHelp, &window.Command1, &window.Command7,
              &window.btnDatalogTrend, &window.Command5, &window.Command8, &window.Command6}) {
            button->press();
        }
        live();
    }
    void pullAt(int milliseconds) {
        at(milliseconds, [this] { line.pullOut(); });
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    [[nodiscard]] WindowView& newest() const { return *host.viewOf(*windows.loaded().back()); }
    template <class Widget = QWidget>
    [[nodiscard]] static Widget& find(const WindowView& view, const char* name) {
        auto* const found = view.findChild<QWidget*>(QLatin1String(name));
        return dynamic_cast<Widget&>(*found);
    }
    template <class Widget>
    [[nodiscard]] static Widget& first(const WindowView& view) {
        for (auto* const each : view.findChildren<QWidget*>()) {
            if (auto* const widget = dynamic_cast<Widget*>(each)) {
                return *widget;
            }
        }
        throw std::logic_error("no such widget");
    }
    [[nodiscard]] static std::string badge(const WindowView& view) {
        return find<LinkBadge>(view, "linkBadge").text().toStdString();
    }
    [[nodiscard]] std::string badge() const { return badge(view()); }

    ViewHost host{windows};
};

int darkest(QWidget& widget) {
    const QImage image = widget.grab().toImage();
    int least = 255;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            least = std::min(least, qGray(image.pixel(x, y)));
        }
    }
    return least;
}

TEST_F(LinkMarkTest, EveryWindowHasOneBadge) {
    openAll();
    EXPECT_GE(windows.loaded().size(), 11U);
    for (const auto* each : windows.loaded()) {
        const auto badges = host.viewOf(*each)->findChildren<QLabel*>(QStringLiteral("linkBadge"));
        ASSERT_EQ(badges.size(), 1) << each->name();
        EXPECT_EQ(badges.front()->text(), "Live < 1 s") << each->name();
        EXPECT_EQ(badges.front()->accessibleName(), "Line: Live < 1 s") << each->name();
    }
}

// 1920 by 1080 at 200 %, less the scroll bar.
TEST_F(LinkMarkTest, ALowMainWindowHasRoomForTheWordsOfTheBadge) {
    window.resize(944 * 15, 500 * 15);
    open();
    live();
    receiveFrame('y', {255, 255, 13, 58, 11});
    settle();
    EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
    const auto& badge = find<LinkBadge>(view(), "linkBadge");
    EXPECT_GE(badge.width(), badge.sizeHint().width());
}

TEST_F(LinkMarkTest, TheBadgeSaysTheStateAndTheAgeOfTheData) {
    EXPECT_EQ(badge(), "Closed");
    open();
    EXPECT_EQ(badge(), "Silent < 1 s");
    pump.wait(5000);
    EXPECT_EQ(badge(), "Silent 5 s");
    live();
    EXPECT_EQ(badge(), "Live < 1 s");
    pump.wait(1000);
    EXPECT_EQ(badge(), "Late 1 s");
    pump.wait(11'000);
    EXPECT_EQ(badge(), "Late 12 s");
    pump.wait(200'000);
    EXPECT_EQ(badge(), "Late 3 min");
    connect();
    EXPECT_EQ(badge(), "Closed");
}

TEST_F(LinkMarkTest, InTheMainWindowItStandsBesideTheStateLine) {
    view().resize(1280, 690);
    settle();
    const auto placeOf = [this](QWidget& widget) { return QRect(widget.mapTo(&view(), QPoint()), widget.size()); };
    const QRect state = placeOf(find(view(), "lblState"));
    const QRect mark = placeOf(find(view(), "linkBadge"));
    EXPECT_GT(mark.left(), state.right());
    EXPECT_LT(mark.left() - state.right(), 40);
    EXPECT_LE(std::abs(mark.center().y() - state.center().y()), 2);
}

TEST_F(LinkMarkTest, TheBadgeFitsTheSmallestUsualMainWindow) {
    window.resize(1040 * 15, 600 * 15);
    open();
    live();
    EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
}

// 1920 by 1080 at 200 %, less the frame.
TEST_F(LinkMarkTest, ALowMainWindowIsNotScrolledSideways) {
    window.resize(958 * 15, 516 * 15);
    open();
    live();
    settle();
    EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
}

TEST_F(LinkMarkTest, TheBadgeMakesNoWindowScroll) {
    openAll();
    settle();
    for (const auto* each : windows.loaded()) {
        if (const auto* const scroll = host.viewOf(*each)->findChild<QScrollArea*>()) {
            EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0) << each->name();
            EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0) << each->name();
        }
    }
}

TEST_F(LinkMarkTest, TheToolTipHasTheCounts) {
    open();
    live();
    receive({0, 'T', 1, 5, 5});
    auto& shown = find<LinkBadge>(view(), "linkBadge");
    QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), shown.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&shown, &help);
    const auto tip = shown.toolTip().toStdString();
    EXPECT_THAT(tip, HasSubstr("Live data comes in."));
    EXPECT_THAT(tip, HasSubstr("Frames: 1\nBytes: 27\nDamaged frames: 1\nResynchronised: 1\nUnanswered polls: 0"));
}

TEST_F(LinkMarkTest, ValuesOfTheEcuAreDimmedWhileTheyAreNotLive) {
    const auto dimmed = [this] {
        std::vector<bool> all;
        for (const char* name :
             {"SarnMeterRpm", "SarnMeterboost", "SarnGauge3", "lblAccel", "lblValue(0)", "lblValue(11)", "lblPackets",
              "imgLed(15)", "lblValueMux(7)", "picTrend", "picTrend2"}) {
            all.push_back(find<Dimmable>(view(), name).isDimmed());
        }
        return all;
    };
    EXPECT_THAT(dimmed(), Each(true));
    open();
    live();
    EXPECT_THAT(dimmed(), Each(false));
    pump.wait(2000);
    EXPECT_THAT(dimmed(), Each(true));
    EXPECT_FALSE(find<Dimmable>(view(), "lblState").isDimmed());
    EXPECT_FALSE(find<Dimmable>(view(), "lblValueName(0)").isDimmed());
}

TEST_F(LinkMarkTest, SeparateReadoutsAreDimmedToo) {
    open();
    live();
    window.Command6.press();
    const auto& figures = first<BigFigures>(newest());
    window.Command8.press();
    const auto& dial = first<Dial>(newest());
    EXPECT_FALSE(figures.isDimmed());
    EXPECT_FALSE(dial.isDimmed());
    pump.wait(2000);
    EXPECT_TRUE(figures.isDimmed());
    EXPECT_TRUE(dial.isDimmed());
}

TEST_F(LinkMarkTest, TheRunningEngineOverAMapIsDimmedToo) {
    open();
    live();
    window.btnKartat.press();
    live();
    const auto& speed = find<Readout>(newest(), "stripRpm");
    EXPECT_FALSE(speed.isDimmed());
    pump.wait(2000);
    EXPECT_TRUE(speed.isDimmed());
    live();
    EXPECT_FALSE(speed.isDimmed());
}

TEST_F(LinkMarkTest, TheVoltagesOfTheLimiterAreDimmedToo) {
    open();
    live();
    tables.SWType = 112;
    window.btnKartat.press();
    live();
    const auto& volts = find<Readout>(newest(), "lblInput1");
    EXPECT_FALSE(volts.isDimmed());
    pump.wait(2000);
    EXPECT_TRUE(volts.isDimmed());
}

TEST_F(LinkMarkTest, DebugWordsAreDimmedWhileNoneCome) {
    open();
    live();
    window.Command5.press();
    const auto& view = newest();
    const auto dimmed = [&] {
        host.clock().tick();
        EXPECT_EQ(find<Readout>(view, "lblIgnDeb").isDimmed(), find<Readout>(view, "lblSparkErr").isDimmed());
        return find<Readout>(view, "lblIgnDeb").isDimmed();
    };
    EXPECT_TRUE(dimmed());
    find<QPushButton>(view, "Command1").click();
    receiveFrame('S', support::Bytes(8, 85));
    EXPECT_FALSE(dimmed());
    pump.wait(3000);
    EXPECT_EQ(badge(view), "Paused 3 s");
    EXPECT_TRUE(dimmed());
    receiveFrame('S', support::Bytes(8, 85));
    EXPECT_FALSE(dimmed());
    line.pullOut();
    EXPECT_TRUE(dimmed());
}

TEST_F(LinkMarkTest, TheRoadSpeedIsDimmedToo) {
    open();
    live();
    window.btnTuningHelp.press();
    auto& speed = find(newest(), "txtSpeed");
    const auto& veil = first<Veil>(newest());
    EXPECT_EQ(veil.parentWidget(), &speed);
    EXPECT_FALSE(veil.isDimmed());
    speed.resize(speed.width() + 10, speed.height());
    const int usual = darkest(speed);
    pump.wait(2000);
    EXPECT_TRUE(veil.isDimmed());
    EXPECT_EQ(veil.size(), speed.size());
    EXPECT_GT(darkest(speed), usual + 20) << "the box without a number has grey lines";
}

TEST_F(LinkMarkTest, WhatAClosedPortHasSaidOfItselfIsDimmed) {
    const auto dimmed = [this] {
        std::vector<bool> all;
        for (const char* name : {"lblState", "lblHWVer", "lblFeatures"}) {
            all.push_back(find<Dimmable>(view(), name).isDimmed());
        }
        return all;
    };
    open();
    live();
    pump.wait(2000);
    EXPECT_THAT(dimmed(), Each(false));
    pullAt(100);
    pump.wait(200);
    EXPECT_EQ(window.lblState.Caption.get(), "COM1; 57600 Connected");
    EXPECT_THAT(dimmed(), Each(true));
}

TEST_F(LinkMarkTest, ADimmedValueIsPaintedFainter) {
    open();
    live();
    host.clock().tick();
    auto& value = find<Readout>(view(), "lblValue(0)");
    const int usual = darkest(value);
    pump.wait(2000);
    EXPECT_GT(darkest(value), usual + 60);
}

TEST_F(LinkMarkTest, LiveFramesPaintNothingOfTheBadge) {
    open();
    live();
    const PaintCounter badges(find<LinkBadge>(view(), "linkBadge"));
    for (int i = 0; i < 50; ++i) {
        pump.wait(100);
        live();
    }
    EXPECT_EQ(badges.count(), 0);
}

TEST_F(LinkMarkTest, ABackupIsBusyInEveryWindowAndCanBeStopped) {
    open();
    window.btnTuningHelp.press();
    const auto& other = newest();
    live();
    at(1000, [&] {
        for (const WindowView* each : {static_cast<const WindowView*>(&view()), &other}) {
            EXPECT_EQ(badge(*each), "Busy < 1 s");
            EXPECT_EQ(each->cursor().shape(), Qt::BusyCursor);
        }
        EXPECT_TRUE(find<QPushButton>(other, "stopTransfer").isVisibleTo(&other));
        find<QPushButton>(other, "stopTransfer").click();
        EXPECT_FALSE(window.MSComm1.PortOpen());
        EXPECT_EQ(badge(other), "Closed");
        EXPECT_NE(other.cursor().shape(), Qt::BusyCursor);
        EXPECT_FALSE(find<QPushButton>(other, "stopTransfer").isVisibleTo(&other));
    });
    window.btnBackup.press();
    EXPECT_FALSE(window.MSComm1.PortOpen());
}

TEST_F(LinkMarkTest, APulledCableEndsTheWaitInTheViewWhileTheBackupCountsOn) {
    open();
    live();
    auto& bar = find<TransferBar>(view(), "prgEeprom");
    at(900, [&] { EXPECT_FALSE(bar.isEnded()); });
    pullAt(1000);
    at(1001, [&] {
        EXPECT_TRUE(bar.isEnded());
        EXPECT_TRUE(window.prgEeprom.Visible);
        EXPECT_EQ(badge(), "Closed");
    });
    window.btnBackup.press();
}

TEST_F(LinkMarkTest, TheIgnitionDebugWindowClosedWhileItPollsLeavesPaused) {
    open();
    live();
    window.Command5.press();
    auto& debug = *windows.loaded().back();
    find<QPushButton>(newest(), "Command1").click();
    pump.wait(500);
    static_cast<void>(debug.unload());
    pump.wait(2500);
    EXPECT_EQ(badge(), "Paused 3 s");
    EXPECT_FALSE(find<QPushButton>(view(), "stopTransfer").isVisibleTo(&view()));
}

TEST_F(LinkMarkTest, ABadgeWithoutRoomForItsWordsKeepsItsShape) {
    LinkBadge narrow(nullptr);
    narrow.setState({LinkBadge::Shape::Triangle, Qt::red}, "Late", "12 s");
    narrow.resize(narrow.minimumSizeHint().height(), narrow.minimumSizeHint().height());
    const QImage image = narrow.grab().toImage();
    EXPECT_NE(image.pixel(image.width() / 2, image.height() / 2), image.pixel(0, 0));
    EXPECT_EQ(image.pixel(image.width() - 1, 0), image.pixel(0, 0)) << "the badge ends there";
}

TEST_F(LinkMarkTest, ABadgeWithoutRoomForTheAgeKeepsItsWord) {
    LinkBadge badge(nullptr);
    const LinkBadge::Look look{LinkBadge::Shape::Ring, Qt::red};
    const auto painted = [&](const char* word, const char* age) {
        badge.setState(look, word, age);
        return badge.grab().toImage();
    };
    badge.resize(badge.sizeHint());
    EXPECT_NE(painted("Silent", "54 s"), painted("Silent", ""));
    badge.resize(badge.width() - badge.fontMetrics().horizontalAdvance(" 59 min"), badge.height());
    EXPECT_EQ(painted("Silent", "54 s"), painted("Silent", ""));
    EXPECT_NE(painted("Silent", "54 s"), painted("", ""));
}

TEST_F(LinkMarkTest, ABadgeOfTheLeastWidthHasItsWord) {
    LinkBadge badge(nullptr);
    badge.resize(badge.minimumSizeHint());
    const auto painted = [&](const char* word) {
        badge.setState({LinkBadge::Shape::Ring, Qt::red}, word, "54 s");
        return badge.grab().toImage();
    };
    const QImage bare = painted("Not a word that fits the badge");
    for (const char* word : {"Closed", "Silent", "Live", "Late", "Paused", "Busy"}) {
        EXPECT_NE(painted(word), bare) << word;
    }
}

// The button that tests the port takes room from it.
TEST_F(LinkMarkTest, TheBadgeOfALowMainWindowKeepsItsWord) {
    window.resize(944 * 15, 480 * 15);
    open();
    receiveFrame('y', {255, 255, 13, 58, 11});
    pump.wait(54'000);
    host.clock().tick();
    settle();
    ASSERT_TRUE(find(view(), "testPort").isVisible());
    EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
    auto& shown = find<LinkBadge>(view(), "linkBadge");
    const auto painted = [&](const char* word) {
        shown.setState({LinkBadge::Shape::Ring, Qt::red}, word, "54 s");
        return shown.grab().toImage();
    };
    EXPECT_NE(painted("Silent"), painted("Paused"));
}

// Nobody polls while a box is open.
TEST_F(LinkMarkTest, ALineIsPausedAndNotLateWhileTheProgramWaits) {
    open();
    window.TimerRequestData.Enabled = true;
    window.TimerRequestData.Interval = 500;
    pump.wait(600);
    live();
    window.TimerRequestData.Tick = [] {};
    pump.wait(2000);
    settle();
    EXPECT_THAT(badge(), HasSubstr("Paused"));
    EXPECT_THAT(linkTip(window.linkState).toStdString(), HasSubstr("The program waits for an answer in a box"));
}

}  // namespace
}  // namespace korvane::views
