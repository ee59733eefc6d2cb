// The window of the ignition-only box.
#include "BoxBench.h"
#include "maps/FrmMaps_QV_ign.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr controls::Color kRed = 255;
constexpr controls::Color kWhite = 0xFFFFFF;

class IgnitionBox : public BoxBench {
protected:
    IgnitionBox() {
        tables_.Features = 0xFFFF;
        windows_.curMapWindow = windows_.frmMaps_QV_ign = &window_;
    }
    // The window opens with the port closed and reads nothing.
    void openAlone() {
        window_.show();
        openPort();
    }
    void useType(int swType) { core::InitParams(tables_, swType); }
    void receiveIgnition(std::uint8_t value) { deliver('a', Bytes(160, value)); }

    FrmMaps_QV_ign window_{machine_, context_};
};

TEST_F(IgnitionBox, HasTheNamesOfItsPanesAndNoneOfAFuelMap) {
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps QV");
    EXPECT_THAT(namesOf(window_),
                UnorderedElementsAre(
                    "prgTransfer", "chkOnlineChanges", "Timer1", "btnReadMisc", "btnSaveMisc", "FrameMisc", "lblMisc",
                    "txtMisc", "CheckMisc", "FrameINJMaxOpen", "optINJMaxOpen", "TimeOutTimer", "FrameIgn", "txtIgn",
                    "lblRpmI", "lblMapI", "btnReadIgn", "btnWriteIgn", "btnSave", "btnLoad", "btnShow3D", "btnHelp",
                    "txtLaunchControlLimit", "Combolaunchmode", "txtLaunchFixedDelay", "ComboAccellimiter",
                    "txtMaxAccel", "Combosensortype", "chkFocusOnIGN", "lblIdleAdv", "txtIdleAdv", "txtchargetime",
                    "FrameIdleAdv", "btnReadIdleAdv", "btnSaveIdleAdv", "FrameLaunch", "btnReadLaunch", "btnSaveLaunch",
                    "FrameIgn2", "btnreadign_2", "btnsaveign_2"));
}

TEST_F(IgnitionBox, ListsHaveTheirRows) {
    expectRows(window_);
    EXPECT_EQ(window_.lblIdleAdv.Caption.get(), "RPM    500           600           700           800            900");
    EXPECT_EQ(window_.idleIgnition.frame.Caption.get(), "Idle Ignition");
    EXPECT_EQ(window_.launchControl.frame.Caption.get(), "Launch control");
    EXPECT_EQ(window_.ignitionSetup.frame.Caption.get(), "Ignition");
}

TEST_F(IgnitionBox, TheBitsThatHaveNoNameElsewhereHaveOneHere) {
    Lines captions;
    for (const auto& box : window_.CheckMisc) {
        captions.push_back(box.Caption);
    }
    EXPECT_THAT(captions, ElementsAre("Enable PWM", "Enable Choke", "Enable StartHelp", "Enable Injection",
                                      "Enable Accel pump", "Enable Ignition", "brute RPM suodin", "Enable Paukku",
                                      "Enable Voltage", "Enable Lambda", "Enable motor brake", "Enable Launch/ALS",
                                      "Enable LCD", "Reset to defaults", "Enable SHift light", "Enable RPM limit"));
}

// Misc block and map without a wait, then two parameters of the ignition and six of the launch, 150 ms behind each.
TEST_F(IgnitionBox, ReadsAsSoonAsItIsOpen) {
    openPort();
    window_.show();
    EXPECT_THAT(line_.sent(), ElementsAre("0 109", "0 97", "0 R 13", "150 R 346", "300 R 511", "450 R 512", "600 R 971",
                                          "750 R 972", "900 R 973", "1050 R 974"));
    EXPECT_EQ(now(), 1200);
    EXPECT_TRUE(window_.isFormLoaded);
}

TEST_F(IgnitionBox, CanBeSeenWhileItReads) {
    openPort();
    bool seen = false;
    virtual_.at(10, [&] { seen = window_.Visible; });
    window_.show();
    EXPECT_TRUE(seen);
}

TEST_F(IgnitionBox, ReadsNothingWithThePortClosedAndNothingAgainWhenItIsShownAgain) {
    window_.show();
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps QV");
    openPort();
    window_.show();
    pump_.wait(1000);
    EXPECT_THAT(line_.sent(), IsEmpty());
}

