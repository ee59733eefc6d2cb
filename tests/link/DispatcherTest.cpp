#include <gmock/gmock.h>
#include <set>

#include "LinkBench.h"

namespace korvane::link {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class DispatcherTest : public LinkBench {};

const std::set<int> kCodes{170, 33, 82, 84, 85, 97, 247, 102, 245, 65, 248, 70, 246, 153, 109, 112, 101, 108, 121, 83};

TEST_F(DispatcherTest, ACodeThatIsNoCommandDoesNothing) {
    openMapWindow();
    openIgnitionWindow();
    openSettings();
    windows_.frmIGNDebug = &debug_;
    for (int code = 0; code < 256; ++code) {
        if (!kCodes.contains(code)) {
            command(code, half(1));
        }
    }
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_THAT(decoder_.frames, IsEmpty());
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
    EXPECT_EQ(window_.Caption.get(), "");
}

TEST_F(DispatcherTest, AStartedDeviceIsNamedInTheCaptionWithTheTime) {
    pump_.wait((1 * 3600 + 2 * 60 + 3) * 1000);
    command(170, {0});
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner v1.3 by Dulmer,   Device started 13:02:03");
}

TEST_F(DispatcherTest, StartAndAlarmIgnoreTheirPayload) {
    for (std::size_t length = 1; length <= 255; ++length) {
        window_.Caption = "";
        window_.BackColor = controls::kButtonFace;
        command(170, Bytes(length, 0xFF));
        EXPECT_THAT(window_.Caption.get(), StartsWith("Korvane Tuner v1.3 by Dulmer,   Device started "));
        command('!', Bytes(length, 0));
        EXPECT_EQ(window_.BackColor.get(), 255U);
    }
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(DispatcherTest, AnAlarmPaintsTheWindowRedAndStartsItsTimer) {
    command('!', {0});
    EXPECT_EQ(window_.BackColor.get(), 255U);
    EXPECT_EQ(panel_.TimerAlarm.Interval.get(), 100);
    EXPECT_TRUE(panel_.TimerAlarm.Enabled);
}

TEST_F(DispatcherTest, ACommandThatTheDeviceDidNotKnowChangesNothing) {
    openMapWindow();
    openIgnitionWindow();
    openSettings();
    window_.Caption = "before";
    tables_.FuelMapIn.fill(7);
    command(153, half(100));
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
    EXPECT_EQ(window_.Caption.get(), "before");
    EXPECT_EQ(window_.BackColor.get(), controls::kButtonFace);
    EXPECT_THAT(tables_.FuelMapIn, Each(7));
    EXPECT_EQ(tables_.Features, -1);
    EXPECT_EQ(tables_.SWType, 0);
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
}

TEST_F(DispatcherTest, LiveDataGoToTheDecoderWhole) {
    command('R', {1, 2, 3});
    ASSERT_EQ(decoder_.frames.size(), 1U);
    EXPECT_THAT(decoder_.frames[0], ElementsAre(1, 2, 3));
}

TEST_F(DispatcherTest, TheDecoderMayChangeTheCallersPayload) {
    class Changing : public LiveDecoder {
    public:
        void decodeLivePacket(std::span<std::uint8_t> payload) override { payload[0] = 42; }
    };
    Changing changing;
    dispatcher_.setLiveDecoder(changing);
    Bytes payload{1, 2};
    dispatcher_.DoCommand('R', payload);
    EXPECT_THAT(payload, ElementsAre(42, 2));
}

TEST_F(DispatcherTest, AFailingDecoderEndsTheFrameWithOneLineInTheLog) {
    class Failing : public LiveDecoder {
    public:
        void decodeLivePacket(std::span<std::uint8_t>) override {
            throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
        }
    };
    Failing failing;
    dispatcher_.setLiveDecoder(failing);
    command('R', {1});
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
}

TEST_F(DispatcherTest, TheMiscBlockFillsIndices1To9AndIsShownByTheMapWindow) {
    openMapWindow();
    tables_.MiscBlock[0] = 99;
    command('m', {11, 12, 13, 14, 15, 16, 17, 18, 19});
    EXPECT_THAT(tables_.MiscBlock, ElementsAre(99, 11, 12, 13, 14, 15, 16, 17, 18, 19));
    EXPECT_THAT(journal_, ElementsAre("map.LoadMisc false"));
}

TEST_F(DispatcherTest, TheMiscBlockGoesToTheIgnitionWindowWhileThatIsOpen) {
    openMapWindow();
    openIgnitionWindow();
    command('m', {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_THAT(journal_, ElementsAre("ign.LoadMisc false"));
}

TEST_F(DispatcherTest, AMiscBlockWithoutAMapWindowIsStoredAndEndsInTheLog) {
    command('m', {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_THAT(tables_.MiscBlock, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow));
}

TEST_F(DispatcherTest, AShortMiscBlockIsStoredAsFarAsItGoesAndShownByNobody) {
    openMapWindow();
    command('m', {1, 2, 3, 4});
    EXPECT_THAT(tables_.MiscBlock, ElementsAre(0, 1, 2, 3, 4, 0, 0, 0, 0, 0));
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(DispatcherTest, APwmCellGoesIntoBothImagesAndIsShown) {
    openMapWindow();
    command('p', {255, 77});
    EXPECT_EQ(tables_.PwmMapIn[255], 77);
    EXPECT_EQ(tables_.PwmMapOut[255], 77);
    EXPECT_EQ(tables_.PwmMapIn[254], 0);
    EXPECT_THAT(journal_, ElementsAre("map.populatePWMOUT"));
}

TEST_F(DispatcherTest, APwmCellNeverGoesToTheIgnitionWindow) {
    openIgnitionWindow();
    command('p', {3, 4});
    EXPECT_EQ(tables_.PwmMapIn[3], 4);
    EXPECT_EQ(tables_.PwmMapOut[3], 4);
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow));
}

TEST_F(DispatcherTest, APwmFrameOfOneByteChangesNothing) {
    openMapWindow();
    tables_.PwmMapIn.fill(5);
    tables_.PwmMapOut.fill(6);
    command('p', {3});
    EXPECT_THAT(tables_.PwmMapIn, Each(5));
    EXPECT_THAT(tables_.PwmMapOut, Each(6));
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(DispatcherTest, TheSettingsBlockGoesToTheSettingsWindow) {
    openSettings();
    command('e', {5, 6, 7});
    EXPECT_THAT(journal_, ElementsAre("misc.LoadMisc2"));
    EXPECT_THAT(misc_.block, ElementsAre(5, 6, 7));
}

TEST_F(DispatcherTest, TheLambdaBlockHasTenSetpointsAndThenTenAuthorities) {
    openSettings();
    Bytes payload;
    for (int i = 0; i < 20; ++i) {
        payload.push_back(static_cast<std::uint8_t>(100 + i));
    }
    command('l', payload);
    ASSERT_EQ(journal_.size(), 20U);
    for (std::size_t i = 0; i < 10; ++i) {
        const auto row = std::to_string(i);
        EXPECT_EQ(journal_[2 * i], "misc.setpoint " + row + " " + std::to_string(100 + i));
        EXPECT_EQ(journal_[2 * i + 1], "misc.authority " + row + " " + std::to_string(110 + i));
    }
}

TEST_F(DispatcherTest, AShortLambdaBlockSetsWhatItHasUpToTheFirstMissingByte) {
    openSettings();
    command('l', Bytes(11, 8));
    EXPECT_THAT(journal_, ElementsAre("misc.setpoint 0 8", "misc.authority 0 8", "misc.setpoint 1 8"));
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(DispatcherTest, IgnitionDebugValuesGoToTheirWindow) {
    windows_.frmIGNDebug = &debug_;
    command('S', {1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_EQ(debug_.frames.size(), 1U);
    EXPECT_THAT(debug_.frames[0], ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

TEST_F(DispatcherTest, IgnitionDebugValuesFailWhileTheirWindowIsClosed) {
    command('S', {1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow));
}

TEST_F(DispatcherTest, FramesForWindowsThatAreNotOpenChangeNothing) {
    window_.Caption = "before";
    for (const int code : {'e', 'l'}) {
        command(code, Bytes(20, 1));
    }
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
    EXPECT_EQ(window_.Caption.get(), "before");
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
    for (const auto* image : {&tables_.FuelMapIn, &tables_.FuelMapOut, &tables_.IgnMapIn, &tables_.IgnMapOut,
                              &tables_.PwmMapIn, &tables_.PwmMapOut}) {
        EXPECT_THAT(*image, Each(0));
    }
    EXPECT_THAT(tables_.MiscBlock, Each(0));
    EXPECT_THAT(tables_.EEImage, Each(0));
    EXPECT_EQ(tables_.Features, -1);
    EXPECT_EQ(tables_.SWType, 0);
}

TEST_F(DispatcherTest, EepromValuesAreStoredWithoutAWindowToShowThem) {
    command('T', {7, 1, 1});
    command('U', {8, 9, 2, 1});
    EXPECT_EQ(tables_.EEImage[257], 7);
    EXPECT_EQ(tables_.EEImage[258], 8);
    EXPECT_EQ(tables_.EEImage[259], 9);
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, IsEmpty());
}

class AnyLength : public LinkBench {
protected:
    // The failures in the log after each command with payloads of 1 to 255 bytes, each byte the length.
    std::size_t failures() {
        for (const int code : kCodes) {
            for (std::size_t length = 1; length <= 255; ++length) {
                command(code, Bytes(length, static_cast<std::uint8_t>(length)));
            }
        }
        EXPECT_THAT(log_.lines, Each(AnyOf(kTooShort, kNoWindow)));
        EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
        return log_.lines.size();
    }

    // Addresses are 257 times the length, and the last one is 3000: 12 to 255 are too high, and so is any word's that
    // has not got its four bytes.
    static constexpr std::size_t kEepromFailures = 244 + (244 + 3);
    static constexpr std::size_t kIdentityFailures = 3;  // one to three bytes
};

// Four map halves, four acknowledgements, the misc block and the PWM cell all need the map window, debug words need
// theirs.
TEST_F(AnyLength, OfAPayloadEndsInTheLogWithNoWindowOpen) {
    EXPECT_EQ(failures(), 11 * 255 + kEepromFailures + kIdentityFailures);
}

// Map halves need 160 bytes, the misc block 9, the PWM cell 2 and the lambda block 20.
TEST_F(AnyLength, OfAPayloadEndsInTheLogWithAllWindowsOpen) {
    openMapWindow();
    openIgnitionWindow();
    openSettings();
    windows_.frmIGNDebug = &debug_;
    EXPECT_EQ(failures(), 4 * 159 + 8 + 1 + 19 + kEepromFailures + kIdentityFailures);
    EXPECT_THAT(log_.lines, Each(kTooShort));
}

}  // namespace
}  // namespace korvane::link
