// The keys that open the comparison, the restore points and the list of all changes, in the windows of the program.
#include <algorithm>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace korvane::program {
namespace {

using controls::kControlMask;

struct OpeningKey {
    int code;
    std::string_view opens;
};
constexpr OpeningKey kKeys[] = {
    {68, "frmCompare"}, {82, "frmRestore"}, {72, "frmHistory"}, {76, "frmLink"}};  // D, R, H, L

struct KeepKeysTest : testing::Test, support::VirtualProgram {
    controls::Window* loaded(std::string_view name) {
        const auto& all = windows.loaded();
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto* each) { return each->name() == name; });
        return found != all.end() ? *found : nullptr;
    }
    void close(std::string_view name) {
        if (auto* const open = loaded(name)) {
            EXPECT_TRUE(open->unload()) << name;
        }
    }
    void expectKeysIn(controls::Window& pressed) {
        for (const auto& key : kKeys) {
            if (pressed.name() == key.opens) {
                continue;
            }
            close(key.opens);
            EXPECT_TRUE(pressed.offerKey(key.code, kControlMask)) << pressed.name() << key.opens;
            EXPECT_NE(loaded(key.opens), nullptr) << pressed.name() << key.opens;
            EXPECT_FALSE(pressed.offerKey(key.code, 0)) << pressed.name() << key.opens;
            EXPECT_FALSE(pressed.offerKey(key.code, controls::kShiftMask)) << pressed.name() << key.opens;
        }
    }
    maps::FrmMaps& openMaps() {
        tables.Features = 0xFFFF;
        tables.SWType = 11;
        program.mapWindows().open();
        return dynamic_cast<maps::FrmMaps&>(*loaded("frmMaps"));
    }
};

TEST_F(KeepKeysTest, OpenTheirWindowsInTheMainAndTheSettingsWindow) {
    expectKeysIn(window);
    window.btnAsetukset.press();
    expectKeysIn(*loaded("frmMisc"));
}

TEST_F(KeepKeysTest, OpenTheirWindowsInEachMapWindowAndItsTools) {
    auto& maps = openMaps();
    maps.btnInjScale.press();
    expectKeysIn(*loaded("frmInjScale"));
    expectKeysIn(maps);
    tables.SWType = 32;
    program.mapWindows().open();
    expectKeysIn(*loaded("frmMaps_QV_ign"));
    program.mapWindows().openLimiter();
    expectKeysIn(*loaded("frmMaps_ign_limiter"));
    program.frm3Dmap().show();
    expectKeysIn(*loaded("frm3Dmap"));
}

TEST_F(KeepKeysTest, OpenTheirWindowsInOneAnother) {
    window.keepWindows.compare();
    expectKeysIn(*loaded("frmCompare"));
    window.keepWindows.compare();
    window.keepWindows.restore();
    expectKeysIn(*loaded("frmRestore"));
    window.keepWindows.restore();
    window.keepWindows.history();
    expectKeysIn(*loaded("frmHistory"));
}

TEST_F(KeepKeysTest, OpenTheirWindowsFromCellsOfThePwmTableAndFromSetpoints) {
    auto& maps = openMaps();
    for (auto* const control : std::vector<controls::Control*>{&maps.pwm(70), &maps.analys(3), &maps.txtMisc(0)}) {
        maps.setFocus(control);
        for (const auto& key : kKeys) {
            close(key.opens);
            control->keyDown(key.code, kControlMask);
            control->keyUp(key.code, kControlMask);
            EXPECT_NE(loaded(key.opens), nullptr) << control->path() << key.opens;
        }
    }
}

// It is the window that the tuner has arranged, with its sides or its filter.
TEST_F(KeepKeysTest, BringAWindowThatIsOpenToTheFront) {
    window.btnAsetukset.press();
    auto& settings = *loaded("frmMisc");
    for (const auto& key : kKeys) {
        EXPECT_TRUE(settings.offerKey(key.code, kControlMask));
        const auto* const first = loaded(key.opens);
        const auto count = windows.loaded().size();
        EXPECT_TRUE(settings.offerKey(key.code, kControlMask));
        EXPECT_EQ(loaded(key.opens), first);
        EXPECT_EQ(windows.loaded().size(), count);
    }
}

// On the settings window that one turns the pages.
TEST_F(KeepKeysTest, LeaveTheKeysOfTheWindowsAlone) {
    window.btnAsetukset.press();
    EXPECT_FALSE(loaded("frmMisc")->offerKey(controls::kKeyTab, kControlMask));
    for (const int code : {65, 90, 89, 187, 189, 37, 38, 39, 40}) {
        EXPECT_FALSE(loaded("frmMisc")->offerKey(code, kControlMask)) << code;
    }
}

}  // namespace
}  // namespace korvane::program
