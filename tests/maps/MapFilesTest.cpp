#include <limits>
#include <utility>

#include "TransferBench.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// Raises an error once after Inj8ms_mode was set.
double scaleOrFailure(core::SharedTables& tables) {
    if (tables.Inj8ms_mode != 0) {
        --tables.Inj8ms_mode;
        throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
    }
    return 0.5;
}

std::string table(int rows, int columns, const std::string& number) {
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            text += ' ' + number + ' ';
        }
        text += "\r\n";
    }
    return text;
}

class FilesBench : public TransferBench {
protected:
    FilesBench(MapGeometry shape, Halves halves) : TransferBench(shape, halves, &scaleOrFailure) {
        for (auto* image : {&tables_.FuelMapIn, &tables_.IgnMapIn, &tables_.PwmMapIn}) {
            image->fill(1);
        }
        for (auto* image : {&tables_.FuelMapOut, &tables_.IgnMapOut, &tables_.PwmMapOut}) {
            image->fill(2);
        }
        tables_.TickD = 0.0123456;
    }

    void press(controls::CommandButton& button, const std::filesystem::path& chosen) {
        machine_.dialogs.answerFile(chosen.string());
        button.press();
    }

    [[nodiscard]] std::string message() {
        const auto messages = machine_.dialogs.takeMessages();
        EXPECT_LE(messages.size(), 1U);
        return messages.empty() ? "" : messages.front().text;
    }

    void expectDialog(controls::CommandButton& button, platform::FileDialog::Kind kind, const std::string& title,
                      const std::string& filter, bool confirmOverwrite) {
        button.press();
        const auto shown = machine_.dialogs.takeFileDialogs();
        ASSERT_EQ(shown.size(), 1U);
        EXPECT_EQ(shown[0].kind, kind);
        EXPECT_EQ(shown[0].title, title);
        EXPECT_EQ(shown[0].filter, filter);
        EXPECT_EQ(shown[0].confirmOverwrite, confirmOverwrite);
        EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
    }
};

class TuneFile : public FilesBench {
protected:
    TuneFile() : FilesBench(kOrdinaryMaps, Halves::One) {}

    static std::string maps() {
        return "Injection\r\n" + table(10, 16, "10") + "Ignition\r\n" + table(10, 16, "20") +
               "Misc\r\n 52  33  40  35  0  0  9  128  5 \r\n";
    }
    static std::string pwm() { return "PWM\r\n" + table(10, 16, "30") + "PARAMS\r\n"; }

    void load(const std::string& content) { press(window_.btnLoad, machine_.folder.write("tune.txt", content)); }

    void expectNothingAccepted() {
        EXPECT_THAT(tables_.FuelMapOut, Each(2));
        EXPECT_THAT(tables_.IgnMapOut, Each(2));
        EXPECT_THAT(tables_.PwmMapOut, Each(2));
        EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps ");
        EXPECT_EQ(window_.txtMisc(0).Text.get(), "");
    }
};

class LargeTuneFile : public FilesBench {
protected:
    LargeTuneFile() : FilesBench(kLargeMaps, Halves::Two) {}
};

TEST_F(TuneFile, IsChosenInADialog) {
    expectDialog(window_.btnSave, platform::FileDialog::Kind::Save, "Save Settings", "All Files (*.txt)|*.txt", true);
    expectDialog(window_.btnLoad, platform::FileDialog::Kind::Open, "Open Settings file", "All Files (*.txt)|*.txt",
                 true);
    EXPECT_EQ(tables_.SaveFileName, "");
    EXPECT_EQ(tables_.LoadFileName, "");
    expectNothingAccepted();
}

TEST_F(TuneFile, HoldsTheEditedMapsOfTheWindowsSize) {
    press(window_.btnSave, machine_.folder / "tune.txt");
    EXPECT_THAT(machine_.folder.read("tune.txt"), StartsWith("Injection\r\n" + table(10, 16, "2") + "Ignition\r\n"));
    EXPECT_EQ(tables_.SaveFileName, (machine_.folder / "tune.txt").string());
    EXPECT_EQ(message(), "");
}

