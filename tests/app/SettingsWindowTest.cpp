// The settings window in the program: when it is made, read, shown and closed.
#include <gmock/gmock.h>

#include "program/Program.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using platform::kMicrosPerMilli;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// From the load: 100 ms to the read, 30 and 150 around the block, and 133 pauses behind 130 reads.
constexpr int kReadEnds = 100 + 30 + 150 + 133 * 150;

class SettingsWindow : public testing::Test, protected support::VirtualMachine {
protected:
    SettingsWindow() {
        folder.write("Settings_par.ini", "");
        program_.start();
        static_cast<void>(dialogs.takeMessages());
    }

    program::Program program_{machine};
    live::FrmSarn2& main_ = program_.frmSarn2();
    settings::FrmMisc& frmMisc_ = program_.frmMisc();
};

TEST_F(SettingsWindow, ComesWithTheFirstConnectAndStaysOutOfSight) {
    EXPECT_THAT(windows.loaded(), Not(Contains(&frmMisc_)));
    main_.btnConnect.press();
    EXPECT_THAT(windows.loaded(), Contains(&frmMisc_));
    EXPECT_FALSE(frmMisc_.Visible);
    EXPECT_EQ(pump.now(), 0);
}

TEST_F(SettingsWindow, DoesNotComeWithAConnectThatFails) {
    main_.baudSettings[static_cast<std::size_t>(main_.ComboBaud.ListIndex)] = "rubbish";
    main_.btnConnect.press();
    EXPECT_THAT(dialogs.takeMessages(), SizeIs(1));
    EXPECT_THAT(windows.loaded(), Not(Contains(&frmMisc_)));
}

TEST_F(SettingsWindow, ReadsAllSettingsBesideTheStateLine) {
    main_.btnConnect.press();
    main_.TimerGetSettings.Enabled = false;
    std::vector<std::string> states;
    bool barBefore = true;
    at(99, [&] { barBefore = main_.prgSettings.Visible; });
    at(5000, [&] {
        states.push_back(main_.lblState.Caption);
        EXPECT_TRUE(main_.prgSettings.Visible);
        EXPECT_EQ(main_.prgSettings.Max.get(), 130);
        EXPECT_GT(main_.prgSettings.Value.get(), 20);
        EXPECT_LT(main_.prgSettings.Value.get(), 40);
        EXPECT_EQ(main_.TimerRequestData.Interval.get(), 500);
        EXPECT_FALSE(main_.TimerRequestData.Enabled);
    });
    pump.wait(100);
    EXPECT_EQ(pump.milliseconds(), kReadEnds);
    EXPECT_FALSE(barBefore);
    EXPECT_THAT(states, ElementsAre("COM1; 57600 Connected"));
    EXPECT_EQ(main_.Caption.get(), "Korvane Tuner v1.3 by Dulmer");
    EXPECT_FALSE(main_.prgSettings.Visible);
    EXPECT_TRUE(main_.TimerRequestData.Enabled);
    EXPECT_EQ(main_.TimerRequestData.Interval.get(), 10);
    EXPECT_EQ(frmMisc_.Caption.get(), "Receiving data from target device!:  Received 100%");
}

TEST_F(SettingsWindow, LetsLiveDataGoOnEveryHalfSecondOnceTheBlockHasCome) {
    main_.btnConnect.press();
    main_.TimerGetSettings.Enabled = false;
    // The block's reply: its handler ends 600 ms later and starts the poll.
    at(300, [&] { line.inject(support::frame('e', support::Bytes(19, 1))); });
    std::vector<std::int64_t> polls;
    main_.TimerRequestData.Tick = [&] { polls.push_back(pump.milliseconds()); };
    at(2500, [&] { main_.TimerRequestData.Tick = nullptr; });
    pump.wait(90);
    polls.clear();
    pump.wait(10);
    EXPECT_THAT(polls, ElementsAre(300 + 600 + 500, 300 + 600 + 1000, 300 + 600 + 1500));
}

TEST_F(SettingsWindow, IsReadOnceHoweverOftenThePortIsOpened) {
    main_.btnConnect.press();
    pump.wait(100);
    main_.btnConnect.press();
    main_.btnConnect.press();
    main_.TimerGetSettings.Enabled = false;
    main_.TimerRequestData.Enabled = false;
    recorder.arrivals.clear();
    pump.wait(60000);
    EXPECT_THAT(recorder.arrivals, IsEmpty());
}

