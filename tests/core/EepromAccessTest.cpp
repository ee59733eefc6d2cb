#include <gmock/gmock.h>
#include <vector>

#include "controls/Window.h"
#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "platform/RuntimeError.h"
#include "support/MachineBench.h"

namespace korvane::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Write {
    std::int64_t at = 0;  // ms
    std::vector<int> bytes;
    bool operator==(const Write&) const = default;
};

// A line that notes each write and when it was made.
class NotingLine : public platform::MemoryLine {
public:
    explicit NotingLine(platform::EventPump& pump) : MemoryLine(pump, nullptr), pump_(pump) {}

    void write(std::span<const std::uint8_t> bytes) override {
        writes.push_back({pump_.milliseconds(), {bytes.begin(), bytes.end()}});
        if (afterWrite) {
            afterWrite();
        }
    }

    std::vector<Write> writes;
    std::function<void()> afterWrite;

private:
    platform::EventPump& pump_;
};

class EepromAccessTest : public support::MachineBench {
protected:
    EepromAccessTest() {
        InitModule(tables_, preferences_);
        port_.setPortOpen(true);
    }

    // All bytes written, in order.
    [[nodiscard]] std::vector<int> sent() const {
        std::vector<int> bytes;
        for (const auto& write : line_.writes) {
            bytes.insert(bytes.end(), write.bytes.begin(), write.bytes.end());
        }
        return bytes;
    }

    SharedTables tables_;
    NotingLine line_{pump_};
    platform::Machine machine_ = virtual_.with(line_);
    controls::Window window_{machine_, "frmSarn2"};
    controls::MSComm port_{window_, "MSComm1"};
    EepromAccess eeprom_{port_, pump_, tables_};
};

TEST_F(EepromAccessTest, EachByteIsAnOutputOfItsOwn) {
    eeprom_.WriteEE(1, 300);
    EXPECT_EQ(line_.writes.size(), 6U);
    for (const Write& write : line_.writes) {
        EXPECT_EQ(write.bytes.size(), 1U);
    }
}

TEST_F(EepromAccessTest, AByteRowTakesTheLowByteTwiceInTheFrame) {
    eeprom_.WriteEE(1, 300);
    EXPECT_THAT(sent(), ElementsAre('W', 1, 0, 44, 44, 0xA8));
    EXPECT_EQ(pump_.milliseconds(), 0);
}

// The device is removed at the third byte; the code that closes the port has told the user.
TEST_F(EepromAccessTest, ADeviceThatGoesInTheMiddleOfAFrameEndsItInSilence) {
    line_.afterWrite = [this] {
        if (line_.writes.size() == 3) {
            port_.setPortOpen(false);
        }
    };
    eeprom_.WriteEE(1, 300);
    EXPECT_THAT(sent(), ElementsAre('W', 1, 0));
    eeprom_.ReadEE(1);
    EXPECT_EQ(sent().size(), 3U);
}

TEST_F(EepromAccessTest, TheAddressGoesLowByteFirst) {
    eeprom_.WriteEE(1027, 7);
    EXPECT_THAT(sent(), ElementsAre('W', 3, 4, 7, 7, 0xA8));
}

TEST_F(EepromAccessTest, AWordRowTakesTwoFrames50MsApart) {
    eeprom_.WriteEE(2, 300);
    EXPECT_THAT(sent(), ElementsAre('W', 2, 0, 44, 44, 0xA8, 'W', 3, 0, 1, 1, 0xA8));
    EXPECT_EQ(line_.writes.at(5).at, 0);
    EXPECT_EQ(line_.writes.at(6).at, 50);
}

TEST_F(EepromAccessTest, ForcedWordsNeedNoMark) {
    eeprom_.WriteEE(100, 300, true);
    EXPECT_THAT(sent(), ElementsAre('W', 100, 0, 44, 44, 0xA8, 'W', 101, 0, 1, 1, 0xA8));
}

