#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "support/VirtualProgram.h"
#include "views/CutTexts.h"
#include "views/Events.h"
#include "views/Views.h"
#include "views/dashboard/MainView.h"
#include "views/widgets/Card.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// 3200 rpm, 87 degrees of water and 33 of air, 13.8 V, throttle 120, lambda 13.6719, lamps 1, 3, 5, 8, 13 and 14.
const support::Bytes kLiveFrame{12, 128, 137, 83, 138, 130, 120, 94, 60, 3, 37, 0x61, 0x2A, 40, 80, 150, 130, 0x02, 7};

struct MainViewTest : testing::Test, support::VirtualProgram {
    MainViewTest() {
        addViews(host);
        window.resize(1366 * 15, 728 * 15);
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    [[nodiscard]] QWidget* find(const std::string& name) const {
        return view().findChild<QWidget*>(QString::fromStdString(name));
    }
    [[nodiscard]] static bool isShown(const controls::Control& control) {
        return control.kind() != "timer" && control.kind() != "serial control";
    }

    void frame() {
        host.clock().tick();
        settle();
    }

    // A running engine behind a connected line.
    void drive() {
        connect();
        receiveFrame('y', {255, 255, 13, 58, 11});
        for (int i = 0; i < 12; ++i) {
            receiveFrame('R', kLiveFrame);
        }
        pump.wait(1000);
        frame();
    }

    ViewHost host{windows};
};

TEST_F(MainViewTest, EveryControlHasOneWidgetOfItsName) {
    for (const auto* control : window.controls()) {
        const auto found = view().findChildren<QWidget*>(QString::fromStdString(control->path()));
        EXPECT_EQ(found.size(), isShown(*control) ? 1 : 0) << control->path();
    }
}

TEST_F(MainViewTest, WhatStandsInAFrameStandsInItsWidget) {
    for (const auto* control : window.controls()) {
        if (control->container() != nullptr) {
            EXPECT_TRUE(find(control->container()->path())->isAncestorOf(find(control->path()))) << control->path();
        }
    }
}

TEST_F(MainViewTest, EveryWidgetThatAUserReachesHasAnAccessibleName) {
    for (const auto* control : window.controls()) {
        if (isShown(*control) && control->kind() != "frame") {
            auto* const spoken = QAccessible::queryAccessibleInterface(find(control->path()));
            ASSERT_NE(spoken, nullptr);
            const bool nameless = spoken->text(QAccessible::Name).trimmed().isEmpty();
            const bool empty = control == &window.lblFeatures;
            EXPECT_FALSE(nameless && !empty) << control->path();
        }
    }
}

TEST_F(MainViewTest, AValueIsReadWithItsName) {
    drive();
    const auto spoken = [this](const char* name) {
        return QAccessible::queryAccessibleInterface(find(name))->text(QAccessible::Name);
    };
    EXPECT_EQ(spoken("lblValue(0)"), "RPM: 3200");
    EXPECT_EQ(spoken("lblPackets"), "Packets/s " + QString::fromStdString(window.lblPackets.Caption));
    auto* const lamp = QAccessible::queryAccessibleInterface(find("imgLed(13)"));
    EXPECT_EQ(lamp->text(QAccessible::Name), "Running");
    EXPECT_EQ(lamp->text(QAccessible::Value), "on");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find("SarnMeterRpm"))->text(QAccessible::Value), "3200");
}