TEST_F(SettingsWindow, IsShownByItsButtonAndHiddenByItsCloseBox) {
    main_.btnAsetukset.press();
    EXPECT_TRUE(frmMisc_.Visible) << "without a connection too";
    frmMisc_.TimerInitialGetData.Enabled = false;
    EXPECT_FALSE(frmMisc_.unload());
    EXPECT_FALSE(frmMisc_.Visible);
    EXPECT_TRUE(frmMisc_.isLoaded());
    main_.btnAsetukset.press();
    EXPECT_TRUE(frmMisc_.Visible);
    EXPECT_FALSE(frmMisc_.TimerInitialGetData.Enabled) << "shown again is not loaded again";
}

TEST_F(SettingsWindow, TakesRepliesWithoutBeingSeen) {
    main_.btnConnect.press();
    line.inject(support::frame('T', {0, 89, 1}));
    line.inject(support::frame('T', {4, 89, 1}));
    pump.pump();
    EXPECT_EQ(frmMisc_.txtInjMode.Text.get(), "4");
}

TEST_F(SettingsWindow, GoesWithTheMainWindow) {
    main_.btnAsetukset.press();
    program_.quit();
    EXPECT_FALSE(frmMisc_.isLoaded());
    EXPECT_TRUE(program_.ended());
    EXPECT_THAT(windows.loaded(), IsEmpty());
}

TEST_F(SettingsWindow, ARunningReadHoldsTheEndUpForNoMoreThanItsPause) {
    main_.btnConnect.press();
    at(2000, [&] { static_cast<void>(main_.unload()); });
    pump.wait(100);
    EXPECT_TRUE(program_.ended());
    EXPECT_GE(pump.milliseconds(), 3000) << "the orderly close takes a second";
    EXPECT_LE(pump.milliseconds(), 3000 + 150);
}

TEST_F(SettingsWindow, ThePortClosedInTheMiddleChangesNothingButWhatIsSent) {
    main_.btnConnect.press();
    at(5000, [&] { main_.btnConnect.press(); });
    pump.wait(100);
    EXPECT_EQ(pump.milliseconds(), kReadEnds);
    EXPECT_EQ(frmMisc_.Caption.get(), "Receiving data from target device!:  Received 100%");
    EXPECT_TRUE(main_.TimerRequestData.Enabled);
    EXPECT_EQ(main_.TimerRequestData.Interval.get(), 10);
    EXPECT_LE(recorder.arrivals.back().at, 5001 * kMicrosPerMilli);
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

// The map's scale follows the injection mode that has been read.
TEST_F(SettingsWindow, TheMapWindowTakesTheInjectionModeOfTheRead) {
    main_.btnConnect.press();
    frmMisc_.TimerInitialGetData.Enabled = false;
    line.inject(support::frame('T', {2, 89, 1}));
    line.inject(support::frame('T', {3, 2, 4}));
    pump.pump();
    main_.btnKartat.press();
    auto* const maps = dynamic_cast<maps::MapForm*>(program_.windows().curMapWindow);
    ASSERT_NE(maps, nullptr);
    EXPECT_EQ(maps->InjTimeScale, static_cast<float>(program_.tables().TickC));
    line.inject(support::frame('T', {4, 89, 1}));
    pump.pump();
    maps->populateFuelOUT();
    EXPECT_EQ(maps->InjTimeScale, static_cast<float>(program_.tables().TickD));
}

TEST_F(SettingsWindow, AChannelIsRenamedAndRescaledAtOnce) {
    main_.btnConnect.press();
    frmMisc_.TimerInitialGetData.Enabled = false;
    frmMisc_.Combo1.choose(12);
    frmMisc_.txtParName.Text = "Oil bar";
    frmMisc_.txtParScale.Text = "2";
    frmMisc_.txtParOffset.Text = "1";
    frmMisc_.btnSaveParam.press();
    EXPECT_EQ(main_.lblValueMuxName(0).Caption.get(), "Oil bar");
    EXPECT_NE(frmMisc_.Combo1.List(12), "Oil bar") << "until the next start";
    support::Bytes live(19, 0);
    live[17] = 0;
    live[18] = 20;
    line.inject(support::frame('R', live));
    pump.pump();
    EXPECT_EQ(main_.lblValueMux(0).Caption.get(), "42");
}

TEST_F(SettingsWindow, TheImagesButtonsAnswer) {
    main_.btnUploadEEPROM.press();
    EXPECT_EQ(pump.now(), 0) << "no file chosen";
    main_.btnBackup.press();
    const auto messages = dialogs.takeMessages();
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].text, " EEPROM read error. Save not possible ");
}

}  // namespace
}  // namespace korvane::app
