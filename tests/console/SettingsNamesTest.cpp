// The settings window's members and procedure by their names.
#include <gtest/gtest.h>

#include "app/Program.h"
#include "console/Registry.h"
#include "console/TestWindow.h"
#include "support/TempFolder.h"

namespace korvane::console {
namespace {

class SettingsNames : public testing::Test, public ConsoleMachine {
protected:
    SettingsNames() {
        machine.folder = folder.path();
        program.emplace(machine);
        registerSharedTables(names, program->tables());
        registerSettings(names, program->frmMisc());
        console.emplace(ConsoleContext{machine, dialogs, tap, names, nullptr, nullptr, errors,
                                       [this] { program->quit(); }, [this] { return program->ended(); }});
        program->start();
        program->frmMisc().load();
        program->frmMisc().TimerInitialGetData.Enabled = false;
    }

    std::string run(std::string_view line) { return console->execute(line).value_or("(none)"); }

    support::TempFolder folder;
    std::optional<app::Program> program;
    std::optional<Console> console;
};

TEST_F(SettingsNames, AWindowThatIsNotOpenIsCalledSo) {
    static_cast<void>(program->frmMisc().unload());
    EXPECT_EQ(run("get frmMisc.Caption"),
              "error no open window is named frmMisc (without one there is LambdaType, TimeOutCount)");
    EXPECT_EQ(run("get frmMisc.TimeOutCount"), "ok 0");
}

TEST_F(SettingsNames, UpdateReadEEFillsTheFieldOfItsAddress) {
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 17 540"), "ok");
    EXPECT_EQ(run("get frmMisc.txtBoostTav(0).Text"), "ok \"17\"");
    EXPECT_EQ(run("get EEImage(540)"), "ok 17");
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 300 540 true"), "ok");
    EXPECT_EQ(run("get frmMisc.txtBoostTav(0).Text"), "ok \"300\"");
    EXPECT_EQ(run("get EEImage(540)"), "ok 17");
    EXPECT_TRUE(run("call frmMisc.UpdateReadEE 17").starts_with("error"));
}

TEST_F(SettingsNames, ItsMembersHaveTheirNames) {
    program->frmMisc().TimeOutCount = 3;
    EXPECT_EQ(run("get frmMisc.TimeOutCount"), "ok 3");
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 1 518"), "ok");
    EXPECT_EQ(run("get frmMisc.LambdaType"), "ok 1");
    EXPECT_EQ(run("get frmMisc.optLambdaType(0).Value"), "ok true");
}

}  // namespace
}  // namespace korvane::console
