// The one place where a received frame acts on the program.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "link/ConnectionPanel.h"
#include "link/Frames.h"
#include "link/ReplacedEdits.h"
#include "link/Windows.h"
#include "platform/Machine.h"

namespace korvane::core {
class MapHistory;
struct SharedTables;
}  // namespace korvane::core

namespace korvane::link {

class Dispatcher : private FrameHandler {
public:
    Dispatcher(platform::Machine& machine, ConnectionPanel& panel, core::SharedTables& tables, Windows& windows);

    // The decoder of 'R' payloads; must be set before the first frame.
    void setLiveDecoder(LiveDecoder& decoder) { decoder_ = &decoder; }

    // What a read changes is noted in it, if it is set.
    void setHistory(core::MapHistory& history) { history_ = &history; }
    // Told what is about to replace edits that the ECU does not have: "read".
    void setReplacing(const std::function<void(std::string_view what)>& replacing) {
        replaced_.announce = [replacing] { replacing("read"); };
    }

    // Acts on one frame. A failure ends the frame with a line in the debug log; what was done until then stays done.
    // The payload may be changed; no reference to it is kept after the return.
    void DoCommand(std::uint8_t cmd, std::span<std::uint8_t> payload);

private:
    void deviceStarted(Payload) override;
    void alarmFlash(Payload) override;
    void liveData(Payload payload) override;
    void unknownToDevice(Payload) override;
    void eepromByte(Payload payload) override;
    void eepromWord(Payload payload) override;
    void fuelFirstHalf(Payload payload) override;
    void fuelSecondHalf(Payload payload) override;
    void ignitionFirstHalf(Payload payload) override;
    void ignitionSecondHalf(Payload payload) override;
    void fuelSent(Payload payload) override;
    void fuelSecondHalfSent(Payload payload) override;
    void ignitionSent(Payload payload) override;
    void ignitionSecondHalfSent(Payload payload) override;
    void miscBlock(Payload payload) override;
    void pwmCell(Payload payload) override;
    void settingsBlock(Payload payload) override;
    void lambdaBlock(Payload payload) override;
    void identity(Payload payload) override;
    void ignitionDebug(Payload payload) override;

    void takeFuel(Payload payload, std::size_t first);
    void takeIgnition(Payload payload, std::size_t first);
    // What the program asked for past its windows.
    void note(std::uint8_t cmd, Payload payload);
    void noteMisc(Payload payload);
    void noteEepromByte(std::uint8_t value, int address);

    MapWindow* replyWindow() const;
    void setMapCaption(std::string_view text);
    void showIgnitionMap();
    void eepromTold(int address, std::uint8_t byte);
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
    core::MapHistory* history_ = nullptr;
    ReplacedEdits replaced_;
};

}  // namespace korvane::link