TEST_F(IgnitionBox, Type30KeepsItsLaunchLimitInOtherCells) {
    useType(30);
    openAlone();
    window_.launchControl.btnRead.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 R 500", "150 R 501", "300 R 971", "450 R 972", "600 R 973", "750 R 974"));
    deliverByte(500, 0x88);
    deliverByte(501, 0x13);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5000");
    deliverByte(511, 1);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5000");
}

TEST_F(IgnitionBox, RepliesOfAByteFillTheGroups) {
    openAlone();
    for (int i = 0; i < 5; ++i) {
        deliverByte(392 + i, static_cast<std::uint8_t>(60 + i));
        EXPECT_EQ(window_.txtIdleAdv(i).Text.get(), std::to_string(60 + i));
    }
    deliverByte(971, 5);
    deliverByte(972, 30);
    deliverByte(973, 3);
    deliverByte(974, 99);
    deliverByte(346, 1);
    EXPECT_EQ(window_.Combolaunchmode.Text(), "Accel limit (all time)");
    EXPECT_EQ(window_.txtLaunchFixedDelay.Text.get(), "30");
    EXPECT_EQ(window_.ComboAccellimiter.Text(), "waste spark 1/3");
    EXPECT_EQ(window_.txtMaxAccel.Text.get(), "99");
    EXPECT_EQ(window_.Combosensortype.Text(), "Rising edge, Hamlin");
}

// 249 * 0.02 = 4.98.
TEST_F(IgnitionBox, TheChargeTimeStepsItsCountUpTo250AndDownTo0) {
    openAlone();
    auto& box = window_.txtchargetime;
    deliverByte(13, 249);
    EXPECT_EQ(box.Text.get(), "4.98");
    EXPECT_EQ(box.ToolTipText.get(), "249");
    for (int i = 0; i < 3; ++i) {
        box.keyDown(controls::kKeyPlus, 0);
    }
    EXPECT_EQ(box.Text.get(), "5");
    EXPECT_EQ(box.ToolTipText.get(), "250");
    deliverByte(13, 1);
    for (int i = 0; i < 3; ++i) {
        box.keyDown(controls::kKeyMinus, 0);
    }
    EXPECT_EQ(box.ToolTipText.get(), "0");
    EXPECT_TRUE(box.Locked);
}

TEST_F(IgnitionBox, TheIdlePaneWaits50MsBehindEachWrite) {
    openAlone();
    for (int i = 0; i < 5; ++i) {
        window_.txtIdleAdv(i).Text = std::to_string(10 + i);
    }
    window_.idleIgnition.btnSave.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 392=10", "50 393=11", "100 394=12", "150 395=13", "200 396=14"));
    EXPECT_EQ(now(), 250);
}

TEST_F(IgnitionBox, TheIdlePaneIsReadByItsButtonAlone) {
    openAlone();
    window_.idleIgnition.btnRead.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 R 392", "150 R 393", "300 R 394", "450 R 395", "600 R 396"));
    EXPECT_EQ(now(), 750);
}

// In the general layout the low byte has the mark of a word: its write clears the high byte, 50 ms later.
TEST_F(IgnitionBox, TheLaunchPaneWaits50MsBehindEachWrite) {
    openAlone();
    window_.txtLaunchControlLimit.Text = "5000";  // 19 * 256 + 136
    window_.Combolaunchmode.ListIndex = 2;
    window_.txtLaunchFixedDelay.Text = "12";
    window_.ComboAccellimiter.ListIndex = 4;
    window_.txtMaxAccel.Text = "80";
    window_.launchControl.btnSave.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 511=136", "50 512=0", "100 512=19", "150 971=2", "200 972=12", "250 973=4",
                                          "300 974=80"));
    EXPECT_EQ(now(), 350);
}

TEST_F(IgnitionBox, Type30StoresItsLaunchLimitAsTwoSingleBytes) {
    useType(30);
    openAlone();
    window_.txtLaunchControlLimit.Text = "5000";
    window_.launchControl.btnSave.press();
    const auto sent = line_.sent();
    ASSERT_THAT(sent, SizeIs(6));
    EXPECT_EQ(sent.at(0), "0 500=136");
    EXPECT_EQ(sent.at(1), "50 501=19");
    EXPECT_EQ(sent.at(2), "100 971=0");
}

