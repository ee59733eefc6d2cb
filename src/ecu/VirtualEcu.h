// The ECU's end of the serial line: firmware, memory and engine, with no clock of its own.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ecu/CommandParser.h"
#include "ecu/Replies.h"
#include "ecu/engine/Calibration.h"
#include "ecu/engine/EngineModel.h"
#include "ecu/engine/Micros.h"
#include "ecu/engine/Noise.h"
#include "ecu/memory/FirmwareMemory.h"
#include "ecu/server/EcuSettings.h"
#include "ecu/server/LineQueue.h"
#include "ecu/server/Wiring.h"

namespace korvane::ecu {

// The caller passes the time with every call; it must not go back. The same settings and the same calls give the same
// bytes at the same times. The engine starts with the first call that has a time. It is simulated for at most ten
// minutes after the last command: after a longer silence it goes on from there.
class VirtualEcu : private CommandHandler {
public:
    explicit VirtualEcu(const EcuSettings& settings = {});

    // Baud rate of the line (default 57600); a byte takes 10 bit times. Holds for answers from now on.
    void setBaud(int baud);
    // One byte from the PC whose last bit arrived at `at`.
    void receive(std::uint8_t byte, Micros at);
    // When the next byte towards the PC has arrived there in full, or nullopt when nothing is under way. While the ECU
    // waits whether a short command goes on, this is the earliest time at which its answer could arrive.
    [[nodiscard]] std::optional<Micros> nextDue() const;
    // Appends all bytes that have arrived at the PC by `at` to `out`.
    void take(Micros at, std::vector<std::uint8_t>& out);

    // Changes a key while running. Returns an empty text, or one sentence that says what is wrong (unknown key, bad
    // value; nothing changed then). A new `type` is another ECU with its own memory; `save` and `wear` write at once.
    [[nodiscard]] std::string set(std::string_view key, std::string_view value, Micros at);
    // The end of the run: writes the files that the keys `save` and `wear` name. Returns as set() does.
    [[nodiscard]] std::string finish() const;

    [[nodiscard]] const EcuSettings& settings() const { return settings_; }
    [[nodiscard]] std::span<const std::uint8_t> eeprom() const { return memory_.eeprom(); }
    // How often each cell of it has been written since the start.
    [[nodiscard]] std::span<const std::uint32_t> writes() const { return memory_.writes(); }
    [[nodiscard]] const MapCells& workingMap(MapKind kind) const { return memory_.working(kind); }
    [[nodiscard]] MapCells storedMap(MapKind kind) const { return memory_.stored(kind); }
    [[nodiscard]] const MiscBytes& miscBlock() const { return memory_.misc(); }
    // What the working fuel map would have to hold for the best mixture (kBestMixture) everywhere, not rounded.
    [[nodiscard]] std::array<double, kMapCells> trueFuelMap() const { return neededCounts(memory_); }
    // The engine as the last command found it.
    [[nodiscard]] const EngineState& engine() const { return engine_.state(); }
    [[nodiscard]] const EngineTruth& truth() const { return engine_.truth(); }
    // The settings and working maps that it ran under.
    [[nodiscard]] const Calibration& calibration() const { return calibration_; }
    // Milliseconds that the exhaust takes from the cylinders to the lambda sensor at steady speed and load.
    [[nodiscard]] double transportMsAt(double rpm, double loadPercent) const {
        return transportMs(settings_.conditions, rpm, calibration_.manifoldOf(loadPercent));
    }
    // By the cleaning of the plugs, since the start.
    [[nodiscard]] long sparksFired() const { return sparksFired_; }

private:
    using Body = std::span<const std::uint8_t>;
    using Action = void (VirtualEcu::*)(Body, Micros);
    using Change = void (VirtualEcu::*)(Micros);
    struct CommandRow {
        std::uint8_t code;
        Action action;
    };
    struct ChangeRow {
        std::string_view key;
        Change change;
    };
    static const CommandRow kCommands[];
    static const ChangeRow kChanges[];

    void command(std::uint8_t code, Body body, Micros at) override;
    void unknown(std::uint8_t code, Micros at) override;

    void awake(Micros at);
    void startEngine();
    void advanceEngine(Micros at);
    void answer(std::uint8_t code, Body payload, Micros at);
    // The transmitter has more than a live frame to send before an answer to what comes at `at`.
    [[nodiscard]] bool busy(Micros at) const;
    void restart(Micros at);
    void countTowardsRestart(Micros at);
    void countTowardsCut(Micros at);
    void losePower(Micros at);
    void getPower(Micros at);

    void sendLive(Body, Micros at);
    void sendIdentity(Body, Micros at);
    void restartOnCommand(Body, Micros at) { restart(at); }
    template <std::uint8_t Code, MapKind Kind, bool Upper>
    void sendHalf(Body, Micros at);
    template <std::uint8_t Code, MapKind Kind, bool Upper>
    void takeHalf(Body body, Micros at);
    template <MapKind Kind>
    void takeCell(Body body, Micros at);
    template <MapKind Kind>
    void commit(Body, Micros at) {
        memory_.commit(Kind, at);
    }
    void sendMisc(Body, Micros at) { answer('m', memory_.misc(), at); }
    void sendPwmTable(Body, Micros at);
    void takeMisc(Body body, Micros at);
    void commitMisc(Body, Micros at) { memory_.commitMisc(at); }
    void writeByte(Body body, Micros at);
    void sendByte(Body body, Micros at);
    void sendWord(Body body, Micros at);
    void sendSettings(Body, Micros at) { answer('e', settingsBlock(memory_), at); }
    void teachClosed(Body, Micros at);
    void teachOpen(Body, Micros at);
    void sendDebug(Body, Micros at);
    void cleanPlugs(Body body, Micros) { sparksFired_ += 100L * body.front(); }

    void changeType(Micros);
    void changeSeed(Micros);
    void changeDrive(Micros) { engine_.drive(settings_.drive); }
    void changeMapFault(Micros at) { memory_.storeFactoryFuel(settings_.mapFault, at); }
    void changeFaults(Micros);
    void changeWiring(Micros at);
    void changePower(Micros at);
    void changeAlarm(Micros at);

    EcuSettings settings_;
    FirmwareMemory memory_;
    EngineModel engine_;
    CommandParser parser_;
    LineQueue queue_;
    Wiring wiring_;
    Noise sensors_;
    Noise ignitionBox_;
    Noise power_;
    bool on_;
    Calibration calibration_;
    std::optional<std::uint64_t> calibrated_;  // revision of the memory behind calibration_
    std::optional<Micros> engineTime_;
    Micros bootEnd_ = INT64_MIN;
    int muxTurn_ = 0;
    unsigned debugTurn_ = 0;
    long sparksFired_ = 0;
};

}  // namespace korvane::ecu
