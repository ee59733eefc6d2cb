// A tuner at the windows of the ignition-only box and of the limiter box, with real widgets, keys and clicks.
#include <gmock/gmock.h>

#include "app/SettingsStory.h"
#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/DropDown.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

ecu::EcuSettings boxOf(int type) {
    ecu::EcuSettings settings = halfLoad();
    settings.type = type;
    return settings;
}

class BoxStory : public SettingsStory {
protected:
    explicit BoxStory(int type) : SettingsStory(boxOf(type)) {}

    // Connected, the settings read, and the box's own window open and read.
    template <class Window>
    Window& connectAndOpenWindow() {
        press(main_, "btnConnect");
        host_.pump.wait(30000);
        press(main_, "btnKartat");
        host_.pump.wait(5000);
        auto& opened = dynamic_cast<Window&>(*host_.windows.loaded().back());
        show(opened);
        return opened;
    }
    void show(controls::Window& window) {
        auto* const view = views_.viewOf(window);
        ASSERT_NE(view, nullptr);
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    }
    void choose(controls::Window& window, const std::string& list, int row) {
        auto& drop = find<views::DropDown>(window, list);
        drop.setFocus();
        QTest::keyClick(&drop, Qt::Key_Home);
        for (int i = 0; i < row; ++i) {
            QTest::keyClick(&drop, Qt::Key_Down);
        }
        ASSERT_EQ(drop.currentIndex(), row);
    }
    void send(controls::Window& window, const std::string& button) {
        press(window, button);
        host_.pump.wait(500);
    }
};

class IgnitionBoxStory : public BoxStory {
protected:
    IgnitionBoxStory() : BoxStory(30) {}
};

// Cell 17 of the map lies in 180 + 17, the launch limit of type 30 in 500 and 501: 5100 is 19 * 256 + 236.
TEST_F(IgnitionBoxStory, AMapAndAllGroupsAreChangedAndSent) {
    auto& box = connectAndOpenWindow<maps::FrmMaps_QV_ign>();
    EXPECT_EQ(find<QLineEdit>(box, "txtLaunchControlLimit").text(), "4500");
    const auto before = eeprom();
    auto& grid = find<views::MapGridView>(box, "txtIgn");
    QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.cellRect(17).center());
    QTest::keyClick(&grid, Qt::Key_Plus);
    send(box, "btnWriteIgn");
    EXPECT_EQ(box.Caption.get(), "Ignition kartta lähetetty ja talletettu autoon");
    type(box, "txtLaunchControlLimit", "5100");
    choose(box, "Combolaunchmode", 0);
    send(box, "btnSaveLaunch");
    press(box, "txtchargetime");
    key(Qt::Key_Plus);
    choose(box, "Combosensortype", 0);
    send(box, "btnsaveign_2");
    send(box, "btnReadIdleAdv");
    host_.pump.wait(1000);
    type(box, "txtIdleAdv(4)", "50");
    send(box, "btnSaveIdleAdv");
    EXPECT_THAT(changedSince(before), ElementsAre(Pair(13, 176), Pair(197, before.at(197) + 1), Pair(346, 0),
                                                  Pair(396, 50), Pair(500, 236), Pair(501, 19), Pair(971, 0)));
    EXPECT_THAT(messages(), IsEmpty());
}

class LimiterStory : public BoxStory {
protected:
    LimiterStory() : BoxStory(112) {}
};

// 6800 is 26 * 256 + 144; input 2 stands at 125 counts.
TEST_F(LimiterStory, SettingsAreSentAndTheBoxStartsAnew) {
    auto& limiter = connectAndOpenWindow<maps::FrmMaps_ign_limiter>();
    EXPECT_EQ(find<QLineEdit>(limiter, "txtrpmlimitHIGH").text(), "7200");
    const auto before = eeprom();
    type(limiter, "txtrpmlimitHIGH", "6800");
    press(limiter, "txtInputvolt(1)");
    key(Qt::Key_Plus);
    choose(limiter, "ComboInputFuncLow(1)", 3);
    choose(limiter, "comboInputFuncHi(1)", 2);
    choose(limiter, "ComboInputFuncLow(3)", 1);
    choose(limiter, "Combosensortype", 1);
    press(limiter, "btnSendSettings");
    EXPECT_EQ(limiter.Caption.get(), "Data sent and stored to device.");
    host_.pump.wait(1000);
    EXPECT_THAT(main_.Caption.get(), StartsWith("Korvane Tuner v1.3 by Dulmer,   Device started "));
    EXPECT_THAT(changedSince(before), ElementsAre(Pair(1908, 144), Pair(1909, 26), Pair(1918, 126), Pair(1920, 3),
                                                  Pair(1921, 2), Pair(1938, 1)));
    limiter.unload();
    press(main_, "btnKartat");
    host_.pump.wait(5000);
    auto& again = dynamic_cast<maps::FrmMaps_ign_limiter&>(*host_.windows.loaded().back());
    EXPECT_EQ(find<QLineEdit>(again, "txtrpmlimitHIGH").text(), "6800");
    EXPECT_EQ(find<QLineEdit>(again, "txtInputvolt(1)").text(), "2.52");
    EXPECT_EQ(find<views::DropDown>(again, "ComboInputFuncLow(1)").currentText(), "Disable 50& CYL");
    EXPECT_THAT(messages(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