TEST_F(IgnitionBox, TheSensorIsStoredAs1ForTheSecondEntryAlone) {
    openAlone();
    deliverByte(13, 175);
    window_.Combosensortype.ListIndex = 1;
    window_.ignitionSetup.btnSave.press();
    window_.Combosensortype.ListIndex = -1;
    window_.ignitionSetup.btnSave.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 13=175", "50 346=1", "100 13=175", "150 346=0"));
}

TEST_F(IgnitionBox, WithThePortClosedASaveSaysAndSendsNothing) {
    window_.show();
    for (auto* group : {&window_.idleIgnition, &window_.launchControl, &window_.ignitionSetup}) {
        group->btnSave.press();
    }
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
    EXPECT_THAT(line_.sent(), IsEmpty());
}

TEST_F(IgnitionBox, ThePanesAreTooShortToTouchThePoll) {
    openAlone();
    for (auto* group : {&window_.idleIgnition, &window_.launchControl, &window_.ignitionSetup}) {
        group->btnRead.press();
        EXPECT_FALSE(poll().Enabled) << group->frame.Caption.get();
        group->btnSave.press();
        EXPECT_FALSE(poll().Enabled) << group->frame.Caption.get();
    }
}

TEST_F(IgnitionBox, TheLimitsOfTheMiscBlockTakeWordsAlone) {
    openAlone();
    deliverWord(2, 7200);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "7200");
    deliverByte(2, 32);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "7200");
}

TEST_F(IgnitionBox, ServesTheDispatcherWhileItIsLoaded) {
    EXPECT_FALSE(tables_.ignWindowOpen);
    openAlone();
    EXPECT_TRUE(tables_.ignWindowOpen);
    windows_.curMapWindow = nullptr;  // another window took over and went
    receiveIgnition(20);
    EXPECT_EQ(window_.ign(159).Text.get(), "4");
    EXPECT_EQ(window_.Caption.get(), "Received Ignition map 12:00:00");
    const CaptionObserver observer(window_);
    deliver('m', {52, 33, 40, 35, 0, 0, 9, 128, 5});
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");  // 52 + 256 * 33
    EXPECT_THAT(observer.captions, ElementsAre("Getting data from ECU!", "Misc datan haku onnistui"));
    EXPECT_TRUE(window_.unload());
    EXPECT_FALSE(tables_.ignWindowOpen);
}

TEST_F(IgnitionBox, TheMapGoesOutWholeAndIsCommitted) {
    openAlone();
    receiveIgnition(20);
    window_.chkOnlineChanges.press();
    window_.setFocus(&window_.ign(17));
    window_.ign(17).keyDown(controls::kKeyPlus, 0);
    EXPECT_EQ(window_.ign(17).Text.get(), "4.2");  // 21 counts of 0.2 degrees
    pump_.wait(100);
    EXPECT_EQ(virtual_.recorder.takeBytes(), (Bytes{'i', 17, 17, 21, 21, 0x96}));
    window_.btnWriteIgn.press();
    Bytes map(160, 20);
    map.at(17) = 21;
    map.insert(map.begin(), 'A');
    map.push_back(0xBE);
    map.push_back('b');
    EXPECT_EQ(virtual_.recorder.takeBytes(), map);
    EXPECT_EQ(window_.Caption.get(), "Ignition kartta lähetetty ja talletettu autoon");
}

TEST_F(IgnitionBox, OneRedCellWandersOverTheGrid) {
    openAlone();
    for (const int place : {17, 18}) {
        tables_.MapPlace = static_cast<std::int16_t>(place);
        window_.updateMapPlace();
    }
    EXPECT_EQ(window_.ign(17).BackColor.get(), kWhite);
    EXPECT_EQ(window_.ign(18).BackColor.get(), kRed);
    EXPECT_EQ(tables_.PrevMapPlace, 18);
}