TEST_F(LargeTuneFile, HoldsTheEditedMapsOfTheWindowsSize) {
    press(window_.btnSave, machine_.folder / "tune.txt");
    EXPECT_THAT(machine_.folder.read("tune.txt"), StartsWith("Injection_320\r\n" + table(16, 20, "2")));
}

// A loss of power leaves the older tune or the new one.
TEST_F(TuneFile, IsBroughtToTheDiskBeforeItTakesThePlaceOfAnOlderOne) {
    machine_.folder.write("tune.txt", "old");
    std::vector<std::string> flushed;
    machine_.machine.toDisk = [&](const std::filesystem::path&) {
        flushed.push_back(machine_.folder.read("tune.txt").substr(0, 3));
        return std::error_code();
    };
    press(window_.btnSave, machine_.folder / "tune.txt");
    EXPECT_THAT(flushed, testing::ElementsAre("old", "Inj"));
    EXPECT_EQ(message(), "");
}

TEST_F(TuneFile, ThatCanNotBeWrittenIsReported) {
    press(window_.btnSave, machine_.folder / "missing/tune.txt");
    EXPECT_EQ(message(), "Error save: Path not found");
}

TEST_F(TuneFile, ThatWasLoadedCountsAsFreshlyRead) {
    openPort();
    load(maps() + pwm());
    EXPECT_EQ(message(), "");
    EXPECT_EQ(tables_.LoadFileName, (machine_.folder / "tune.txt").string());
    EXPECT_EQ(tables_.FuelMapIn[159], 10);
    EXPECT_EQ(tables_.FuelMapOut, tables_.FuelMapIn);
    EXPECT_EQ(tables_.IgnMapIn[159], 20);
    EXPECT_EQ(tables_.IgnMapOut, tables_.IgnMapIn);
    EXPECT_EQ(tables_.PwmMapIn[159], 30);
    EXPECT_EQ(tables_.PwmMapOut, tables_.PwmMapIn);
    EXPECT_EQ(window_.ign(17).Text.get(), "4");  // 20 * 0.2 degrees
    EXPECT_EQ(window_.ign(17).ForeColor.get(), controls::kBlack);
    EXPECT_NE(window_.fuel(17).Text.get(), "");
    EXPECT_NE(window_.fuel(17).ForeColor.get(), controls::kBlue);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");
    EXPECT_EQ(window_.Caption.get(), "Misc data received.. ");
    EXPECT_THAT(sent(), IsEmpty());
}

// 30 * 0.0123456, as it comes.
TEST_F(TuneFile, ShowsItsPwmTableInFullPrecision) {
    load(maps() + pwm());
    EXPECT_EQ(window_.pwm(0).Text.get(), "0.370368");
    EXPECT_EQ(window_.pwm(159).Text.get(), "0.370368");
}

TEST_F(TuneFile, OfAnOlderProgramKeepsThePwmTable) {
    load(maps());
    EXPECT_EQ(message(), "Error loading data:\r\n Opened old type setting file, Inj & Ign tables loaded");
    EXPECT_EQ(tables_.FuelMapOut[0], 10);
    EXPECT_EQ(tables_.IgnMapOut[0], 20);
    EXPECT_THAT(tables_.PwmMapOut, Each(2));
    EXPECT_EQ(window_.pwm(0).Text.get(), "");
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");
    EXPECT_EQ(window_.ign(0).Text.get(), "4");
}

TEST_F(TuneFile, WithAnotherSectionForThePwmTableKeepsIt) {
    load(maps() + "PARAMS\r\n");
    EXPECT_EQ(message(), "Error loading data:\r\n No PWM table, Inj & Ign tables loaded");
    EXPECT_EQ(tables_.FuelMapOut[0], 10);
    EXPECT_THAT(tables_.PwmMapOut, Each(2));
}

TEST_F(TuneFile, ThatIsEmptyOrAnotherFileIsRefused) {
    load("");
    EXPECT_EQ(message(), "Error loading data:\r\nEmpty file");
    expectNothingAccepted();
    load("[Par0]\r\nRPM\r\n");
    EXPECT_EQ(message(), "Error loading data:\r\nNot valid settings file");
    expectNothingAccepted();
}

