// The keys that all windows share, and what each window's guide promises, with the real windows.
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "maps/MapForm.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"
#include "views/frame/WindowGuide.h"
#include "views/frame/WindowView.h"

namespace korvane::app {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kAllFeatures = 0xFFFF;

// All windows of the program on the offscreen display, on a line without a device.
struct FrameKeysTest : testing::Test, support::VirtualProgram {
    FrameKeysTest() {
        views::addViews(host);
        tables.Features = kAllFeatures;
    }

    controls::Window& newest() { return *windows.loaded().back(); }
    views::WindowView& activate(controls::Window& shown) {
        auto& view = *host.viewOf(shown);
        view.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        return view;
    }
    maps::MapForm& openMaps() {
        connect();
        program.mapWindows().open();
        auto& form = dynamic_cast<maps::MapForm&>(newest());
        pump.wait(1000);
        window.TimerGetSettings.Enabled = false;
        window.TimerRequestData.Enabled = false;
        pump.wait(1000);
        static_cast<void>(sent());
        return form;
    }
    // The widget of a control, with the focus.
    static QWidget& focus(views::WindowView& view, const char* name) {
        auto* const widget = view.findChild<QWidget*>(QLatin1String(name));
        widget->setFocus();
        EXPECT_TRUE(widget->hasFocus()) << name;
        return *widget;
    }
    static QDialog* helpOf(const views::WindowView& view) { return view.findChild<QDialog*>(QStringLiteral("help")); }

