#include <gmock/gmock.h>

#include "core/Numbers.h"
#include "core/tables/ModuleReg.h"
#include "performance/FrmPowerCalc.h"
#include "support/VirtualProgram.h"

namespace korvane::performance {
namespace {

using controls::Picture;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTick = 50;  // ms
constexpr std::string_view kUno =
    "Uno\r\n3.9\r\n3.5\r\n2.1\r\n1.4\r\n1.0\r\n0.8\r\n4\r\n980\r\n57.5\r\n3000\r\n7000\r\n";

class PowerCalcTest : public testing::Test, protected support::VirtualMachine {
protected:
    // Opens the window, with the second gear in use.
    FrmPowerCalc& open() {
        window_.emplace(machine, rpm_);
        window_->show();
        window_->txtUsedGear.Text = "2";
        return *window_;
    }
    void tick(double rpm) {
        rpm_.Caption = core::numberText(rpm).view();
        pump.wait(kTick);
    }
    [[nodiscard]] std::vector<std::string> list() const {
        std::vector<std::string> rows;
        for (int row = 0; row < window_->List1.ListCount(); ++row) {
            rows.push_back(window_->List1.List(row));
        }
        return rows;
    }
    [[nodiscard]] std::vector<std::string> car() {
        auto& window = *window_;
        std::vector<std::string> values{window.txtCarName.Text, window.txtPera.Text};
        for (auto& gear : window.txtVaihde) {
            values.push_back(gear.Text);
        }
        for (auto* box :
             {&window.txtUsedGear, &window.txtPaino, &window.txtrengas, &window.txtStartRPM, &window.txtStopRPM}) {
            values.push_back(box->Text);
        }
        return values;
    }
    [[nodiscard]] std::string remembered() const {
        return core::RegReadString(preferences, core::kSettingsKey, "CarFile").value_or("nothing");
    }
    void remember(const std::filesystem::path& path) {
        core::RegWriteString(preferences, core::kSettingsKey, "CarFile", path.string());
    }
    [[nodiscard]] std::vector<std::string> messages() {
        std::vector<std::string> texts;
        for (const auto& message : dialogs.takeMessages()) {
            texts.push_back(message.text);
        }
        return texts;
    }

