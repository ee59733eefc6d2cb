// The windows of the ignition-only box and of the limiter box in the program: what opens them, how many there are, and
// where replies go.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using support::Bytes;
using testing::IsEmpty;

class BoxWindows : public testing::Test, public support::VirtualProgram {
protected:
    // The window that a press of btnKartat shows for a firmware type.
    template <class Kind>
    Kind& openFor(int swType) {
        tables.SWType = swType;
        window.btnKartat.press();
        return dynamic_cast<Kind&>(*known());
    }
    maps::FrmMaps_QV_ign& openBox() { return openFor<maps::FrmMaps_QV_ign>(32); }
    maps::FrmMaps_ign_limiter& openLimiter() { return openFor<maps::FrmMaps_ign_limiter>(112); }
    link::MapWindow* known() { return program.windows().curMapWindow; }
    [[nodiscard]] std::size_t loaded() const { return windows.loaded().size(); }
};

TEST_F(BoxWindows, ThirtyAndThirtyTwoIgnite) {
    EXPECT_TRUE(openFor<maps::FrmMaps_QV_ign>(30).Visible);
    EXPECT_EQ(openFor<maps::FrmMaps_QV_ign>(32).name(), "frmMaps_QV_ign");
    EXPECT_EQ(openFor<maps::MapForm>(31).name(), "frmMaps");
}

TEST_F(BoxWindows, OfEachThereIsOne) {
    const auto before = loaded();
    auto& box = openBox();
    EXPECT_EQ(&openBox(), &box);
    auto& limiter = openLimiter();
    EXPECT_EQ(&openLimiter(), &limiter);
    EXPECT_EQ(loaded(), before + 2);
    EXPECT_TRUE(box.unload());
    EXPECT_TRUE(limiter.unload());
    EXPECT_EQ(loaded(), before);
    EXPECT_TRUE(openBox().Visible);
    EXPECT_TRUE(openLimiter().Visible);
}

TEST_F(BoxWindows, TheLimiterCanBeOpenedForAnyType) {
    tables.SWType = 11;
    EXPECT_TRUE(window.Command7.Enabled);
    window.Command7.press();
    auto* const limiter = dynamic_cast<maps::FrmMaps_ign_limiter*>(known());
    ASSERT_NE(limiter, nullptr);
    connect();
    receiveFrame('U', {100, 0, 0x6C, 7});  // row 1900
    EXPECT_EQ(limiter->txtSigPerRev.Text.get(), "100");
}

// Maps and misc block go to the ignition box, what it has not got to the window that was opened last.
TEST_F(BoxWindows, TheIgnitionBoxServesTheDispatcherAlsoBelowAnotherWindow) {
    connect();
    auto& box = openBox();
    auto& maps = openFor<maps::MapForm>(11);
    maps.TimerInitialGetData.Enabled = false;
    receiveFrame('a', Bytes(160, 20));
    EXPECT_EQ(box.ign(159).Text.get(), "4");
    EXPECT_EQ(maps.ign(159).Text.get(), "");
    receiveFrame('f', Bytes(160, 20));
    EXPECT_NE(maps.fuel(159).Text.get(), "");
    receiveFrame('m', {52, 33, 40, 35, 0, 0, 9, 128, 5});
    EXPECT_EQ(box.txtMisc(0).Text.get(), "8500");  // 52 + 256 * 33
    EXPECT_EQ(maps.txtMisc(0).Text.get(), "");
    EXPECT_TRUE(box.unload());
    receiveFrame('a', Bytes(160, 20));
    EXPECT_EQ(maps.ign(159).Text.get(), "4");
}

TEST_F(BoxWindows, BytesReachTheIgnitionBoxAndNotTheLimiter) {
    connect();
    auto& limiter = openLimiter();
    receiveFrame('T', {1, 0x5A, 1});  // row 346
    EXPECT_EQ(limiter.Combosensortype.ListIndex.get(), 0);
    EXPECT_EQ(tables.EEImage.at(346), 1);
    auto& box = openBox();
    receiveFrame('T', {1, 0x5A, 1});
    EXPECT_EQ(box.Combosensortype.ListIndex.get(), 1);
}

TEST_F(BoxWindows, TheUnloadOfTheLimiterLeavesNoWindowKnown) {
    auto& box = openBox();
    openLimiter().unload();
    EXPECT_FALSE(tables.ignWindowOpen);
    EXPECT_EQ(known(), nullptr);
    window.Command7.press();
    auto& limiter = dynamic_cast<maps::FrmMaps_ign_limiter&>(*known());
    EXPECT_EQ(&openBox(), &box);
    EXPECT_FALSE(tables.ignWindowOpen) << "set by a load alone";
    EXPECT_TRUE(limiter.unload());
    EXPECT_EQ(known(), nullptr);
}

TEST_F(BoxWindows, TheAnalyserKeepsTheWindowWithTheFuelMap) {
    auto& maps = openFor<maps::MapForm>(11);
    openBox();
    program.analyser().Setpoint(13.0F, 17);
    EXPECT_EQ(maps.analys(17).ToolTipText.get(), "13");
    program.analyser().setAgentEnable(true);
    EXPECT_TRUE(maps.unload());
    EXPECT_FALSE(program.analyser().AgentEnable());
    pump.wait(1000);
    program.analyser().Setpoint(14.0F, 17);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(BoxWindows, AllOfThemGoWithTheMainWindow) {
    openBox();
    openLimiter();
    EXPECT_TRUE(window.unload());
    EXPECT_THAT(windows.loaded(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