    views::ViewHost host{windows};
};

// The windows that the program can open.
struct EveryWindow : FrameKeysTest {
    EveryWindow() {
        for (const int swType : {11, 14, 32, 112}) {
            tables.SWType = swType;
            program.mapWindows().open();
        }
        for (auto* button : {&window.Command5, &window.Command6, &window.Command8, &window.btnDatalogTrend,
                             &window.btnAsetukset, &window.btnTuningHelp}) {
            button->press();
        }
        program.frm3Dmap().show();
        program.undo().showList();
        program.steadyAgent().openWindow();
        window.keepWindows.compare();
        window.keepWindows.restore();
        window.portDoubt.test();
        window.keepWindows.link();
        for (auto* each : windows.loaded()) {
            if (auto* const form = dynamic_cast<maps::MapForm*>(each)) {
                form->btnInjScale.press();
                break;
            }
        }
    }
};

TEST_F(EveryWindow, HasAGuideAndEachGuideAWindow) {
    std::vector<std::string> loaded;
    for (const auto* each : windows.loaded()) {
        EXPECT_NE(views::guideOf(each->name()), nullptr) << each->name();
        loaded.emplace_back(each->name());
    }
    for (const auto& guide : views::windowGuides()) {
        EXPECT_THAT(loaded, Contains(guide.window));
    }
}

TEST_F(EveryWindow, HasTheReadButtonsOfItsGuide) {
    for (const auto* each : windows.loaded()) {
        for (const auto path : views::guideOf(each->name())->reads) {
            const auto& controls = each->controls();
            const bool found = std::any_of(controls.begin(), controls.end(), [&](const auto* control) {
                return control->path() == path && control->kind() == "button";
            });
            EXPECT_TRUE(found) << each->name() << '.' << path;
        }
    }
}

TEST_F(EveryWindow, HasTheIconOfTheProgram) {
    for (const auto* each : windows.loaded()) {
        const auto* const view = host.viewOf(*each);
        ASSERT_NE(view, nullptr) << each->name();
        EXPECT_FALSE(view->windowIcon().isNull()) << each->name();
        EXPECT_GT(view->windowIcon().pixmap(64, 64).toImage().pixelColor(32, 8).alpha(), 0);
    }
}

TEST_F(FrameKeysTest, F1OpensTheHelpWhateverHasTheFocus) {
    auto& view = activate(openMaps());
    for (const char* name : {"txtFuel", "txtMisc(0)", "chkTrace", "btnReadFuel", "optINJMaxOpen(0)"}) {
        QTest::keyClick(&focus(view, name), Qt::Key_F1);
        auto* const help = helpOf(view);
        ASSERT_NE(help, nullptr) << name;
        EXPECT_TRUE(help->isVisible());
        EXPECT_TRUE(help->windowTitle().contains("Kartat"));
        ASSERT_TRUE(QTest::qWaitFor([help] { return QApplication::activeWindow() == help; }));
        QTest::keyClick(help, Qt::Key_Escape);
        EXPECT_FALSE(help->isVisible());
        activate(newest());
    }
}

TEST_F(FrameKeysTest, HelpGoesWithItsWindow) {
    auto& form = openMaps();
    auto& view = activate(form);
    QTest::keyClick(&focus(view, "txtFuel"), Qt::Key_F1);
    const QPointer<QDialog> help = helpOf(view);
    EXPECT_TRUE(form.unload());
    EXPECT_TRUE(help.isNull() || !help->isVisible());
}

// 'm', 'f' and 'a', as the three buttons send them; PWM values can't be read while their pane is hidden.
TEST_F(FrameKeysTest, F5ReadsTheMapsWhateverHasTheFocus) {
    auto& view = activate(openMaps());
    for (const char* name : {"txtFuel", "txtMisc(0)", "chkTrace", "btnWriteFuel"}) {
        QTest::keyClick(&focus(view, name), Qt::Key_F5);
        EXPECT_EQ(sent(), (support::Bytes{'m', 'f', 'a'})) << name;
    }
}

TEST_F(FrameKeysTest, F5PressesOnlyWhatAUserCouldPress) {
    auto& form = openMaps();
    auto& view = activate(form);
    form.btnReadFuel.Enabled = false;
    form.btnReadMisc.Visible = false;
    QTest::keyClick(&focus(view, "txtIgn"), Qt::Key_F5);
    EXPECT_EQ(sent(), (support::Bytes{'a'}));
}

TEST_F(FrameKeysTest, AWindowThatIsClosedByAReadReadsNoMore) {
    auto& form = openMaps();
    auto& view = activate(form);
    form.btnReadMisc.Click = [&form] { EXPECT_TRUE(form.unload()); };
    QTest::keyClick(&focus(view, "txtFuel"), Qt::Key_F5);
    EXPECT_THAT(sent(), IsEmpty());
}

// Cells 1 and 18 with Shift: a block of two columns and two rows.
TEST_F(FrameKeysTest, EscapeEndsTheBlockAndGoesBackToTheMap) {
    auto& form = openMaps();
    auto& view = activate(form);
    const auto select = [&] {
        form.setFocus(&form.fuel(0));
        form.fuel(0).keyDown(controls::kKeyShift, controls::kShiftMask);
        form.setFocus(&form.fuel(17));
        form.fuel(17).keyDown(controls::kKeyShift, controls::kShiftMask);
        EXPECT_EQ(form.fuel(1).BackColor.get(), controls::kGreen);
    };
    for (const char* name : {"txtFuel", "txtMisc(0)", "chkTrace", "btnWriteFuel"}) {
        select();
        QTest::keyClick(&focus(view, name), Qt::Key_Escape);
        EXPECT_NE(form.fuel(1).BackColor.get(), controls::kGreen) << name;
        EXPECT_TRUE(view.findChild<QWidget*>("txtFuel")->hasFocus()) << name;
        EXPECT_TRUE(form.isLoaded());
    }
}

TEST_F(FrameKeysTest, EscapeInAnotherGridStaysThere) {
    auto& form = openMaps();
    auto& view = activate(form);
    QTest::keyClick(&focus(view, "txtIgn"), Qt::Key_Escape);
    EXPECT_TRUE(view.findChild<QWidget*>("txtIgn")->hasFocus());
}

TEST_F(FrameKeysTest, EscapeClosesAReadout) {
    window.Command6.press();
    auto& shown = newest();
    ASSERT_EQ(shown.name(), "frmBigText");
    QTest::keyClick(&focus(activate(shown), "Combo1"), Qt::Key_Escape);
    EXPECT_EQ(host.viewOf(shown), nullptr);
}

TEST_F(FrameKeysTest, EscapeLeavesTheMainWindowOpen) {
    window.show();
    QTest::keyClick(&activate(window), Qt::Key_Escape);
    EXPECT_TRUE(window.isLoaded());
}

TEST_F(FrameKeysTest, CtrlQClosesWhateverHasTheFocus) {
    for (const char* name : {"txtFuel", "txtMisc(0)", "chkTrace", "btnWriteFuel", "optINJMaxOpen(0)"}) {
        program.mapWindows().open();
        auto& shown = newest();
        QTest::keyClick(&focus(activate(shown), name), Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(host.viewOf(shown), nullptr) << name;
    }
}

// A box that only ignites, and the limiter. All that is read when such a window opens has been read.
struct BoxKeysTest : FrameKeysTest {
    BoxKeysTest() { connect(); }

    controls::Window& openBox(int swType) {
        tables.SWType = swType;
        program.mapWindows().open();
        window.TimerGetSettings.Enabled = false;
        window.TimerRequestData.Enabled = false;
        pump.wait(20'000);
        return newest();
    }
    // What this makes the program send until nothing more comes.
    template <class Action>
    support::Bytes sentBy(Action&& action) {
        window.TimerRequestData.Enabled = false;
        static_cast<void>(sent());
        action();
        window.TimerRequestData.Enabled = false;
        pump.wait(20'000);
        return sent();
    }
};

struct Box {
    int swType;
    std::vector<const char*> reads;
    std::vector<const char*> focus;  // a grid, boxes that are typed into or stepped, lists, a button
};
const std::vector<Box> kBoxes{
    {32,
     {"btnReadMisc", "btnReadIgn", "btnreadign_2", "btnReadLaunch", "btnReadIdleAdv"},
     {"txtIgn", "txtIdleAdv(0)", "txtchargetime", "Combosensortype", "txtMisc(0)", "btnWriteIgn"}},
    {112,
     {"btnReadData", "btnReadLaunch"},
     {"txtSigPerRev", "txtInputvolt(0)", "Combosensortype", "ComboInputCompare(1)", "btnSendSettings"}},
};

void press(const controls::Window& window, std::string_view name) {
    for (auto* control : window.controls()) {
        if (control->path() == name) {
            control->press();
            return;
        }
    }
    ADD_FAILURE() << name;
}

TEST_F(BoxKeysTest, F5SendsWhatAllReadButtonsSendWhateverHasTheFocus) {
    for (const auto& [swType, reads, names] : kBoxes) {
        auto& shown = openBox(swType);
        auto& view = activate(shown);
        const auto byHand = sentBy([&shown, &buttons = reads] {
            for (const char* name : buttons) {
                press(shown, name);
            }
        });
        EXPECT_GT(byHand.size(), 20U);
        for (const char* name : names) {
            auto& widget = focus(view, name);
            EXPECT_EQ(sentBy([&widget] { QTest::keyClick(&widget, Qt::Key_F5); }), byHand) << name;
        }
        EXPECT_TRUE(shown.unload());
    }
}

TEST_F(BoxKeysTest, F1AndCtrlQActWhateverHasTheFocus) {
    for (const auto& [swType, reads, names] : kBoxes) {
        for (const char* name : names) {
            auto& shown = openBox(swType);
            auto& view = activate(shown);
            QTest::keyClick(&focus(view, name), Qt::Key_F1);
            auto* const help = helpOf(view);
            ASSERT_NE(help, nullptr) << name;
            EXPECT_TRUE(help->isVisible()) << name;
            help->hide();
            QTest::keyClick(&focus(activate(shown), name), Qt::Key_Q, Qt::ControlModifier);
            EXPECT_EQ(host.viewOf(shown), nullptr) << name;
        }
    }
}

TEST_F(BoxKeysTest, EscapeGoesBackToTheMapOfTheBoxAndLeavesTheLimiterAsItIs) {
    for (const auto& [swType, reads, names] : kBoxes) {
        auto& shown = openBox(swType);
        auto& view = activate(shown);
        for (const char* name : names) {
            auto& widget = focus(view, name);
            EXPECT_THAT(sentBy([&widget] { QTest::keyClick(&widget, Qt::Key_Escape); }), IsEmpty()) << name;
            EXPECT_TRUE(shown.isLoaded()) << name;
            EXPECT_TRUE((swType == 32 ? view.findChild<QWidget*>("txtIgn") : &widget)->hasFocus()) << name;
        }
        EXPECT_TRUE(shown.unload());
    }
}

// A box that drops the character hides the key from the toolkit.
TEST_F(FrameKeysTest, TheControlGetsTheKeyFirst) {
    auto& form = openMaps();
    auto& view = activate(form);
    std::vector<int> keys;
    form.txtMisc(0).KeyDown = [&](int key, int) { keys.push_back(key); };
    form.txtMisc(0).KeyPress = [&](int& character) {
        keys.push_back(character);
        character = 0;
    };
    QTest::keyClick(&focus(view, "txtMisc(0)"), Qt::Key_Escape);
    QTest::keyClick(&focus(view, "txtMisc(0)"), Qt::Key_F5);
    EXPECT_THAT(keys, ElementsAre(27, 27, 116));
}

}  // namespace
}  // namespace korvane::app
