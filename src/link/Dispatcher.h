// The one place where a received frame acts on the program.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "link/Windows.h"
#include "platform/Machine.h"

namespace korvane::link {

class Dispatcher {
public:
    Dispatcher(platform::Machine& machine, ConnectionPanel& panel, core::SharedTables& tables, Windows& windows);

    // Who takes 'R' payloads; must be set before the first frame.
    void setLiveDecoder(LiveDecoder& decoder) { decoder_ = &decoder; }

    // Acts on one frame. A failure ends the frame with a line in the debug log; what was done until then stays done.
    // The payload may be changed, and nothing keeps it after the return.
    void DoCommand(std::uint8_t cmd, std::span<std::uint8_t> payload);

private:
    using Payload = std::span<std::uint8_t>;
    using Handler = void (Dispatcher::*)(Payload);
    struct Row {
        std::uint8_t command;
        Handler handler;
    };
    static const Row* rowOf(std::uint8_t command);

    void deviceStarted(Payload);
    void alarmFlash(Payload);
    void liveData(Payload payload);
    void unknownToDevice(Payload);
    void eepromByte(Payload payload);
    void eepromWord(Payload payload);
    void fuelFirstHalf(Payload payload);
    void fuelSecondHalf(Payload payload);
    void ignitionFirstHalf(Payload payload);
    void ignitionSecondHalf(Payload payload);
    void fuelSent(Payload payload);
    void fuelSecondHalfSent(Payload payload);
    void ignitionSent(Payload payload);
    void ignitionSecondHalfSent(Payload payload);
    void miscBlock(Payload payload);
    void pwmCell(Payload payload);
    void settingsBlock(Payload payload);
    void lambdaBlock(Payload payload);
    void identity(Payload payload);
    void ignitionDebug(Payload payload);

    MapWindow* replyWindow() const;
    void setMapCaption(std::string_view text);
    void showIgnitionMap();
    void showEepromValue(std::int32_t value, int address, bool is16);
    bool refused(Payload payload);
    void requestSecondHalf(std::uint8_t command);
    void showIdentity(Payload payload);
    void showFirmwareType();
    [[nodiscard]] std::string timeText() const;

    platform::Machine& machine_;
    ConnectionPanel& panel_;
    core::SharedTables& tables_;
    Windows& windows_;
    LiveDecoder* decoder_ = nullptr;
};

}  // namespace korvane::link
