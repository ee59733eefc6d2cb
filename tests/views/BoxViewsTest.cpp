// How the windows of the ignition-only box and of the limiter box look, and how they are reached by keys.
#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "views/CutTexts.h"
#include "views/ProgramViews.h"
#include "views/maps/IgnitionBoxView.h"
#include "views/maps/LimiterView.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;

// A window of a box on a line that nobody answers.
struct BoxViews : testing::Test, ProgramViews {
    template <class Window>
    Window& open(int swType) {
        tables.SWType = swType;
        window.btnKartat.press();
        auto& opened = dynamic_cast<Window&>(*windows.loaded().back());
        opened_ = &opened;
        lookAt(opened);
        view().activateWindow();
        settle();
        return opened;
    }
    maps::FrmMaps_QV_ign& openBox() { return open<maps::FrmMaps_QV_ign>(30); }
    maps::FrmMaps_ign_limiter& openLimiter() { return open<maps::FrmMaps_ign_limiter>(112); }

    // The words that stand beside the boxes.
    [[nodiscard]] std::vector<std::string> labels() const {
        std::vector<std::string> texts;
        for (const auto* label : view().findChildren<QLabel*>()) {
            texts.push_back(label->text().toStdString());
        }
        return texts;
    }
    void resize(int width, int height) {
        opened_->resize(width * 15, height * 15);
        frame();
    }

    // What a person sees or reaches: no timers, and of a grid the widget that stands for its cells.
    [[nodiscard]] std::set<std::string> expectedWidgets() const {
        std::set<std::string> names;
        for (const auto* control : opened_->controls()) {
            const std::string name(control->name());
            if (control->kind() == "timer" || name == "lblRpmI" || name == "lblMapI" || name == "lblIdleAdv") {
                continue;
            }
            names.insert(name == "txtIgn" ? name : control->path());
        }
        return names;
    }
    void expectWidgets() const {
        for (const auto& name : expectedWidgets()) {
            EXPECT_EQ(view().findChildren<QWidget*>(QString::fromStdString(name)).size(), 1) << name;
        }
    }
    void expectAccessibleNames() const {
        for (const auto* control : opened_->controls()) {
            const std::string name = control->name() == "txtIgn" ? "txtIgn" : control->path();
            if (!expectedWidgets().contains(name) || control->kind() == "frame") {
                continue;
            }
            auto* const spoken = QAccessible::queryAccessibleInterface(&find(name));
            ASSERT_NE(spoken, nullptr) << name;
            EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty()) << name;
        }
    }
    void expectDifferentMnemonics(std::size_t least) const {
        std::map<QChar, QString> seen;
        for (const auto* button : view().findChildren<QAbstractButton*>()) {
            const QString text = button->text();
            if (const auto at = text.indexOf(u'&'); at >= 0) {
                const auto [place, fresh] = seen.emplace(text[at + 1].toLower(), text);
                EXPECT_TRUE(fresh) << place->second.toStdString() << " and " << text.toStdString();
            }
        }
        EXPECT_GE(seen.size(), least);
    }
    void expectNothingCut() const {
        EXPECT_THAT(cutTexts(view()), IsEmpty());
        auto* const scroll = view().findChild<QScrollArea*>();
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    }
    // As on a screen with texts of twice the size, in a window of `width` by `height` of them.
    void expectNothingCutWhenDoubled(int width, int height) {
        QFont large = view().font();
        large.setPixelSize(QFontInfo(large).pixelSize() * 2);
        view().setFont(large);
        resize(2 * width, 2 * height);
        expectNothingCut();
    }
    // Whatever can take the focus takes it in turn, and Tab comes round to the first again.
    void expectAllReachedByTab() {
        std::set<std::string> left;
        for (const auto* control : opened_->controls()) {
            if (control->canFocus() && control->inSight() && control->usable()) {
                left.insert(control->name() == "txtIgn" ? "txtIgn" : control->path());
            }
        }
        for (std::size_t i = 0, turns = 2 * left.size(); i < turns && !left.empty(); ++i) {
            auto* const focus = view().focusWidget();
            if (focus != nullptr) {
                left.erase(focus->objectName().toStdString());
            }
            key(focus != nullptr ? *focus : view(), Qt::Key_Tab);
        }
        EXPECT_THAT(left, IsEmpty());
    }

    controls::Window* opened_ = nullptr;
};

TEST_F(BoxViews, EveryControlOfTheIgnitionBoxHasOneWidgetOfItsName) {
    openBox();
    expectWidgets();
    expectAccessibleNames();
    expectDifferentMnemonics(15);
}

TEST_F(BoxViews, EveryControlOfTheLimiterHasOneWidgetOfItsName) {
    openLimiter();
    expectWidgets();
    expectAccessibleNames();
    expectDifferentMnemonics(5);
}

TEST_F(BoxViews, EachBoxOfTheLimiterStandsBehindItsName) {
    openLimiter();
    for (const auto& [control, name] :
         std::map<std::string, std::string>{{"txtSigPerRev", "Signals per engine rev"},
                                            {"txtCylCount", "Cylinder count"},
                                            {"Combosensortype", "Sensor type"},
                                            {"txtrpmlimitLOW", "Launch RPM limit"},
                                            {"txtrpmlimitLOWpre", "Pre limit"},
                                            {"txtrpmlimitHIGH", "RPM limit"},
                                            {"txtrpmlimitHIGHpre", "Pre limit"},
                                            {"ComboInputFuncLow(3)", "Launch RPM limit function"},
                                            {"ComboInputFuncLow(5)", "RPM limit function"},
                                            {"txtInputFuncVal(0)", "Value"},
                                            {"lblInput3", "Current value"},
                                            {"txtLaunchControlLimit", "Launch control rpm limit"},
                                            {"txtLaunchFixedDelay", "Fixed time"},
                                            {"txtMaxAccel", "max accel speed"}}) {
        EXPECT_EQ(find(control).accessibleName().toStdString(), name) << control;
    }
    EXPECT_THAT(labels(),
                testing::IsSupersetOf({"Signals per engine rev", "( RB2xDET 180 )", "Cylinder count", "Sensor type",
                                       "Launch RPM limit", "Pre limit", "RPM limit", "Value", "Current value",
                                       "Launch control rpm limit", "Fixed time", "max accel speed"}));
}