    controls::Window main_{machine, "frmSarn2"};
    controls::Label rpm_{main_, "lblValue", 0};
    std::optional<FrmPowerCalc> window_;
};

const std::vector<std::string> kDesign{"Ritmo Abarth", "3.4", "3.583", "2.235", "1.542", "1.154",
                                       "0.967",        "",    "1150",  "56.6",  "2500",  "6500"};

TEST_F(PowerCalcTest, OpensWithTheFormsDefaults) {
    window_.emplace(machine, rpm_);
    window_->show();
    EXPECT_EQ(window_->Caption.get(), "Tuning helper");
    EXPECT_EQ(car(), kDesign);
    EXPECT_EQ(window_->lbltimer.Caption.get(), "0 ms");
    EXPECT_EQ(window_->imgLed.Shown.get(), Picture::Grey);
    EXPECT_EQ(window_->Command1.Caption.get(), "Clear Log");
    EXPECT_EQ(window_->Command2.Caption.get(), "Save");
    EXPECT_EQ(window_->Command3.Caption.get(), "Load");
    EXPECT_EQ(window_->Timer1.Interval.get(), 50);
    EXPECT_TRUE(window_->Timer1.Enabled);
    EXPECT_EQ(window_->Timer2.Interval.get(), 190);
    EXPECT_FALSE(window_->Timer2.Enabled);
    EXPECT_THAT(messages(), IsEmpty());
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_EQ(remembered(), "nothing");
}

// 35.098 and 91.256 km/h in second gear.
TEST_F(PowerCalcTest, ShowsTheRoadSpeedAtEachTick) {
    open();
    tick(2500);
    EXPECT_EQ(window_->txtSpeed.Text.get(), "35");
    tick(6500);
    EXPECT_EQ(window_->txtSpeed.Text.get(), "91.2");
    rpm_.Caption = "0";
    pump.wait(kTick - 1);
    EXPECT_EQ(window_->txtSpeed.Text.get(), "91.2");
    pump.wait(1);
    EXPECT_EQ(window_->txtSpeed.Text.get(), "0");
}

TEST_F(PowerCalcTest, TimesAPullAndArmsAgain) {
    open();
    tick(1000);
    EXPECT_THAT(list(), IsEmpty());
    tick(2500);
    EXPECT_THAT(list(), ElementsAre("Timer Started: 2500rpm  35 Km/h"));
    EXPECT_EQ(window_->List1.ListIndex.get(), 0);
    EXPECT_EQ(window_->imgLed.Shown.get(), Picture::Green);
    EXPECT_EQ(window_->lbltimer.Caption.get(), "0 ms");
    for (int i = 0; i < 40; ++i) {
        tick(4000);
    }
    EXPECT_EQ(window_->lbltimer.Caption.get(), "2000 ms");
    tick(6500);
    EXPECT_EQ(window_->imgLed.Shown.get(), Picture::Grey);
    EXPECT_EQ(window_->lbltimer.Caption.get(), "2050 ms");
    EXPECT_THAT(list(), ElementsAre("Timer Started: 2500rpm  35 Km/h", "Stopped: 6500rpm  91.2 Km/h     2.05 s",
                                    "Speed: 35 - 91.2 km/h (2500 - 6500) Rpm:  Time: 2.05 s"));
    tick(7000);
    tick(2600);
    EXPECT_EQ(list().size(), 3U) << "done, until the speed has fallen";
    tick(2400);
    tick(2600);
    EXPECT_EQ(list().size(), 4U);
    EXPECT_EQ(window_->List1.ListIndex.get(), 3) << "the last line is chosen";
    EXPECT_EQ(window_->lbltimer.Caption.get(), "0 ms");
}

TEST_F(PowerCalcTest, TheLogHasALineForEachPull) {
    open();
    tick(3000);
    tick(7000);
    tick(1000);
    tick(3000);
    tick(7000);
    const std::string summary = list().back();
    EXPECT_EQ(folder.read("RitmoAbarth.par.txt"),
              "2026-01-05 12:00:00    " + summary + "\r\n2026-01-05 12:00:00    " + summary + "\r\n");
}

TEST_F(PowerCalcTest, AStartSpeedAboveTheEnginesNeverStarts) {
    open();
    window_->txtStartRPM.Text = "9000";
    window_->txtStopRPM.Text = "9500";
    for (const double rpm : {900.0, 4000.0, 8999.0}) {
        tick(rpm);
    }
    EXPECT_THAT(list(), IsEmpty());
}

TEST_F(PowerCalcTest, APullThatIsAboveTheStartAlreadyStartsAtTheFirstTick) {
    rpm_.Caption = "4000";
    open();
    pump.wait(kTick);
    EXPECT_THAT(list(), ElementsAre("Timer Started: 4000rpm  56.1 Km/h"));
}

TEST_F(PowerCalcTest, AGearThatThereIsNotIsABoundsFailureAndTheNextTickGoesOn) {
    open();
    for (const char* gear : {"0", "6", "", "-3", "words", "1e300", "99999"}) {
        window_->Command1.press();
        window_->txtUsedGear.Text = gear;
        tick(3000);
        EXPECT_THAT(list(), ElementsAre("timer 9")) << gear;
    }
    window_->txtUsedGear.Text = "5";
    window_->Command1.press();
    tick(3000);
    EXPECT_THAT(list(), ElementsAre("Timer Started: 3000rpm  97.3 Km/h"));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(PowerCalcTest, OtherFailuresOfATickAreNamedByTheirNumberToo) {
    open();
    window_->txtPera.Text = "0";
    tick(3000);
    window_->txtPera.Text = "3.4";
    window_->txtrengas.Text = "1e308";
    tick(3000);
    window_->txtrengas.Text = "1e45";
    tick(3000);
    EXPECT_THAT(list(), ElementsAre("timer 11", "timer 6", "timer 6"));
    EXPECT_EQ(window_->imgLed.Shown.get(), Picture::Grey);
}

TEST_F(PowerCalcTest, ALogThatCantBeWrittenIsToldAndThePullStays) {
    remember(folder / "uno.par");
    folder.write("uno.par", kUno);
    std::filesystem::create_directory(folder / "uno.par.txt");
    open();
    tick(3000);
    tick(7000);
    EXPECT_EQ(list().size(), 3U);
    EXPECT_THAT(messages(), ElementsAre("SaveAcc Path/File access error"));
    tick(1000);
    tick(3000);
    EXPECT_EQ(list().size(), 4U) << "the next pull is timed";
}

TEST_F(PowerCalcTest, ClearLogEmptiesTheList) {
    open();
    tick(3000);
    window_->Command1.press();
    EXPECT_EQ(window_->List1.ListCount(), 0);
    EXPECT_EQ(window_->List1.ListIndex.get(), -1);
}

TEST_F(PowerCalcTest, SavesTheBoxesAndRemembersTheFile) {
    open();
    window_->txtCarName.Text = "Uno";
    dialogs.answerFile((folder / "mine.par").string());
    window_->Command2.press();
    EXPECT_EQ(folder.read("mine.par"),
              "Uno\r\n3.4\r\n3.583\r\n2.235\r\n1.542\r\n1.154\r\n0.967\r\n2\r\n1150\r\n56.6\r\n2500\r\n6500\r\n");
    EXPECT_EQ(remembered(), (folder / "mine.par").string());
    tick(3000);
    tick(7000);
    EXPECT_TRUE(folder.has("mine.par.txt"));
    const auto asked = dialogs.takeFileDialogs();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked.front().kind, platform::FileDialog::Kind::Save);
    EXPECT_EQ(asked.front().title, "Save Car Settings");
    EXPECT_EQ(asked.front().filter, "All Files (*.par)|*.par");
}

TEST_F(PowerCalcTest, ASaveThatFailsIsToldAndNotRemembered) {
    open();
    dialogs.answerFile(folder.nowhere().string());
    window_->Command2.press();
    EXPECT_THAT(messages(), ElementsAre("Error tablesave: Path not found"));
    window_->Command2.press();
    EXPECT_THAT(messages(), IsEmpty()) << "cancelled";
    EXPECT_EQ(remembered(), "nothing");
}

TEST_F(PowerCalcTest, LoadsAFileAndRemembersIt) {
    open();
    dialogs.answerFile(folder.write("uno.par", kUno).string());
    window_->Command3.press();
    EXPECT_THAT(car(),
                ElementsAre("Uno", "3.9", "3.5", "2.1", "1.4", "1.0", "0.8", "4", "980", "57.5", "3000", "7000"));
    EXPECT_EQ(remembered(), (folder / "uno.par").string());
    const auto asked = dialogs.takeFileDialogs();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked.front().kind, platform::FileDialog::Kind::Open);
    EXPECT_EQ(asked.front().title, "Open Car Settings file");
    EXPECT_EQ(asked.front().filter, "All Files (*.par)|*.par");
}

TEST_F(PowerCalcTest, AFileThatCantBeReadIsToldAndNothingChanges) {
    open();
    const auto before = car();
    dialogs.answerFile(folder.write("short.par", "Uno\r\n3.9\r\n").string());
    window_->Command3.press();
    EXPECT_THAT(messages(), ElementsAre("The car file can't be read:\r\n" + (folder / "short.par").string()));
    window_->Command3.press();
    EXPECT_THAT(messages(), IsEmpty()) << "cancelled";
    EXPECT_EQ(car(), before);
    EXPECT_EQ(remembered(), "nothing");
}

TEST_F(PowerCalcTest, OpensWithTheRememberedCar) {
    remember(folder.write("uno.par", kUno));
    folder.write("RitmoAbarth.par", "another" + std::string(kUno));
    window_.emplace(machine, rpm_);
    window_->show();
    EXPECT_EQ(car().front(), "Uno");
    EXPECT_EQ(car().back(), "7000");
}

TEST_F(PowerCalcTest, WithNoneRememberedItTakesTheDefaultName) {
    folder.write("RitmoAbarth.par", kUno);
    window_.emplace(machine, rpm_);
    window_->show();
    EXPECT_EQ(car().front(), "Uno");
    EXPECT_EQ(remembered(), "nothing");
}

TEST_F(PowerCalcTest, ARememberedCarThatIsGoneIsTold) {
    remember(folder / "gone.par");
    window_.emplace(machine, rpm_);
    window_->show();
    EXPECT_THAT(messages(), ElementsAre("The car file can't be read:\r\n" + (folder / "gone.par").string()));
    EXPECT_EQ(car(), kDesign);
}

TEST_F(PowerCalcTest, TheTestFeedRaisesTheSpeedAndWraps) {
    open();
    window_->Timer2.Enabled = true;
    pump.wait(190);
    EXPECT_EQ(rpm_.Caption.get(), "100");
    pump.wait(79 * 190);
    EXPECT_EQ(rpm_.Caption.get(), "8000");
    pump.wait(190);
    EXPECT_EQ(rpm_.Caption.get(), "0");
    EXPECT_EQ(list().size(), 3U) << "a pull was timed on the way";
}

TEST_F(PowerCalcTest, HasTheControlsThatScriptsKnowAndNoOthers) {
    open();
    std::vector<std::string> names;
    for (const auto* control : window_->controls()) {
        names.push_back(control->path());
    }
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("txtCarName", "txtPera", "txtVaihde(0)", "txtVaihde(1)", "txtVaihde(2)",
                                              "txtVaihde(3)", "txtVaihde(4)", "txtUsedGear", "txtPaino", "txtrengas",
                                              "txtStartRPM", "txtStopRPM", "txtSpeed", "lbltimer", "imgLed", "List1",
                                              "Command1", "Command2", "Command3", "Timer1", "Timer2"));
}

}  // namespace
}  // namespace korvane::performance