TEST_F(TuneFile, WithADamagedTableIsRefused) {
    load("Injection\r\n" + table(10, 16, "10") + "Ignition\r\n" + table(3, 16, "20") + " 256 \r\n");
    EXPECT_EQ(message(), "Error loading data:\r\n12");
    expectNothingAccepted();
    EXPECT_THAT(window_.fuel(0).Text.get(), IsEmpty());
}

TEST_F(TuneFile, WithADamagedPwmTableIsRefused) {
    load(maps() + "PWM\r\n" + table(9, 16, "30"));
    EXPECT_EQ(message(), "Error loading data:\r\n14");
    expectNothingAccepted();
}

TEST_F(TuneFile, ThatDoesNotExistIsReported) {
    press(window_.btnLoad, machine_.folder / "tune.txt");
    EXPECT_EQ(message(), "Error loadfile: File not found");
    expectNothingAccepted();
}

TEST_F(TuneFile, WhoseFuelMapCanNotBeShownIsTakenAllTheSame) {
    tables_.Inj8ms_mode = 1;
    load(maps() + pwm());
    EXPECT_EQ(message(), "Virhe fuel kartassa");
    EXPECT_EQ(tables_.FuelMapOut[0], 10);
    EXPECT_EQ(tables_.IgnMapOut[0], 20);
    EXPECT_NE(window_.fuel(0).Text.get(), "");
}

TEST_F(TuneFile, WhoseIgnitionMapCanNotBeShownIsTakenAllTheSame) {
    auto& cell = window_.ign(0);
    bool failed = false;
    const support::PropertyWatch view(cell, &cell.Text, [&] {
        if (!std::exchange(failed, true)) {
            throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
        }
    });
    load(maps() + pwm());
    EXPECT_EQ(message(), "Virhe sytytys kartassa");
    EXPECT_EQ(tables_.IgnMapOut[0], 20);
    EXPECT_EQ(window_.ign(159).Text.get(), "4");
}

TEST_F(TuneFile, WhoseEditedMapCanNotBeShownIsReportedWithTheReason) {
    tables_.Inj8ms_mode = 2;
    load(maps() + pwm());
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].text, "Virhe fuel kartassa");
    EXPECT_EQ(messages[1].text, "Error loadfile: Subscript out of range");
}

TEST_F(LargeTuneFile, IsReadBackByteForByte) {
    number(tables_.FuelMapOut);
    number(tables_.IgnMapOut);
    tables_.PwmMapOut[159] = 7;
    tables_.MiscBlock = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const auto fuel = tables_.FuelMapOut;
    const auto ign = tables_.IgnMapOut;
    const auto misc = tables_.MiscBlock;
    press(window_.btnSave, machine_.folder / "tune.txt");
    tables_.FuelMapOut.fill(0);
    tables_.IgnMapOut.fill(0);
    tables_.PwmMapOut.fill(0);
    tables_.MiscBlock.fill(0);
    press(window_.btnLoad, machine_.folder / "tune.txt");
    EXPECT_EQ(tables_.FuelMapOut, fuel);
    EXPECT_EQ(tables_.IgnMapOut, ign);
    EXPECT_EQ(tables_.PwmMapOut[159], 7);
    EXPECT_EQ(tables_.MiscBlock, misc);
    press(window_.btnSave, machine_.folder / "again.txt");
    EXPECT_EQ(machine_.folder.read("again.txt"), machine_.folder.read("tune.txt"));
}

// The map of an ordinary window fills the first 160 cells; the others are as last received.
TEST_F(LargeTuneFile, OfASmallMapLeavesNoCellEdited) {
    press(window_.btnLoad,
          machine_.folder.write("tune.txt", "Injection\r\n" + table(10, 16, "10") + "Ignition\r\n" +
                                                table(10, 16, "20") + "Misc\r\n 0  0  0  0  0  0  0  0  0 \r\n"));
    EXPECT_EQ(tables_.FuelMapOut[159], 10);
    EXPECT_EQ(tables_.FuelMapOut[160], 1);
    EXPECT_EQ(tables_.FuelMapOut, tables_.FuelMapIn);
}

