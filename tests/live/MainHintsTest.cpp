#include <gmock/gmock.h>
#include <set>

#include "live/FrmSarn2.h"
#include "live/MainHints.h"
#include "support/VirtualMachine.h"

namespace korvane::live {
namespace {

using testing::HasSubstr;

struct MainHintsTest : testing::Test, support::VirtualMachine {
    FrmSarn2 window{machine};
};

TEST_F(MainHintsTest, EveryControlThatIsShownHasOne) {
    for (const auto* control : window.controls()) {
        const bool shown = control->kind() != "timer" && control->kind() != "serial control";
        EXPECT_EQ(hintOf(*control).empty(), !shown) << control->path();
    }
}

TEST_F(MainHintsTest, ButtonsOfOddNamesSayWhatTheySend) {
    EXPECT_THAT(hintOf(window.Command3), HasSubstr("Sends p"));
    EXPECT_THAT(hintOf(window.Command4), HasSubstr("Sends o"));
    EXPECT_THAT(hintOf(window.Command2), HasSubstr("Sends X"));
    EXPECT_THAT(hintOf(window.Command1), HasSubstr("large maps"));
    EXPECT_THAT(hintOf(window.btnKartat), HasSubstr("m, f, a and p"));
}

TEST_F(MainHintsTest, ButtonsOfWindowsSayWhatTheseShow) {
    EXPECT_THAT(hintOf(window.Command8), HasSubstr("a dial that sweeps"));
    EXPECT_THAT(hintOf(window.btnTuningHelp), HasSubstr("times of pulls"));
    EXPECT_THAT(hintOf(window.btnAsetukset), HasSubstr("by the first Connect"));
}

TEST_F(MainHintsTest, EachLampAndEachValueHasItsOwn) {
    std::set<std::string_view> seen;
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(hintOf(window.imgLed(i)), hintOf(window.lblLED(i)));
        seen.insert(hintOf(window.imgLed(i)));
    }
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(hintOf(window.lblValue(i)), hintOf(window.lblValueName(i)));
        seen.insert(hintOf(window.lblValue(i)));
    }
    EXPECT_EQ(seen.size(), 28U);
}

}  // namespace
}  // namespace korvane::live