TEST_F(IgnitionBox, TheFocusFollowsTheEngineWhereItsBoxSaysSo) {
    openAlone();
    tables_.MapPlace = 33;
    pump_.wait(400);
    EXPECT_EQ(window_.activeControl(), nullptr);
    window_.chkFocusOnIGN.press();
    pump_.wait(400);
    EXPECT_EQ(window_.activeControl(), &window_.ign(33));
    tables_.MapPlace = 160;
    pump_.wait(400);
    EXPECT_EQ(window_.activeControl(), &window_.ign(33));
}

TEST_F(IgnitionBox, WithoutIgnitionNothingOfItIsOffered) {
    tables_.Features = 0;
    openAlone();
    EXPECT_FALSE(window_.btnReadIgn.Enabled || window_.btnWriteIgn.Enabled || window_.chkFocusOnIGN.Enabled);
    EXPECT_FALSE(window_.txtMisc(3).Enabled);
}

// Without the feature the button is disabled; what its press asks is asked all the same.
TEST_F(IgnitionBox, TheFirstReadsAskAlsoForWhatTheBoxDoesNotOffer) {
    tables_.Features = 0;
    openPort();
    window_.show();
    ASSERT_FALSE(window_.btnReadIgn.Enabled);
    const auto sent = line_.sent();
    ASSERT_THAT(sent, SizeIs(10));
    EXPECT_EQ(sent.at(1), "0 97");
}

TEST_F(IgnitionBox, ABlockOfTheMapIsChosenByKeysAndNotByTheMouse) {
    openAlone();
    receiveIgnition(20);
    for (const int cell : {17, 19}) {
        window_.setFocus(&window_.ign(cell));
        window_.ign(cell).mouseUp(1, controls::kShiftMask, 0.0, 0.0);
    }
    EXPECT_EQ(window_.ign.SelFirst, 0);
    EXPECT_EQ(window_.ign.SelLast, 0);
    window_.setFocus(&window_.ign(17));
    window_.ign(17).keyDown(controls::kKeyShift, controls::kShiftMask);
    window_.ign(17).keyDown(controls::kKeyRight, controls::kShiftMask);
    window_.ign(18).keyDown(controls::kKeyRight, controls::kShiftMask);
    window_.ign(19).keyDown(controls::kKeyPlus, 0);
    for (const int cell : {17, 18, 19}) {
        EXPECT_EQ(window_.ign(cell).Text.get(), "4.2") << cell;  // 21 counts of 0.2 degrees
    }
    EXPECT_EQ(window_.ign(20).Text.get(), "4");
}

TEST_F(IgnitionBox, MayBeClosedWhileItReads) {
    openPort();
    virtual_.at(400, [this] { EXPECT_TRUE(window_.unload()); });
    window_.show();
    EXPECT_THAT(line_.sent(), SizeIs(5));
    EXPECT_THAT(log_.lines, IsEmpty());
}

// A tune has maps for which the window has no grid: they count as freshly read all the same.
TEST_F(IgnitionBox, ATuneIsSavedAndLoadedWithAllItsMaps) {
    openAlone();
    const auto file = (virtual_.folder.path() / "tune.txt").string();
    tables_.FuelMapOut.fill(40);
    tables_.IgnMapOut.fill(50);
    tables_.PwmMapOut.fill(60);
    dialogs_.answerFile(file);
    window_.btnSave.press();
    for (auto* image : {&tables_.FuelMapOut, &tables_.IgnMapOut, &tables_.PwmMapOut}) {
        image->fill(0);
    }
    dialogs_.answerFile(file);
    window_.btnLoad.press();
    EXPECT_EQ(tables_.FuelMapOut.at(159), 40);
    EXPECT_EQ(tables_.IgnMapOut.at(159), 50);
    EXPECT_EQ(tables_.PwmMapOut.at(159), 60);
    EXPECT_EQ(window_.ign(159).Text.get(), "10");
    EXPECT_EQ(window_.ign(159).ForeColor.get(), 0U);
}

TEST_F(IgnitionBox, TheThreeDimensionalViewShowsTheIgnition) {
    openAlone();
    window_.btnShow3D.press();
    EXPECT_TRUE(frm3Dmap_.Visible);
    window_.btnHelp.press();
    EXPECT_THAT(dialogs_.takeMessages(), SizeIs(1));
}

}  // namespace
}  // namespace korvane::maps
