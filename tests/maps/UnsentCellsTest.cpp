#include "TransferBench.h"
#include "link/Dispatcher.h"
#include "link/Frames.h"
#include "maps/transfer/UnsentCells.h"

namespace korvane::maps {
namespace {

constexpr UnsentCells kNone{};

// A window on an ECU whose answers the test makes.
class UnsentCellsTest : public SmallTransferBench {
protected:
    UnsentCellsTest() {
        windows_.curMapWindow = &window_;
        setParameter(tables_.addresses.INJ_MODE_OFFSET, 2);
        openPort();
        main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
    }

    void answer(std::uint8_t code, support::Bytes payload) { dispatcher_.DoCommand(code, payload); }
    void readMaps() {
        answer('f', support::Bytes(160, 50));
        answer('a', support::Bytes(160, 60));
        for (std::uint8_t cell = 0; cell < 160; ++cell) {
            answer('p', {cell, 70});
        }
    }
    void plus(MapGrid& grid, int cell) {
        window_.setFocus(&grid(cell));
        grid(cell).keyDown(controls::kKeyPlus, 0);
    }
    [[nodiscard]] UnsentCells fuel() const { return unsentCells(context_, kFuelImages, kOrdinaryMaps); }
    [[nodiscard]] UnsentCells ignition() const { return unsentCells(context_, kIgnitionImages, kOrdinaryMaps); }
    [[nodiscard]] UnsentCells pwm() const { return unsentCells(context_, kPwmImages, kOrdinaryMaps); }