TEST_F(BoxViews, TheLimiterSaysThatNoInputSendsItsComparison) {
    openLimiter();
    const auto texts = labels();
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "Comparison (not sent)"), 3);
}

// It reads the sensor type and the launch control, and never shows them.
TEST_F(BoxViews, TheLimiterSaysTwiceWhereItsReadsShow) {
    openLimiter();
    const auto texts = labels();
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "What is read shows in the settings window, not here."), 2);
}

TEST_F(BoxViews, NothingOfTheIgnitionBoxIsCut) {
    auto& box = openBox();
    box.prgTransfer.start(160);
    box.Caption = "Ignition kartta lähetetty ja talletettu autoon";
    resize(1366, 728);
    expectNothingCut();
    expectNothingCutWhenDoubled(1366, 728);
}

TEST_F(BoxViews, TheIgnitionBoxTellsOfMapsOfAnotherSize) {
    auto& box = openBox();
    EXPECT_FALSE(find("sizeNote").isVisible());
    tables.SWType = 15;
    box.showNotes();
    resize(1366, 728);
    EXPECT_TRUE(find("sizeNote").isVisible());
    EXPECT_EQ(find("sizeNote").width(), find("FrameIgn").width());
    expectNothingCut();
}

TEST_F(BoxViews, NothingOfTheLimiterIsCut) {
    auto& limiter = openLimiter();
    frame();
    expectNothingCut();
    limiter.Caption = "Receiving data from target device!:  Received 100%";
    for (auto* list : {&limiter.Combolaunchmode, &limiter.ComboAccellimiter, &limiter.Combosensortype}) {
        list->ListIndex = 1;
    }
    resize(1366, 728);
    expectNothingCut();
    expectNothingCutWhenDoubled(1080, 510);
}

TEST_F(BoxViews, AllOfTheIgnitionBoxIsReachedByTab) {
    auto& box = openBox();
    box.setFocus(&box.ign(0));
    frame();
    expectAllReachedByTab();
}

TEST_F(BoxViews, AllOfTheLimiterIsReachedByTab) {
    auto& limiter = openLimiter();
    limiter.setFocus(&limiter.btnReadData);
    frame();
    expectAllReachedByTab();
}

TEST_F(BoxViews, TheSpeedsOfTheIdlePaneStandOverItsBoxes) {
    openBox();
    const char* const speeds[] = {"500", "600", "700", "800", "900"};
    for (int i = 0; i < 5; ++i) {
        const auto name = find("txtIdleAdv(" + std::to_string(i) + ")").accessibleName().toStdString();
        EXPECT_EQ(name, std::string("Idle Ignition ") + speeds[i] + " RPM");
    }
}

TEST_F(BoxViews, WhatArrivesIsSeen) {
    auto& limiter = openLimiter();
    limiter.UpdateReadEE(6800, 1908, true);
    limiter.UpdateReadEE(0x0203, 1914, true);
    limiter.UpdateReadEE(125, 1912, true);
    tables.liveValues.at(16).raw = 255;
    pump.wait(400);
    frame();
    EXPECT_EQ(dynamic_cast<QLineEdit&>(find("txtrpmlimitHIGH")).text(), "6800");
    EXPECT_EQ(dynamic_cast<QComboBox&>(find("ComboInputFuncLow(0)")).currentText(), "Disable 50& CYL");
    EXPECT_EQ(dynamic_cast<QComboBox&>(find("comboInputFuncHi(0)")).currentText(), "Disable 33% CYL");
    EXPECT_EQ(dynamic_cast<QLineEdit&>(find("txtInputvolt(0)")).text(), "2.5");
    EXPECT_EQ(dynamic_cast<Readout&>(find("lblInput1")).text(), "5");
}

TEST_F(BoxViews, VoltsAreSteppedByTheKeysOfTheBox) {
    auto& limiter = openLimiter();
    limiter.UpdateReadEE(125, 1912, true);
    limiter.setFocus(&limiter.txtInputvolt(0));
    frame();
    auto& box = find("txtInputvolt(0)");
    key(box, Qt::Key_Plus, {}, "+");
    key(box, Qt::Key_5, {}, "5");
    EXPECT_EQ(limiter.txtInputvolt(0).Text.get(), "2.52");
    key(box, Qt::Key_Minus, {}, "-");
    EXPECT_EQ(limiter.txtInputvolt(0).Text.get(), "2.5");
}

TEST_F(BoxViews, TheRunningCellIsRed) {
    auto& box = openBox();
    tables.MapPlace = 54;
    box.updateMapPlace();
    frame();
    EXPECT_EQ(dynamic_cast<MapGridView&>(find("txtIgn")).cell(54).back, controls::kRed);
}

TEST_F(BoxViews, TheIgnitionBoxCanBeSeenWhileItReads) {
    connect();
    bool seen = false;
    at(static_cast<int>(pump.milliseconds()) + 300, [&] {
        auto* const box = windows.loaded().back();
        seen = host.viewOf(*box) != nullptr && host.viewOf(*box)->isVisible();
    });
    openBox();
    EXPECT_TRUE(seen);
}

}  // namespace
}  // namespace korvane::views