TEST_F(MainViewTest, TabGoesThroughTheConnectionFirst) {
    std::vector<std::string> visited;
    find("ComboPort")->setFocus();
    for (int i = 0; i < 10; ++i) {
        visited.push_back(view().focusWidget()->objectName().toStdString());
        key(*view().focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(visited, ElementsAre("ComboPort", "ComboBaud", "ComboRefresh", "btnConnect", "btnKartat",
                                     "btnAsetukset", "btnTuningHelp", "Command1", "Command7", "btnDatalogTrend"));
}

TEST_F(MainViewTest, TheFirstFocusIsThePort) {
    EXPECT_EQ(window.activeControl(), &window.ComboPort);
}

TEST_F(MainViewTest, NoTwoMnemonicsAreTheSame) {
    std::map<QChar, QString> seen;
    const auto take = [&](const QString& text) {
        for (qsizetype i = 0; i + 1 < text.size(); ++i) {
            if (text[i] == u'&' && text[i + 1] == u'&') {
                ++i;
            } else if (text[i] == u'&') {
                const auto [place, fresh] = seen.emplace(text[i + 1].toLower(), text);
                EXPECT_TRUE(fresh) << place->second.toStdString() << " and " << text.toStdString();
            }
        }
    };
    for (const auto* button : view().findChildren<QAbstractButton*>()) {
        take(button->text());
    }
    for (const auto* label : view().findChildren<QLabel*>()) {
        take(label->text());
    }
    EXPECT_EQ(seen.size(), 20U);
}

TEST_F(MainViewTest, TheListsCaptionsLeadToTheirLists) {
    std::map<std::string, QWidget*> buddies;
    for (const auto* caption : view().findChildren<QLabel*>()) {
        buddies[caption->text().toStdString()] = caption->buddy();
    }
    EXPECT_EQ(buddies["&Port"], find("ComboPort"));
    EXPECT_EQ(buddies["&Speed"], find("ComboBaud"));
    EXPECT_EQ(buddies["&Refresh"], find("ComboRefresh"));
}

TEST_F(MainViewTest, NothingIsCutOnASmallLaptop) {
    drive();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    auto* const scroll = view().findChild<QScrollArea*>();
    EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
}

TEST_F(MainViewTest, NothingIsCutInTheSmallestUsualWindow) {
    window.resize(1040 * 15, 600 * 15);
    settle();
    drive();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
}

TEST_F(MainViewTest, NothingIsCutWithTextsOfTwiceTheSize) {
    QFont large = view().font();
    large.setPixelSize(QFontInfo(large).pixelSize() * 2);
    view().setFont(large);
    settle();
    drive();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    EXPECT_GT(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
    window.resize(1366 * 2 * 15, 728 * 2 * 15);
    settle();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    EXPECT_EQ(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

TEST_F(MainViewTest, ALargeWindowHasLargerTextsAndASmallOneTheUsual) {
    const int usual = QFontInfo(find("btnConnect")->font()).pixelSize();
    window.resize(3840 * 15, 2120 * 15);
    settle();
    EXPECT_GT(QFontInfo(find("btnConnect")->font()).pixelSize(), usual * 3 / 2);
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    window.resize(1366 * 15, 728 * 15);
    settle();
    EXPECT_EQ(QFontInfo(find("btnConnect")->font()).pixelSize(), usual);
}

TEST_F(MainViewTest, ATinyScreenScrolls) {
    window.resize(683 * 15, 384 * 15);
    settle();
    EXPECT_EQ(view().size(), QSize(683, 384));
    EXPECT_GT(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

TEST_F(MainViewTest, NoButtonIsGrey) {
    drive();
    const auto buttons = view().findChildren<QAbstractButton*>();
    EXPECT_GE(buttons.size(), 15);
    for (const auto* button : buttons) {
        EXPECT_TRUE(button->isEnabled()) << button->objectName().toStdString();
    }
}

TEST_F(MainViewTest, ButtonsOfTheServiceColumnAreOfOneHeight) {
    std::set<int> heights;
    for (const char* name : {"btnKartat", "btnAsetukset", "btnTuningHelp", "Command1", "Command7", "btnDatalogTrend",
                             "Command5", "Command6", "Command8", "btnBackup", "btnUploadEEPROM", "Command2"}) {
        heights.insert(find(name)->height());
    }
    EXPECT_LE(*heights.rbegin() - *heights.begin(), 2);
}

// Over the state line, whose place and texts stay as they are.
TEST_F(MainViewTest, TheReadOfTheSettingsShowsABarAtTheStateLine) {
    connect();
    const auto& state = *find("lblState");
    auto& bar = *find("prgSettings");
    const QRect place = state.geometry();
    EXPECT_FALSE(bar.isVisible());
    window.prgSettings.start(100);
    frame();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.parentWidget(), state.parentWidget());
    EXPECT_LE(bar.geometry().bottom(), state.y());
    EXPECT_LT(state.y() - bar.geometry().bottom(), bar.height());
    EXPECT_GE(bar.x(), state.x());
    EXPECT_LE(bar.geometry().right(), state.geometry().right() + 1);
    EXPECT_EQ(state.geometry(), place);
}

TEST_F(MainViewTest, AnImagesTransferShowsABarBelowItsButtons) {
    const auto& button = *find("btnUploadEEPROM");
    auto& bar = *find("prgEeprom");
    EXPECT_FALSE(bar.isVisible());
    window.prgEeprom.start(102);
    frame();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.parentWidget(), button.parentWidget());
    EXPECT_GT(bar.y(), button.geometry().bottom());
    EXPECT_LT(bar.geometry().bottom(), find("Command2")->y());
}

TEST_F(MainViewTest, LampsStandInTheirOrderFromTopToBottom) {
    for (int n = 1; n < 16; ++n) {
        const auto* const above = find("imgLed(" + std::to_string(n - 1) + ")");
        const auto* const lamp = find("imgLed(" + std::to_string(n) + ")");
        EXPECT_GT(lamp->y(), above->geometry().bottom());
        EXPECT_EQ(lamp->x(), above->x());
        EXPECT_GT(find("lblLED(" + std::to_string(n) + ")")->x(), lamp->geometry().right());
    }
}

TEST_F(MainViewTest, LiveFramesReachTheScreen) {
    drive();
    const auto text = [this](const char* name) { return dynamic_cast<Readout*>(find(name))->text(); };
    EXPECT_EQ(text("lblValue(0)"), "3200");
    EXPECT_EQ(text("lblValue(3)"), "13.8");
    EXPECT_EQ(text("lblHWVer"), "hwVer: 3.386");
    EXPECT_EQ(text("lblState"), "COM1; 57600 Connected");
    EXPECT_TRUE(find("lblHWVer")->isVisible());
    EXPECT_EQ(dynamic_cast<Lamp*>(find("imgLed(3)"))->picture(), controls::Picture::Green);
    EXPECT_EQ(dynamic_cast<Lamp*>(find("imgLed(4)"))->picture(), controls::Picture::Grey);
}

TEST_F(MainViewTest, AnAlarmFlashesTheWholeWindow) {
    drive();
    receiveFrame(33, {});
    const QImage flash = view().grab().toImage();
    EXPECT_EQ(flash.pixelColor(2, 2), QColor(255, 0, 0));
    const auto* const card = find("FrameValues");
    const QColor inside = flash.pixelColor(card->mapTo(&view(), QPoint(card->width() / 2, 12)));
    EXPECT_GT(inside.red(), 230);
    EXPECT_LT(inside.green(), 40);
    pump.wait(100);
    EXPECT_EQ(view().grab().toImage().pixelColor(2, 2), QPalette().color(QPalette::Window));
}

TEST_F(MainViewTest, TheTrendsKnowTheirSizeAndAreBlack) {
    for (auto* const picture : {&window.picTrend, &window.picTrend2}) {
        auto* const widget = find(picture->path());
        EXPECT_LE(picture->Width, widget->width() * 15);
        EXPECT_GE(picture->Width, widget->width() * 9);
        const double shape = static_cast<double>(widget->width()) / widget->height();
        EXPECT_NEAR(static_cast<double>(picture->Width) / picture->Height, shape, 0.01);
        EXPECT_EQ(widget->grab().toImage().pixelColor(1, 1), QColor(0, 0, 0));
    }
}

TEST_F(MainViewTest, AConnectionByKeyboardAlone) {
    find("ComboPort")->setFocus();
    key(*view().focusWidget(), Qt::Key_Down);
    for (int i = 0; i < 3; ++i) {
        key(*view().focusWidget(), Qt::Key_Tab);
    }
    key(*view().focusWidget(), Qt::Key_Space, {}, " ");
    EXPECT_TRUE(window.MSComm1.PortOpen());
    EXPECT_EQ(window.MSComm1.CommPort, 2);
    EXPECT_EQ(dynamic_cast<QAbstractButton*>(find("btnConnect"))->text(), "Dis&connect");
}

TEST_F(MainViewTest, ClosingWhileConnectedTakesASecondAndThenTheViewIsGone) {
    drive();
    EXPECT_FALSE(view().close());
    EXPECT_TRUE(view().isVisible());
    pump.wait(1000);
    EXPECT_EQ(host.viewOf(window), nullptr);
    EXPECT_TRUE(program.ended());
}

TEST_F(MainViewTest, RowsOfTheLogAreCountedBesideItsName) {
    auto& counts = dynamic_cast<QLabel&>(*find("logCounts"));
    EXPECT_EQ(counts.text(), "");
    window.txtDatalogFile.Text = std::string("drive");
    window.chkDatalog.press();
    for (int i = 0; i < 103; ++i) {
        program.logWriter().writeLiveRow();
    }
    frame();
    EXPECT_EQ(counts.text(), "101 rows on disk, 2 waiting");
    EXPECT_EQ(counts.toolTip().toStdString(), (folder / "drive.txt").string());
    EXPECT_THAT(cutTexts(view()), IsEmpty());
}

TEST_F(MainViewTest, RowsOfTheLogThatAreGoneAreNotCounted) {
    const auto& counts = dynamic_cast<QLabel&>(*find("logCounts"));
    const auto write = [this](const std::string& name, int rows) {
        window.txtDatalogFile.Text = name;
        for (int i = 0; i < rows; ++i) {
            program.logWriter().writeLiveRow();
        }
        frame();
    };
    write("drive", 101);
    EXPECT_EQ(counts.text(), "101 rows on disk, 0 waiting");
    write("other", 0);
    EXPECT_EQ(counts.text(), "0 rows on disk, 0 waiting");
    write("gone/drive", 100);
    EXPECT_EQ(counts.text(), "0 rows on disk, 100 waiting");
    write("gone/drive", 1);
    EXPECT_EQ(counts.text(), "0 rows on disk, 0 waiting");
}

TEST_F(MainViewTest, ANameLikeMarkedUpTextIsShownAsItIs) {
    window.txtDatalogFile.Text = std::string("<b>drive</b>");
    frame();
    const QString toolTip = find("logCounts")->toolTip();
    EXPECT_TRUE(toolTip.endsWith(QStringLiteral("&lt;b&gt;drive&lt;/b&gt;.txt"))) << toolTip.toStdString();
}

}  // namespace
}  // namespace korvane::views
