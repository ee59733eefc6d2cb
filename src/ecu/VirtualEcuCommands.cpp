// Continues VirtualEcu: what the firmware does on each command, one small handler each.
#include <algorithm>
#include <array>

#include "core/ParameterNames.h"
#include "ecu/VirtualEcu.h"

namespace korvane::ecu {

namespace {

constexpr std::uint8_t kUnknownCommand = 153;

int addressIn(std::span<const std::uint8_t> body) {
    return body[0] + 256 * body[1];
}

bool holds(const std::vector<std::uint8_t>& halves, std::uint8_t half) {
    return std::ranges::find(halves, half) != halves.end();
}

}  // namespace

const VirtualEcu::CommandRow VirtualEcu::kCommands[] = {
    {'x', &VirtualEcu::sendLive},
    {'y', &VirtualEcu::sendIdentity},
    {'X', &VirtualEcu::restartOnCommand},
    {'a', &VirtualEcu::sendHalf<'a', MapKind::Ignition, false>},
    {247, &VirtualEcu::sendHalf<247, MapKind::Ignition, true>},
    {'f', &VirtualEcu::sendHalf<'f', MapKind::Fuel, false>},
    {245, &VirtualEcu::sendHalf<245, MapKind::Fuel, true>},
    {'m', &VirtualEcu::sendMisc},
    {'p', &VirtualEcu::sendPwmTable},
    {'o', &VirtualEcu::commit<MapKind::Pwm>},
    {'P', &VirtualEcu::takeCell<MapKind::Pwm>},
    {'i', &VirtualEcu::takeCell<MapKind::Ignition>},
    {'g', &VirtualEcu::takeCell<MapKind::Fuel>},
    {'A', &VirtualEcu::takeHalf<'A', MapKind::Ignition, false>},
    {248, &VirtualEcu::takeHalf<248, MapKind::Ignition, true>},
    {'F', &VirtualEcu::takeHalf<'F', MapKind::Fuel, false>},
    {246, &VirtualEcu::takeHalf<246, MapKind::Fuel, true>},
    {'b', &VirtualEcu::commit<MapKind::Ignition>},
    {'c', &VirtualEcu::commit<MapKind::Fuel>},
    {'M', &VirtualEcu::takeMisc},
    {'d', &VirtualEcu::commitMisc},
    {'W', &VirtualEcu::writeByte},
    {'R', &VirtualEcu::sendByte},
    {'U', &VirtualEcu::sendWord},
    {'e', &VirtualEcu::sendSettings},
    {'(', &VirtualEcu::teachClosed},
    {')', &VirtualEcu::teachOpen},
    {'S', &VirtualEcu::sendDebug},
    {'!', &VirtualEcu::cleanPlugs},
};

void VirtualEcu::command(std::uint8_t code, Body body, Micros at) {
    advanceEngine(at);
    for (const CommandRow& row : kCommands) {
        if (row.code == code) {
            (this->*row.action)(body, at);
            return;
        }
    }
}

void VirtualEcu::unknown(std::uint8_t, Micros at) {
    if (!busy(at)) {
        answer(kUnknownCommand, {}, at);
    }
}

void VirtualEcu::sendLive(Body, Micros at) {
    if (busy(at)) {
        return;
    }
    const auto channel = static_cast<MuxChannel>(muxTurn_);
    muxTurn_ = (muxTurn_ + 1) % static_cast<int>(MuxChannel::Count);
    const LivePayload payload = livePayload(engine_, calibration_, settings_.version, channel, sensors_);
    answer('R', std::span(payload).first(static_cast<std::size_t>(settings_.payloadLength)), at);
}

void VirtualEcu::sendIdentity(Body, Micros at) {
    const IdentityPayload payload = identityPayload(settings_);
    answer('y', std::span(payload).first(static_cast<std::size_t>(settings_.identityLength)), at);
}

template <std::uint8_t Code, MapKind Kind, bool Upper>
void VirtualEcu::sendHalf(Body, Micros at) {
    if (Upper && !memory_.type().large) {
        unknown(Code, at);
        return;
    }
    const Body map = memory_.working(Kind);
    answer(Code, map.subspan(Upper ? kHalfCells : 0, kHalfCells), at);
}

template <std::uint8_t Code, MapKind Kind, bool Upper>
void VirtualEcu::takeHalf(Body body, Micros at) {
    const bool taken = !holds(settings_.refused, Code) && memory_.fillHalf(Kind, Upper, body.first<kHalfCells>());
    if (!holds(settings_.muted, Code)) {
        const std::array<std::uint8_t, 1> status = {taken ? std::uint8_t{1} : std::uint8_t{0}};
        answer(Code, status, at);
    }
}

template <MapKind Kind>
void VirtualEcu::takeCell(Body body, Micros) {
    if (body[0] == body[1] && body[2] == body[3]) {
        memory_.setCell(Kind, body[0], body[2]);
    }
}

void VirtualEcu::sendPwmTable(Body, Micros at) {
    const MapCells& table = memory_.working(MapKind::Pwm);
    for (std::uint8_t i = 0; i < kHalfCells; ++i) {
        const std::array<std::uint8_t, 2> cell = {i, table.at(i)};
        answer('p', cell, at);
    }
}

void VirtualEcu::takeMisc(Body body, Micros) {
    memory_.setMisc(body.first<kMiscBytes>());
}

void VirtualEcu::writeByte(Body body, Micros at) {
    if (body[2] == body[3]) {
        memory_.write(addressIn(body), body[2], at);
    }
}

void VirtualEcu::sendByte(Body body, Micros at) {
    const std::array<std::uint8_t, 3> payload = {memory_.read(addressIn(body)), body[0], body[1]};
    answer('T', payload, at);
}

void VirtualEcu::sendWord(Body body, Micros at) {
    const int address = addressIn(body);
    const std::array<std::uint8_t, 4> payload = {memory_.read(address), memory_.read(address + 1), body[0], body[1]};
    answer('U', payload, at);
}

void VirtualEcu::teachClosed(Body, Micros at) {
    memory_.write(core::addressOf("MINTHR_OFF"), engine_.throttleSensor(), at);
}

void VirtualEcu::teachOpen(Body, Micros at) {
    memory_.write(core::addressOf("MAXTHR_OFF"), engine_.throttleSensor(), at);
}

void VirtualEcu::sendDebug(Body, Micros at) {
    if (busy(at)) {
        return;
    }
    answer('S', debugPayload(engine_.state(), debugTurn_++, settings_.ignitionFault, ignitionBox_), at);
}

}  // namespace korvane::ecu