TEST_F(EepromAccessTest, AByteIntoAWordRowPutsAZeroIntoTheNextCell) {
    eeprom_.WriteEE(511, 44);
    EXPECT_THAT(sent(), ElementsAre('W', 255, 1, 44, 44, 0xA8, 'W', 0, 2, 0, 0, 0xA8));
}

TEST_F(EepromAccessTest, TheLaunchLimitOfType30IsWrittenAsSingleBytes) {
    InitParams(tables_, 30);
    eeprom_.WriteEE(static_cast<std::int16_t>(tables_.addresses.LAUNCHCONTROL_LO), 300);
    EXPECT_THAT(sent(), ElementsAre('W', 0xF4, 1, 44, 44, 0xA8));
}

TEST_F(EepromAccessTest, NegativeValuesSendTheirLowBytes) {
    eeprom_.WriteEE(2, -2);
    EXPECT_THAT(sent(), ElementsAre('W', 2, 0, 0xFE, 0xFE, 0xA8, 'W', 3, 0, 0xFF, 0xFF, 0xA8));
}

TEST_F(EepromAccessTest, EventsRunBeforeAndBehindThePauseButNotInIt) {
    std::vector<std::int64_t> ranAt;
    const auto atOnce = pump_.makeAlarm([&] { ranAt.push_back(pump_.milliseconds()); });
    const auto inThePause = pump_.makeAlarm([&] {
        ranAt.push_back(pump_.milliseconds());
        EXPECT_EQ(line_.writes.size(), 6U);
    });
    atOnce->callAt(0);
    inThePause->callAt(20 * platform::kMicrosPerMilli);
    eeprom_.WriteEE(2, 300);
    EXPECT_THAT(ranAt, ElementsAre(0, 50));
    EXPECT_EQ(line_.writes.size(), 12U);
}

TEST_F(EepromAccessTest, APortClosedInThePauseGetsNoSecondFrame) {
    const auto closing = pump_.makeAlarm([&] { port_.setPortOpen(false); });
    closing->callAt(0);
    eeprom_.WriteEE(2, 300);
    EXPECT_THAT(sent(), ElementsAre('W', 2, 0, 44, 44, 0xA8));
}

TEST_F(EepromAccessTest, AnAddressBeyondTheTableIsASubscriptFailure) {
    EXPECT_THROW(eeprom_.WriteEE(3001, 1), platform::RuntimeError);
    EXPECT_THROW(eeprom_.WriteEE(-1, 1), platform::RuntimeError);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(EepromAccessTest, TellsOfEachByteThatGoesOut) {
    std::vector<std::pair<int, int>> told;
    eeprom_.written = [&told](std::int32_t address, std::uint8_t byte) { told.emplace_back(address, byte); };
    eeprom_.WriteEE(2, 300);
    eeprom_.ReadEE(4);
    EXPECT_THAT(told, ElementsAre(std::pair(2, 44), std::pair(3, 1)));
    line_.afterWrite = [this] { port_.setPortOpen(false); };
    eeprom_.WriteEE(1, 7);
    eeprom_.WriteEE(1, 7);
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(EepromAccessTest, AsksForAByte) {
    eeprom_.ReadEE(518);
    EXPECT_THAT(sent(), ElementsAre('R', 6, 2, 0xAD));
    EXPECT_EQ(line_.writes.size(), 4U);
}

TEST_F(EepromAccessTest, AsksForAWord) {
    eeprom_.ReadEE16(518);
    EXPECT_THAT(sent(), ElementsAre('U', 6, 2, 0xAA));
}

TEST_F(EepromAccessTest, SuppressedReadsSendNothing) {
    eeprom_.ReadEE(518, 44, true);
    eeprom_.ReadEE16(518, 44, true);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(EepromAccessTest, WithThePortClosedNothingHappens) {
    port_.setPortOpen(false);
    eeprom_.WriteEE(1, 300);
    eeprom_.WriteEE(2, 300);
    eeprom_.WriteEE(3001, 1);
    eeprom_.ReadEE(518);
    eeprom_.ReadEE16(518);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(pump_.milliseconds(), 0);
}

}  // namespace
}  // namespace korvane::core
