// Each firmware type on the virtual ECU: its own window opens, reads, takes edits and sends them; the box restarts, and
// a new window reads the same again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

struct Firmware {
    int type;
    std::string_view window;
    const char* caption;  // of the main window, behind the program's own words

    friend void PrintTo(const Firmware& firmware, std::ostream* out) { *out << firmware.type; }
};

constexpr Firmware kFirmware[] = {
    {10, "frmMaps", "Korvane3 full engine control"},
    {11, "frmMaps", "Korvane3 full engine control"},
    {12, "frmMaps", "Korvane3 full engine control 6cyl Nissan"},
    {13, "frmMaps", "Korvane3 full engine control 6cyl TKR"},
    {14, "frmMaps_Large", "Korvane3 full engine control 6cyl, Nissan, Large"},
    {15, "frmMaps_Large", "Korvane3 full engine control 4cyl, TKR, Large"},
    {20, "frmMaps", "Mirel Injection, full"},
    {21, "frmMaps", "Mirel Injection, full v3.3"},
    {30, "frmMaps_QV_ign", "Mirel Ignition"},
    {31, "frmMaps", "Mirel Ignition, full"},
    {32, "frmMaps_QV_ign", "Mirel Ignition, QV"},
    {112, "frmMaps_ign_limiter", "KorvaneMirel, Advanced Ignition limiter"},
    {210, "frmMaps", "KorvaneMirel, Mirel Engine controls; 60deg trig"},
    {211, "frmMaps", "KorvaneMirel, Mirel Engine controls; TKR trig"},
    {212, "frmMaps", "KorvaneMirel, Mirel Engine controls; Nissan"},
    {213, "frmMaps_Large", "KorvaneMirel, Mirel Engine controls; Nissan, Large"},
};

ecu::EcuSettings settingsOf(int type) {
    ecu::EcuSettings settings;
    if (const auto error = ecu::parseKeyList(settings, "drive=off,type=" + std::to_string(type)); !error.empty()) {
        throw std::runtime_error(error);
    }
    return settings;
}

// What a window shows: the texts of its boxes and the rows of its lists, by name.
std::map<std::string, std::string> shownBy(const controls::Window& window) {
    std::map<std::string, std::string> shown;
    for (const auto* control : window.controls()) {
        if (const auto* const box = dynamic_cast<const controls::TextBox*>(control)) {
            shown[box->path()] = box->Text;
        } else if (const auto* const list = dynamic_cast<const controls::ComboBox*>(control)) {
            shown[list->path()] = list->Text();
        } else if (const auto* const check = dynamic_cast<const controls::CheckBox*>(control)) {
            shown[check->path()] = std::to_string(check->Value.get());
        }
    }
    return shown;
}

class FirmwareTypes : public testing::TestWithParam<Firmware> {
protected:
    controls::Window& open() {
        program_.window.btnKartat.press();
        program_.pump.wait(5000);
        return *program_.windows.loaded().back();
    }
    // One step up, by its key.
    static void raise(maps::MapGrid& grid, int cell) {
        grid(cell).window().setFocus(&grid(cell));
        grid(cell).keyDown(controls::kKeyPlus, 0);
    }
    void send(controls::CommandButton& button) {
        button.press();
        program_.pump.wait(1000);
    }
    void sendMisc(maps::MiscPane& pane) {
        pane.txtMisc(maps::kRpmLimit).Text = "6100";
        send(pane.btnSaveMisc);
    }