    // 160 bytes and the order to store take 530 ms.
    void sendFuel() {
        window_.btnWriteFuel.press();
        machine_.pump.wait(500);
    }

    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_.machine, main_, tables_, windows_};
};

TEST_F(UnsentCellsTest, EditedCellsAreUnsentUntilTheyAreEditedBack) {
    readMaps();
    EXPECT_EQ(fuel(), kNone);
    plus(window_.fuel, 5);
    plus(window_.fuel, 17);
    plus(window_.ign, 3);
    plus(window_.pwm, 70);
    EXPECT_EQ(fuel(), (UnsentCells{2, 0}));
    EXPECT_EQ(ignition(), (UnsentCells{1, 0}));
    EXPECT_EQ(pwm(), (UnsentCells{1, 0}));
    EXPECT_TRUE(isUnsent(context_, kFuelImages, 17));
    EXPECT_FALSE(isUnsent(context_, kFuelImages, 18));
    window_.fuel(17).keyDown(controls::kKeyMinus, 0);
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, AMapThatWasReadAnewHasNone) {
    readMaps();
    plus(window_.fuel, 5);
    readMaps();
    EXPECT_EQ(fuel(), kNone);
}

TEST_F(UnsentCellsTest, AMapThatTheEcuHasTakenHasNone) {
    readMaps();
    plus(window_.fuel, 5);
    at(350, [this] { answer('F', {1}); });
    sendFuel();
    EXPECT_EQ(fuel(), kNone);
}

TEST_F(UnsentCellsTest, AMapThatIsTakenAfterTheOrderToStoreHasNone) {
    readMaps();
    plus(window_.fuel, 5);
    at(600, [this] { answer('F', {1}); });
    sendFuel();
    EXPECT_EQ(fuel(), kNone);
}

TEST_F(UnsentCellsTest, AMapThatNobodyAnswersIsNotInTheEcu) {
    readMaps();
    plus(window_.fuel, 5);
    sendFuel();
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, AMapThatIsRefusedIsNotInTheEcu) {
    readMaps();
    plus(window_.fuel, 5);
    at(350, [this] { answer('F', {0}); });
    sendFuel();
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ACellThatIsEditedWhileItsMapIsSentIsUnsent) {
    readMaps();
    at(200, [this] { plus(window_.fuel, 5); });
    at(350, [this] { answer('F', {1}); });
    sendFuel();
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ACellThatWasSentAloneIsLostWithARestart) {
    readMaps();
    window_.chkOnlineChanges.Value = 1;
    plus(window_.fuel, 5);
    plus(window_.ign, 6);
    EXPECT_EQ(fuel(), (UnsentCells{0, 1}));
    EXPECT_EQ(ignition(), (UnsentCells{0, 1}));
    answer(170, {});
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ACellThatWasSentAloneIsKeptOnceItsMapIsStored) {
    readMaps();
    window_.chkOnlineChanges.Value = 1;
    plus(window_.fuel, 5);
    at(350, [this] { answer('F', {1}); });
    sendFuel();
    answer(170, {});
    EXPECT_EQ(fuel(), kNone);
}

TEST_F(UnsentCellsTest, NothingIsSentOnAClosedPort) {
    readMaps();
    window_.chkOnlineChanges.Value = 1;
    main_.MSComm1.setPortOpen(false);
    plus(window_.fuel, 5);
    plus(window_.pwm, 70);
    window_.btnSavePWM.press();
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
    EXPECT_EQ(pwm(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ThePwmTableIsKeptOnceItWasSent) {
    readMaps();
    plus(window_.pwm, 70);
    at(5500, [this] { answer(170, {}); });
    window_.btnSavePWM.press();
    machine_.pump.wait(1000);
    EXPECT_EQ(pwm(), kNone);
}

TEST_F(UnsentCellsTest, APwmTableThatNoRestartConfirmsIsNotInTheEcu) {
    readMaps();
    plus(window_.pwm, 70);
    window_.btnSavePWM.press();
    machine_.pump.wait(5000);
    EXPECT_EQ(pwm(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ACellThatIsSentToASilentEcuIsUnsent) {
    readMaps();
    window_.chkOnlineChanges.Value = 1;
    machine_.pump.wait(1000);
    EXPECT_EQ(main_.linkState.state(), link::LinkState::State::Late);
    plus(window_.fuel, 5);
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, WithAnotherEcuTheEditsCount) {
    answer('y', {1, 1, 13, 58, 11});
    readMaps();
    plus(window_.fuel, 5);
    at(800, [this] { answer('F', {1}); });
    window_.btnWriteFuel.press();
    machine_.pump.wait(1000);
    answer('y', {1, 1, 13, 58, 11});
    EXPECT_EQ(fuel(), kNone);
    answer('y', {1, 1, 13, 58, 10});
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

TEST_F(UnsentCellsTest, ASimulatedIdentityIsNoOtherEcu) {
    answer('y', {1, 1, 13, 58, 10});
    readMaps();
    tables_.FuelMapIn.fill(51);
    main_.MSComm1.setPortOpen(false);
    answer('y', {1, 1, 13, 58, 11});
    EXPECT_EQ(main_.ecuMaps.fuel.working(5), 50);
}

// Word replies: low byte, high byte, address. The fuel map begins at 16, the ignition map at 180.
TEST_F(UnsentCellsTest, CellsThatTheEepromHasOtherwiseAreNotStored) {
    readMaps();
    answer('T', {51, 16, 0});
    answer('U', {61, 62, 180, 0});
    EXPECT_EQ(fuel(), (UnsentCells{0, 1}));
    EXPECT_EQ(ignition(), (UnsentCells{0, 2}));
    answer(170, {});
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
    EXPECT_EQ(ignition(), (UnsentCells{2, 0}));
}

TEST_F(UnsentCellsTest, TheEepromAloneSaysNothingOfAMapThatWasNotRead) {
    answer('T', {51, 16, 0});
    EXPECT_EQ(fuel(), kNone);
}

TEST_F(UnsentCellsTest, CellsThatAreNeverSentAreNotCounted) {
    readMaps();
    tables_.PwmMapOut[60] = 1;
    tables_.PwmMapOut[160] = 1;
    tables_.FuelMapOut[160] = 1;
    EXPECT_EQ(pwm(), kNone);
    EXPECT_EQ(fuel(), kNone);
    EXPECT_EQ(unsentCells(context_, kFuelImages, kLargeMaps), (UnsentCells{1, 0}));
    EXPECT_EQ(unsentCells(context_, kPwmImages, kLargeMaps), kNone);
}

TEST_F(UnsentCellsTest, AMapThatTheEcuNeverShowedCountsByItsEdits) {
    tables_.FuelMapIn.fill(9);
    tables_.FuelMapOut.fill(9);
    EXPECT_EQ(fuel(), kNone);
    plus(window_.fuel, 5);
    EXPECT_EQ(fuel(), (UnsentCells{1, 0}));
}

// As after a tune from a file, whose cells are black.
TEST_F(UnsentCellsTest, ATuneThatIsNotTheEcusIsUnsentThoughNothingIsBlue) {
    readMaps();
    tables_.FuelMapIn.fill(51);
    tables_.FuelMapOut = tables_.FuelMapIn;
    tables_.FuelMapIn[7] = tables_.FuelMapOut[7] = 50;
    EXPECT_EQ(fuel(), (UnsentCells{159, 0}));
}

}  // namespace
}  // namespace korvane::maps
