// The box "Verify", what came of a verification, and the button that sends again, in the windows that have them.
#include <QCheckBox>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "maps/MapForm.h"
#include "settings/FrmMisc.h"
#include "views/CutTexts.h"
#include "views/ProgramViews.h"
#include "views/widgets/values/LongLine.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct VerifyPartTest : testing::Test, ProgramViews {
    VerifyPartTest() { tables.Features = 0xFFFF; }

    template <class Window>
    Window& open(int swType, int width = 1340, int height = 690) {
        tables.SWType = swType;
        program.mapWindows().open();
        return shown(dynamic_cast<Window&>(*windows.loaded().back()), width, height);
    }
    template <class Window>
    Window& shown(Window& form, int width, int height) {
        lookAt(form);
        form.resize(width * 15, height * 15);
        frame();
        return form;
    }
    settings::FrmMisc& openSettings() {
        auto& misc = program.frmMisc();
        misc.show();
        misc.TimerInitialGetData.Enabled = false;
        return shown(misc, 1000, 640);
    }

    // What has the focus after each Tab.
    std::vector<std::string> tabsFrom(const char* name, int tabs) {
        view().activateWindow();
        settle();
        find(name).setFocus();
        std::vector<std::string> visited;
        while (static_cast<int>(visited.size()) < tabs) {
            key(*view().focusWidget(), Qt::Key_Tab);
            visited.push_back(view().focusWidget()->objectName().toStdString());
        }
        return visited;
    }

    // The box goes both ways, and the outcome is shown with its button.
    template <class Window>
    void expectParts(Window& form) {
        auto& box = find<QCheckBox>("verify");
        EXPECT_FALSE(box.isChecked());
        EXPECT_FALSE(find("verifyLine").isVisible());
        EXPECT_FALSE(find("sendAgain").isVisible());
        click(box, QPoint(8, box.height() / 2));
        EXPECT_TRUE(window.verify.On);
        window.verify.On = false;
        frame();
        EXPECT_FALSE(box.isChecked());

        int again = 0;
        const int run = form.verifyReport().begin("Fuel", [&again] { ++again; });
        form.verifyReport().end(run, "cell 18 is 90, sent 93", true);
        frame();
        EXPECT_EQ(find<LongLine>("verifyLine").words().toStdString(), "Fuel: cell 18 is 90, sent 93");
        EXPECT_TRUE(find("verifyLine").isVisible());
        EXPECT_TRUE(find("sendAgain").isVisible());
        click(find("sendAgain"));
        EXPECT_EQ(again, 1);
        expectKeysReach(find("sendAgain"));
        EXPECT_EQ(again, 2);
        expectNothingCut();
        const int next = form.verifyReport().begin("Fuel", {});
        form.verifyReport().end(next, "verified", false);
        frame();
        EXPECT_FALSE(find("sendAgain").isVisible());
        expectNothingCut();
    }
    // By Tab from any place, and then by the space bar.
    void expectKeysReach(QWidget& button) const {
        EXPECT_FALSE(button.accessibleName().isEmpty());
        view().activateWindow();
        bool reached = false;
        for (int i = 0; i < 500 && !reached; ++i) {
            QWidget* const focus = view().focusWidget();
            key(focus != nullptr ? *focus : view(), Qt::Key_Tab);
            reached = view().focusWidget() == &button;
        }
        EXPECT_TRUE(reached);
        key(button, Qt::Key_Space, {}, " ");
    }
    // The strip of the tuning agent has no size while its boxes are hidden.
    void expectNothingCut() const {
        auto cut = cutTexts(view());
        std::erase(cut, "/QWidget");
        EXPECT_THAT(cut, IsEmpty());
    }
};

TEST_F(VerifyPartTest, TheMapWindowHasThem) {
    expectParts(open<maps::FrmMaps>(11));
}

TEST_F(VerifyPartTest, TheLargeMapWindowHasThem) {
    expectParts(open<maps::FrmMaps_Large>(14));
}

TEST_F(VerifyPartTest, TheWindowOfTheIgnitionBoxHasThem) {
    expectParts(open<maps::FrmMaps_QV_ign>(30, 1100, 690));
}

TEST_F(VerifyPartTest, TheWindowOfTheLimiterHasThem) {
    expectParts(open<maps::FrmMaps_ign_limiter>(112, 1080, 510));
}

TEST_F(VerifyPartTest, TheSettingsWindowHasThem) {
    expectParts(openSettings());
}

TEST_F(VerifyPartTest, TheStatusLineTellsWhatHasBecomeOfWhatWasSent) {
    open<maps::FrmMaps>(11);
    EXPECT_FALSE(find("storeStatus").isVisible());
    window.ecuMaps.fuel.changed(3, 7);
    frame();
    EXPECT_TRUE(find("storeStatus").isVisible());
    EXPECT_EQ(find<LongLine>("storeStatus").words().toStdString(), "Sent fuel: not told to store");
    EXPECT_THAT(cutTexts(view()), IsEmpty());
}

TEST_F(VerifyPartTest, TheStatusLineNamesWhatIsOverwrittenUnreadAndTellsTheRestInItsToolTip) {
    open<maps::FrmMaps>(11);
    EXPECT_FALSE(find("unreadStatus").isVisible());
    window.keepNotice.overwrites(core::Overwritten::Part::Fuel, "It was not read; no point has it");
    window.ecuMaps.fuel.changed(3, 7);
    frame();
    const auto& unread = find<LongLine>("unreadStatus");
    EXPECT_TRUE(unread.isVisible());
    EXPECT_EQ(unread.words().toStdString(), "It was not read");
    EXPECT_THAT(unread.toolTip().toStdString(), testing::HasSubstr("no point has it"));
}

TEST_F(VerifyPartTest, TabGoesThroughTheButtonsOfTheMapsAsTheyAreRead) {
    open<maps::FrmMaps>(11);
    EXPECT_THAT(tabsFrom("btnWriteIgn", 5),
                ElementsAre("btnReadMisc", "btnSaveMisc", "chkShowPwm", "verify", "chkTrace"));
}

TEST_F(VerifyPartTest, TabGoesThroughTheButtonsOfTheLargeMapsAsTheyAreRead) {
    open<maps::FrmMaps_Large>(15);
    EXPECT_THAT(tabsFrom("btnReadMisc", 3), ElementsAre("btnSaveMisc", "verify", "chkTrace"));
}

TEST_F(VerifyPartTest, TabGoesThroughTheButtonsOfTheIgnitionBoxAsTheyAreRead) {
    open<maps::FrmMaps_QV_ign>(30);
    EXPECT_THAT(tabsFrom("btnReadMisc", 3), ElementsAre("btnSaveMisc", "verify", "chkOnlineChanges"));
}

TEST_F(VerifyPartTest, TabGoesThroughTheButtonsOfTheLimiterAsTheyAreRead) {
    open<maps::FrmMaps_ign_limiter>(112);
    EXPECT_THAT(tabsFrom("btnReadData", 3), ElementsAre("btnSendSettings", "verify", "btnHelp"));
}

TEST_F(VerifyPartTest, TabGoesThroughTheFootOfTheSettingsAsItIsRead) {
    openSettings();
    EXPECT_THAT(tabsFrom("btnLoad", 3), ElementsAre("btnReadFromFile", "verify", "tbsOptions"));
}

}  // namespace
}  // namespace korvane::views