    // Each changes and sends what its window has, and names a few of the boxes that then differ.
    // The save restarts the box. The read shows the table as it is drawn from then on, in three decimals.
    void sendPwm(maps::PwmPane& pane) {
        raise(pane.pwm, 70);
        raise(pane.pwm, 159);
        send(pane.btnSavePWM);
        send(pane.btnReadPWM);
    }
    std::vector<std::string> edit(maps::MapForm& form) {
        sendPwm(form);
        const int last = form.geometry.cells() - 1;
        for (auto* grid : {&form.fuel, &form.ign}) {
            raise(*grid, 17);
            raise(*grid, last);
        }
        send(form.btnWriteFuel);
        send(form.btnWriteIgn);
        sendMisc(form);
        return {"txtFuel(17)",         "txtIgn(17)", "txtMisc(0)", form.fuel(last).path(),
                form.ign(last).path(), "txtPWM(70)", "txtPWM(159)"};
    }
    std::vector<std::string> edit(maps::FrmMaps_QV_ign& form) {
        raise(form.ign, 17);
        send(form.btnWriteIgn);
        sendMisc(form);
        form.txtIdleAdv(2).Text = "71";
        send(form.idleIgnition.btnSave);
        form.txtLaunchControlLimit.Text = "5100";
        form.Combolaunchmode.choose(4);
        form.txtMaxAccel.Text = "61";
        send(form.launchControl.btnSave);
        form.txtchargetime.keyDown(controls::kKeyPlus, 0);
        form.Combosensortype.choose(0);
        send(form.ignitionSetup.btnSave);
        return {"txtIgn(17)",      "txtMisc(0)",  "txtIdleAdv(2)", "txtLaunchControlLimit",
                "Combolaunchmode", "txtMaxAccel", "txtchargetime", "Combosensortype"};
    }
    std::vector<std::string> edit(maps::FrmMaps_ign_limiter& form) {
        form.txtSigPerRev.Text = "90";
        form.txtrpmlimitHIGH.Text = "6800";
        form.ComboInputFuncLow(6).choose(3);
        form.txtInputvolt(1).keyDown(controls::kKeyPlus, 0);
        form.ComboInputFuncLow(2).choose(2);
        form.comboInputFuncHi(2).choose(6);
        form.txtInputFuncVal(0).Text = "777";
        send(form.btnSendSettings);
        return {"txtSigPerRev",         "txtrpmlimitHIGH",     "ComboInputFuncLow(6)", "txtInputvolt(1)",
                "ComboInputFuncLow(2)", "comboInputFuncHi(2)", "txtInputFuncVal(0)"};
    }
    std::vector<std::string> edit(controls::Window& window) {
        if (auto* const form = dynamic_cast<maps::MapForm*>(&window)) {
            return edit(*form);
        }
        if (auto* const form = dynamic_cast<maps::FrmMaps_QV_ign*>(&window)) {
            return edit(*form);
        }
        return edit(dynamic_cast<maps::FrmMaps_ign_limiter&>(window));
    }
    // The idle pane is the one that no window reads by itself.
    void readIdle(controls::Window& window) {
        if (auto* const form = dynamic_cast<maps::FrmMaps_QV_ign*>(&window)) {
            send(form->idleIgnition.btnRead);
        }
    }

    // Between two live frames: a restart in the middle of one would leave half of it behind, which swallows the answer.
    void restart() {
        program_.window.ComboRefresh.choose(9);  // 225 ms
        program_.pump.wait(225 + 50);
        program_.window.Command2.press();
        program_.pump.wait(1000);
    }

    support::EcuDevice ecu_{settingsOf(GetParam().type)};
    support::VirtualProgram program_{&ecu_};
};

TEST_P(FirmwareTypes, HasItsWindowAndKeepsWhatIsSentOverARestart) {
    auto& main = program_.window;
    program_.connect();
    program_.pump.wait(3000);
    EXPECT_EQ(program_.tables.SWType, GetParam().type);
    EXPECT_THAT(main.Caption.get(), testing::EndsWith(GetParam().caption));

    auto& window = open();
    ASSERT_EQ(window.name(), GetParam().window);
    EXPECT_TRUE(window.Visible);
    readIdle(window);
    const auto before = shownBy(window);
    const auto edited = edit(window);
    const auto after = shownBy(window);
    for (const auto& name : edited) {
        EXPECT_NE(after.at(name), before.at(name)) << name;
    }
    EXPECT_TRUE(window.unload());

    restart();
    EXPECT_THAT(main.Caption.get(), StartsWith("Korvane Tuner v1.3 by Dulmer,   Device started "));
    auto& again = open();
    ASSERT_EQ(again.name(), GetParam().window);
    readIdle(again);
    EXPECT_EQ(shownBy(again), after);
    EXPECT_THAT(program_.log.lines, IsEmpty());
    EXPECT_THAT(program_.dialogs.takeMessages(), IsEmpty());
}

std::string nameOf(const testing::TestParamInfo<Firmware>& info) {
    return "Type" + std::to_string(info.param.type);
}

INSTANTIATE_TEST_SUITE_P(All, FirmwareTypes, testing::ValuesIn(kFirmware), &nameOf);

}  // namespace
}  // namespace korvane::app
