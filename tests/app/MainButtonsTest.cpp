// The buttons of the main window: which window each opens, how many of each there are, and that all end with the
// program.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using testing::IsEmpty;

struct Opener {
    controls::CommandButton live::FrmSarn2::*button;
    std::string_view window;
    int afterTwoPresses = 1;
};

constexpr Opener kOpeners[] = {
    {&live::FrmSarn2::btnKartat, "frmMaps"},
    {&live::FrmSarn2::btnAsetukset, "frmMisc"},
    {&live::FrmSarn2::btnDatalogTrend, "frmTrend_txt"},
    {&live::FrmSarn2::btnTuningHelp, "frmPowerCalc"},
    {&live::FrmSarn2::Command1, "frmMaps_Large", 2},
    {&live::FrmSarn2::Command5, "frmIGNDebug"},
    {&live::FrmSarn2::Command6, "frmBigText", 2},
    {&live::FrmSarn2::Command7, "frmMaps_ign_limiter"},
    {&live::FrmSarn2::Command8, "frmMeter"},
};

class MainButtons : public testing::Test, public support::VirtualProgram {
protected:
    [[nodiscard]] int shown(std::string_view name) const {
        const auto& loaded = windows.loaded();
        return static_cast<int>(std::count_if(
            loaded.begin(), loaded.end(), [name](const auto* each) { return each->name() == name && each->Visible; }));
    }
    void press(const Opener& opener) { (window.*opener.button).press(); }
    void openAll() {
        for (const auto& opener : kOpeners) {
            press(opener);
            press(opener);
        }
        tables.SWType = 32;
        window.btnKartat.press();
    }
    void expectNoneIsGrey() {
        for (const auto* control : window.controls()) {
            if (control->kind() == "button") {
                EXPECT_TRUE(control->usable()) << control->path();
            }
        }
    }
};

TEST_F(MainButtons, EachOpensItsWindow) {
    for (const auto& opener : kOpeners) {
        EXPECT_EQ(shown(opener.window), 0) << opener.window;
        press(opener);
        EXPECT_EQ(shown(opener.window), 1) << opener.window;
        press(opener);
        EXPECT_EQ(shown(opener.window), opener.afterTwoPresses) << opener.window;
    }
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(MainButtons, WhatTheyHaveOpenedGoesWithTheMainWindow) {
    openAll();
    EXPECT_EQ(shown("frmMaps_QV_ign"), 1);
    EXPECT_TRUE(window.unload());
    EXPECT_THAT(windows.loaded(), IsEmpty());
    EXPECT_EQ(program.windows().curMapWindow, nullptr);
}

TEST_F(MainButtons, WhileConnectedThatTakesASecond) {
    connect();
    openAll();
    EXPECT_FALSE(window.unload());
    pump.wait(999);
    EXPECT_EQ(shown("frmMaps_QV_ign"), 1);
    pump.wait(1);
    EXPECT_THAT(windows.loaded(), IsEmpty());
}

TEST_F(MainButtons, NoneIsGreyWhateverTheFirmwareOffers) {
    expectNoneIsGrey();
    connect();
    for (const int type : {11, 14, 30, 112}) {
        receiveFrame('y', {0, 0, 13, 58, static_cast<std::uint8_t>(type)});
        ASSERT_EQ(tables.Features, 0);
        expectNoneIsGrey();
    }
}

TEST_F(MainButtons, ALargeWindowLeavesTheSizeOfTheAnalysersMap) {
    const auto before = program.analyser().mapSize;
    EXPECT_EQ(before, 160);
    window.Command1.press();
    tables.SWType = 14;
    window.btnKartat.press();
    pump.wait(1000);
    EXPECT_EQ(program.analyser().mapSize, before);
}

}  // namespace
}  // namespace korvane::app