class SetpointFile : public TuneFile {
protected:
    SetpointFile() { analyser_.setpoints.fill(12.5F); }

    void load(const std::string& content) {
        press(window_.btnloadLambdaSetpoint, machine_.folder.write("targets.lam", content));
    }

    static std::string lines(int count, const std::string& line) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += line + "\r\n";
        }
        return text;
    }
};

TEST_F(SetpointFile, IsChosenInADialogThatAsksNothingBack) {
    expectDialog(window_.btnSaveLambdaSetpoint, platform::FileDialog::Kind::Save, "Save Settings",
                 "All Files (*.lam)|*.lam", false);
    expectDialog(window_.btnloadLambdaSetpoint, platform::FileDialog::Kind::Open, "Load Settings",
                 "All Files (*.lam)|*.lam", true);
    EXPECT_THAT(analyser_.setpoints, Each(12.5F));
}

TEST_F(SetpointFile, HasALineForEachOf160Cells) {
    analyser_.setpoints[0] = 13.1F;
    analyser_.setpoints[158] = -1.0F;
    analyser_.setpoints[159] = 0.85F;
    analyser_.setpoints[160] = 99.0F;
    press(window_.btnSaveLambdaSetpoint, machine_.folder.write("targets.lam", "something longer than the new content"));
    EXPECT_EQ(machine_.folder.read("targets.lam"), " 13.1 \r\n" + lines(157, " 12.5 ") + "-1 \r\n 0.85 \r\n");
}

TEST_F(SetpointFile, ThatCanNotBeWrittenIsReported) {
    press(window_.btnSaveLambdaSetpoint, machine_.folder / "missing/targets.lam");
    EXPECT_EQ(message(), "Error tablesave: Path not found");
}

TEST_F(SetpointFile, GivesEachCellItsLine) {
    load(" 13.1 \r\n" + lines(158, " 12 ") + " 14.7 \r\n");
    EXPECT_EQ(analyser_.setpoints[0], 13.1F);
    EXPECT_EQ(analyser_.setpoints[1], 12.0F);
    EXPECT_EQ(analyser_.setpoints[159], 14.7F);
    EXPECT_EQ(analyser_.setpoints[160], 12.5F);
}

TEST_F(SetpointFile, ThatIsTooShortSetsTheRestToZero) {
    load(lines(2, " 13 "));
    EXPECT_EQ(analyser_.setpoints[1], 13.0F);
    for (std::size_t cell = 2; cell < 160; ++cell) {
        ASSERT_EQ(analyser_.setpoints[cell], 0.0F) << cell;
    }
    load("");
    EXPECT_EQ(analyser_.setpoints[0], 0.0F);
}

TEST_F(SetpointFile, ThatIsTooLongIsReadAsFarAsItGoes) {
    load(lines(180, " 13 ") + lines(1, " 14 "));
    EXPECT_EQ(analyser_.setpoints[159], 13.0F);
    EXPECT_EQ(message(), "");
}

TEST_F(SetpointFile, IsTakenAsItStands) {
    load("2\r\n-40\r\nlambda\r\n13,7\r\n1E300\r\n");
    EXPECT_EQ(analyser_.setpoints[0], 2.0F);
    EXPECT_EQ(analyser_.setpoints[1], -40.0F);
    EXPECT_EQ(analyser_.setpoints[2], 0.0F);
    EXPECT_EQ(analyser_.setpoints[3], 13.0F);
    EXPECT_EQ(analyser_.setpoints[4], std::numeric_limits<float>::max());
}

TEST_F(SetpointFile, ThatCanNotBeReadIsReportedAndLeavesTheTargetsAlone) {
    for (const std::filesystem::path& path :
         {machine_.folder / "targets.lam", machine_.folder.path(), std::filesystem::path("/dev/zero")}) {
        press(window_.btnloadLambdaSetpoint, path);
        EXPECT_THAT(analyser_.setpoints, Each(12.5F));
        EXPECT_EQ(message(), "The lambda file can't be read:\r\n" + path.string());
    }
}

}  // namespace
}  // namespace korvane::maps
