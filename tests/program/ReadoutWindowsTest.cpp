// How the main window opens the big readouts and the dial's window, and how long they live.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "live/readout/FrmBigText.h"
#include "live/readout/FrmMeter.h"
#include "support/VirtualProgram.h"

namespace korvane::live {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct ReadoutWindowsTest : testing::Test, support::VirtualProgram {
    [[nodiscard]] std::vector<FrmBigText*> readouts() { return program.readoutWindows().bigTexts().all(); }
    [[nodiscard]] std::vector<controls::Window*> named(std::string_view name) const {
        std::vector<controls::Window*> found;
        for (auto* const loaded : windows.loaded()) {
            if (loaded->name() == name) {
                found.push_back(loaded);
            }
        }
        return found;
    }
};

TEST_F(ReadoutWindowsTest, EachPressOpensAnotherReadout) {
    window.Command6.press();
    window.Command6.press();
    window.Command6.press();
    EXPECT_THAT(readouts(), SizeIs(3));
    EXPECT_THAT(named("frmBigText"), ElementsAre(readouts()[0], readouts()[1], readouts()[2]));
    EXPECT_TRUE(readouts()[1]->Visible);
}

TEST_F(ReadoutWindowsTest, AReadoutEndsWithItsOwnClose) {
    window.Command6.press();
    window.Command6.press();
    auto* const second = readouts()[1];
    EXPECT_TRUE(readouts()[0]->unload());
    pump.wait(1000);
    EXPECT_THAT(readouts(), ElementsAre(second));
    EXPECT_EQ(second->Label1.Caption.get(), "0");
}

TEST_F(ReadoutWindowsTest, AReadoutFollowsTheFramesOfTheEcu) {
    tables.liveValues[3].name = "Voltage";
    connect();
    window.Command6.press();
    auto& readout = *readouts()[0];
    readout.Combo1.choose(3);
    // 3 * 256 + 82 = 850 rpm; 137 / 10 = 13.7 V.
    receiveFrame('R', {3, 82, 130, 75, 137, 50, 30, 128, 20, 2, 17, 32, 4});
    pump.wait(200);
    EXPECT_EQ(readout.Caption.get(), "Voltage  13.7");
    readout.Combo1.choose(0);
    pump.wait(200);
    EXPECT_EQ(readout.Label1.Caption.get(), "850");
}

TEST_F(ReadoutWindowsTest, TheDialsWindowIsOneAtATimeAndStartsAnew) {
    window.Command8.press();
    ASSERT_THAT(named("frmMeter"), SizeIs(1));
    auto& first = dynamic_cast<FrmMeter&>(*named("frmMeter")[0]);
    first.Combo1.choose(1);
    pump.wait(500);
    window.Command8.press();
    EXPECT_THAT(named("frmMeter"), ElementsAre(&first));
    EXPECT_EQ(first.SarnMeter1.value(), 500);
    EXPECT_TRUE(first.unload());
    EXPECT_THAT(named("frmMeter"), IsEmpty());
    window.Command8.press();
    ASSERT_THAT(named("frmMeter"), SizeIs(1));
    auto& second = dynamic_cast<FrmMeter&>(*named("frmMeter")[0]);
    EXPECT_EQ(second.SarnMeter1.MeterType(), 0);
    EXPECT_EQ(second.Combo1.ListCount(), 3);
}

TEST_F(ReadoutWindowsTest, AllGoWithTheMainWindow) {
    window.Command6.press();
    window.Command6.press();
    window.Command8.press();
    EXPECT_TRUE(window.unload());
    EXPECT_THAT(readouts(), IsEmpty());
    EXPECT_THAT(named("frmBigText"), IsEmpty());
    EXPECT_THAT(named("frmMeter"), IsEmpty());
    EXPECT_TRUE(program.ended());
}

class Leavers : public controls::WindowListener {
public:
    void windowLoaded(controls::Window&) override {}
    void windowUnloaded(controls::Window& left) override { names.emplace_back(left.name()); }

    std::vector<std::string> names;
};

TEST_F(ReadoutWindowsTest, ReadoutsGoBehindAllOtherWindows) {
    for (auto* button : {&window.Command6, &window.btnKartat, &window.Command7, &window.Command5, &window.btnTuningHelp,
                         &window.btnDatalogTrend, &window.Command1, &window.Command6, &window.btnAsetukset}) {
        button->press();
    }
    Leavers leavers;
    windows.setListener(&leavers);
    EXPECT_TRUE(window.unload());
    windows.setListener(nullptr);
    ASSERT_THAT(leavers.names, SizeIs(11));
    leavers.names.resize(10);  // the main window itself comes last
    EXPECT_EQ(std::count(leavers.names.begin(), leavers.names.begin() + 8, "frmBigText"), 0);
    EXPECT_EQ(std::count(leavers.names.begin() + 8, leavers.names.end(), "frmBigText"), 2);
}

}  // namespace
}  // namespace korvane::live
