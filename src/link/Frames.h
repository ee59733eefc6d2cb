// The frames that the ECU sends, in one list. A code that is not in it is noise to the receiver.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

namespace korvane::link {

// What each frame does in the program. A handler may change the payload, but must not keep a reference to it.
class FrameHandler {
public:
    using Payload = std::span<std::uint8_t>;

    virtual void liveData(Payload payload) = 0;
    virtual void deviceStarted(Payload payload) = 0;
    virtual void alarmFlash(Payload payload) = 0;
    virtual void eepromByte(Payload payload) = 0;
    virtual void eepromWord(Payload payload) = 0;
    virtual void ignitionFirstHalf(Payload payload) = 0;
    virtual void ignitionSecondHalf(Payload payload) = 0;
    virtual void fuelFirstHalf(Payload payload) = 0;
    virtual void fuelSecondHalf(Payload payload) = 0;
    virtual void ignitionSent(Payload payload) = 0;
    virtual void ignitionSecondHalfSent(Payload payload) = 0;
    virtual void fuelSent(Payload payload) = 0;
    virtual void fuelSecondHalfSent(Payload payload) = 0;
    virtual void unknownToDevice(Payload payload) = 0;
    virtual void miscBlock(Payload payload) = 0;
    virtual void pwmCell(Payload payload) = 0;
    virtual void settingsBlock(Payload payload) = 0;
    virtual void lambdaBlock(Payload payload) = 0;
    virtual void identity(Payload payload) = 0;
    virtual void ignitionDebug(Payload payload) = 0;

protected:
    FrameHandler() = default;
    FrameHandler(const FrameHandler&) = default;
    FrameHandler& operator=(const FrameHandler&) = default;
    ~FrameHandler() = default;
};

// Those that the program makes itself while it simulates an ECU.
inline constexpr std::uint8_t kLiveDataFrame = 'R';
inline constexpr std::uint8_t kIdentityFrame = 'y';
// Those that tell of the ECU itself.
inline constexpr std::uint8_t kEepromByteFrame = 'T';
inline constexpr std::uint8_t kEepromWordFrame = 'U';
inline constexpr std::uint8_t kDeviceStartedFrame = 170;
inline constexpr std::uint8_t kUnknownCommandFrame = 153;

struct EcuFrame {
    std::uint8_t code;
    std::string_view name;
    void (FrameHandler::*handler)(FrameHandler::Payload);
};

inline constexpr EcuFrame kEcuFrames[] = {
    {kLiveDataFrame, "live data", &FrameHandler::liveData},
    {kDeviceStartedFrame, "device started", &FrameHandler::deviceStarted},
    {'!', "alarm flash", &FrameHandler::alarmFlash},
    {kEepromByteFrame, "EEPROM byte", &FrameHandler::eepromByte},
    {kEepromWordFrame, "EEPROM word", &FrameHandler::eepromWord},
    {'a', "ignition map, first half", &FrameHandler::ignitionFirstHalf},
    {247, "ignition map, second half", &FrameHandler::ignitionSecondHalf},
    {'f', "fuel map, first half", &FrameHandler::fuelFirstHalf},
    {245, "fuel map, second half", &FrameHandler::fuelSecondHalf},
    {'A', "ignition map sent, first half", &FrameHandler::ignitionSent},
    {248, "ignition map sent, second half", &FrameHandler::ignitionSecondHalfSent},
    {'F', "fuel map sent, first half", &FrameHandler::fuelSent},
    {246, "fuel map sent, second half", &FrameHandler::fuelSecondHalfSent},
    {kUnknownCommandFrame, "command unknown to the device", &FrameHandler::unknownToDevice},
    {'m', "misc block", &FrameHandler::miscBlock},
    {'p', "PWM cell", &FrameHandler::pwmCell},
    {'e', "settings block", &FrameHandler::settingsBlock},
    {'l', "lambda block", &FrameHandler::lambdaBlock},
    {kIdentityFrame, "identity", &FrameHandler::identity},
    {'S', "ignition debug values", &FrameHandler::ignitionDebug},
};

// For each byte, whether it is the code of a frame.
inline constexpr auto kIsFrameCode = [] {
    std::array<bool, 256> table{};
    for (const EcuFrame& frame : kEcuFrames) {
        table[frame.code] = true;
    }
    return table;
}();

static_assert(std::count(kIsFrameCode.begin(), kIsFrameCode.end(), true) == std::ssize(kEcuFrames),
              "two frames have one code");
static_assert(std::all_of(std::begin(kEcuFrames), std::end(kEcuFrames),
                          [](const EcuFrame& frame) { return frame.handler != nullptr; }),
              "a frame has no handler");

}  // namespace korvane::link
