#include "link/Dispatcher.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/TimeText.h"
#include "core/history/MapHistory.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "link/Commands.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"

namespace korvane::link {

namespace {

using core::checked;

constexpr std::size_t kHalf = EcuMap::kHalf;
constexpr int kFlashMilliseconds = 100;
constexpr int kIdentityPause = 300;
constexpr std::size_t kCaptionWidth = 30;

template <class Kind>
Kind& opened(Kind* window) {
    if (window == nullptr) {
        platform::raiseObjectNotSet();
    }
    return *window;
}

// A window without the part fails like one that is not open.
template <class Part>
Part& part(MapWindow* window) {
    return opened(partOf<Part>(window));
}

// The first `count` characters of a UTF-8 text.
std::string leftCharacters(const std::string& text, std::size_t count) {
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool startsCharacter = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
        if (startsCharacter && count-- == 0) {
            break;
        }
    }
    return text.substr(0, end);
}

void fillHalf(std::span<const std::uint8_t> payload, std::size_t offset, auto& in, auto& out) {
    for (std::size_t i = 0; i < kHalf; ++i) {
        const auto byte = checked(payload, i);
        checked(in, offset + i) = byte;
        checked(out, offset + i) = byte;
    }
}

std::span<const std::uint8_t> checkedHalf(std::span<const std::uint8_t> payload) {
    static_cast<void>(checked(payload, kHalf - 1));
    return payload.first(kHalf);
}

}  // namespace

Dispatcher::Dispatcher(platform::Machine& machine, ConnectionPanel& panel, core::SharedTables& tables, Windows& windows)
    : machine_(machine), panel_(panel), tables_(tables), windows_(windows), replaced_(tables, panel.ecuMaps) {}

void Dispatcher::DoCommand(std::uint8_t cmd, Payload payload) {
    const auto* const frame = std::find_if(std::begin(kEcuFrames), std::end(kEcuFrames),
                                           [cmd](const EcuFrame& each) { return each.code == cmd; });
    if (frame == std::end(kEcuFrames)) {
        return;
    }
    panel_.witnesses.tell(cmd, payload);
    try {
        if (panel_.diversion.take(cmd, payload)) {
            note(cmd, payload);
        } else {
            (this->*frame->handler)(payload);
        }
    } catch (const std::exception& error) {
        machine_.log.write(std::string("err docommand ") + error.what());
    }
}

void Dispatcher::note(std::uint8_t cmd, Payload payload) {
    auto& maps = panel_.ecuMaps;
    switch (cmd) {
        case kFuelMap.ask:
            return maps.fuel.read(0, checkedHalf(payload));
        case kFuelMap.askSecondHalf:
            return maps.fuel.read(kHalf, checkedHalf(payload));
        case kIgnitionMap.ask:
            return maps.ignition.read(0, checkedHalf(payload));
        case kIgnitionMap.askSecondHalf:
            return maps.ignition.read(kHalf, checkedHalf(payload));
        case kAskPwmTable:
            static_cast<void>(checked(payload, 1));
            return maps.pwm.read(payload[0], payload.subspan(1, 1));
        case kAskMiscBlock:
            return noteMisc(payload);
        case kEepromByteFrame:
            return noteEepromByte(checked(payload, 0), keyOf(cmd, payload).address);
        default:
            return;
    }
}

void Dispatcher::deviceStarted(Payload) {
    panel_.ecuMaps.restarted();
    panel_.window.Caption = "Korvane Tuner v1.3 by Dulmer,   Device started " + timeText();
}

void Dispatcher::alarmFlash(Payload) {
    panel_.window.BackColor = controls::kRed;
    panel_.TimerAlarm.restart(kFlashMilliseconds);
}

void Dispatcher::liveData(Payload payload) {
    decoder_->decodeLivePacket(payload);
}

void Dispatcher::unknownToDevice(Payload) {}

void Dispatcher::eepromByte(Payload payload) {
    const std::uint8_t value = checked(payload, 0);
    const int address = keyOf(kEepromByteFrame, payload).address;
    noteEepromByte(value, address);
    showEepromValue(value, address, false);
}

void Dispatcher::noteMisc(Payload payload) {
    MiscBytes block{};
    for (std::size_t i = 0; i < block.size(); ++i) {
        block.at(i) = checked(payload, i);
    }
    panel_.ecuMisc.has(block);
}

void Dispatcher::noteEepromByte(std::uint8_t value, int address) {
    checked(tables_.EEImage, address) = value;
    checked(tables_.EETime, address) = timeText();
    checked(tables_.EEParams, address).value = value;
    eepromTold(address, value);
}

void Dispatcher::eepromWord(Payload payload) {
    const std::uint8_t low = checked(payload, 0);
    const std::uint8_t high = checked(payload, 1);
    const int address = checked(payload, 2) + 256 * checked(payload, 3);
    const std::int32_t value = low + 256 * high;
    checked(tables_.EEImage, address) = low;
    checked(tables_.EEImage, address + 1) = high;
    checked(tables_.EETime, address) = timeText();
    checked(tables_.EETime, address + 1) = timeText();
    checked(tables_.EEParams, address).value = value;
    eepromTold(address, low);
    eepromTold(address + 1, high);
    showEepromValue(value, address, true);
}

void Dispatcher::eepromTold(int address, std::uint8_t byte) {
    panel_.ecuEeprom.told(address, byte);
    panel_.ecuMaps.eepromHas(tables_.addresses, address, byte);
}

// Byte replies are not given to the ordinary map windows, which show only the 16-bit limits.
void Dispatcher::showEepromValue(std::int32_t value, int address, bool is16) {
    if (windows_.frmMisc != nullptr) {
        windows_.frmMisc->UpdateReadEE(value, address, is16);
    }
    if (tables_.ignWindowOpen) {
        part<EepromPart>(windows_.frmMaps_QV_ign).UpdateReadEE(value, address, is16);
    }
    if (auto* const limits = partOf<EepromPart>(windows_.curMapWindow); is16 && limits != nullptr) {
        limits->UpdateReadEE(value, address, true);
    }
    if (windows_.frmMisc != nullptr) {
        windows_.frmMisc->setTextArvo(core::numberText(value).view());
    }
}

void Dispatcher::takeFuel(Payload payload, std::size_t first) {
    replaced_.arriving(core::EditedMap::Fuel, first, payload.first(std::min(payload.size(), kHalf)));
    {
        const core::MapHistory::Change change(history_, core::Cause::read(core::EditedMap::Fuel, first, kHalf));
        fillHalf(payload, first, tables_.FuelMapIn, tables_.FuelMapOut);
    }
    panel_.ecuMaps.fuel.read(first, payload.first(kHalf));
}

void Dispatcher::takeIgnition(Payload payload, std::size_t first) {
    replaced_.arriving(core::EditedMap::Ignition, first, payload.first(std::min(payload.size(), kHalf)));
    {
        const core::MapHistory::Change change(history_, core::Cause::read(core::EditedMap::Ignition, first, kHalf));
        fillHalf(payload, first, tables_.IgnMapIn, tables_.IgnMapOut);
    }
    panel_.ecuMaps.ignition.read(first, payload.first(kHalf));
}

void Dispatcher::fuelFirstHalf(Payload payload) {
    takeFuel(payload, 0);
    part<FuelMapPart>(windows_.curMapWindow).populateFuel();
    requestSecondHalf(kFuelMap.askSecondHalf);
    setMapCaption("Received 50% Fuel map ");
}

void Dispatcher::fuelSecondHalf(Payload payload) {
    takeFuel(payload, kHalf);
    part<FuelMapPart>(windows_.curMapWindow).populateFuel();
    setMapCaption("Received 100% Fuel map ");
}

void Dispatcher::ignitionFirstHalf(Payload payload) {
    takeIgnition(payload, 0);
    showIgnitionMap();
    requestSecondHalf(kIgnitionMap.askSecondHalf);
}

void Dispatcher::ignitionSecondHalf(Payload payload) {
    takeIgnition(payload, kHalf);
    showIgnitionMap();
}

void Dispatcher::showIgnitionMap() {
    MapWindow* const window = replyWindow();
    part<IgnitionMapPart>(window).populateIGN();
    window->setCaption("Received Ignition map " + timeText());
}

void Dispatcher::requestSecondHalf(std::uint8_t command) {
    if (core::hasLargeMaps(tables_.SWType)) {
        panel_.diversion.askedOrdinarily({command});
        panel_.MSComm1.Output(command);
    }
}

// The other three set the caption first: with no map window open their count is lost with the error.
void Dispatcher::fuelSent(Payload payload) {
    if (!refused(payload)) {
        panel_.ecuMaps.fuel.acknowledged(0);
        tables_.FuelSendAcks = core::toInt16(tables_.FuelSendAcks + 1);
        setMapCaption("Sent 50% of Inj map ");
    }
}

void Dispatcher::fuelSecondHalfSent(Payload payload) {
    if (!refused(payload)) {
        panel_.ecuMaps.fuel.acknowledged(kHalf);
        setMapCaption("Sent 100% of Inj map ");
        tables_.FuelSendAcks = core::toInt16(tables_.FuelSendAcks + 10);
    }
}

void Dispatcher::ignitionSent(Payload payload) {
    if (!refused(payload)) {
        panel_.ecuMaps.ignition.acknowledged(0);
        setMapCaption("Sent 50% of Ign map ");
        tables_.IgnSendAcks = core::toInt16(tables_.IgnSendAcks + 1);
    }
}

void Dispatcher::ignitionSecondHalfSent(Payload payload) {
    if (!refused(payload)) {
        panel_.ecuMaps.ignition.acknowledged(kHalf);
        setMapCaption("Sent 100% of Ign map ");
        tables_.IgnSendAcks = core::toInt16(tables_.IgnSendAcks + 10);
    }
}

bool Dispatcher::refused(Payload payload) {
    if (checked(payload, 0) != 0) {
        return false;
    }
    machine_.dialogs.show(
        {"Virhe", "Tiedon lähetys epäonnistui. Lähetä data uudelleen", platform::MessageIcon::Exclamation});
    return true;
}

void Dispatcher::miscBlock(Payload payload) {
    for (int i = 0; i < 9; ++i) {
        checked(tables_.MiscBlock, i + 1) = checked(payload, i);
    }
    noteMisc(payload);
    part<MiscPart>(replyWindow()).LoadMisc(false);
}

void Dispatcher::pwmCell(Payload payload) {
    const std::uint8_t cell = checked(payload, 0);
    const std::uint8_t value = checked(payload, 1);
    replaced_.arriving(core::EditedMap::Pwm, cell, payload.subspan(1, 1));
    {
        const core::MapHistory::Change change(history_, core::Cause::read(core::EditedMap::Pwm, cell, 1));
        checked(tables_.PwmMapIn, cell) = value;
        checked(tables_.PwmMapOut, cell) = value;
    }
    panel_.ecuMaps.pwm.read(cell, payload.subspan(1, 1));
    part<PwmMapPart>(windows_.curMapWindow).populatePWMOUT();
}

void Dispatcher::settingsBlock(Payload payload) {
    if (windows_.frmMisc != nullptr) {
        bool handled = false;
        windows_.frmMisc->LoadMisc2(payload, handled);
    }
}

void Dispatcher::lambdaBlock(Payload payload) {
    for (int i = 0; i < 10 && windows_.frmMisc != nullptr; ++i) {
        windows_.frmMisc->setLambdaSetpoint(i, checked(payload, i));
        windows_.frmMisc->setLambdaAuthority(i, checked(payload, 10 + i));
    }
}

void Dispatcher::identity(Payload payload) {
    showIdentity(payload);
    panel_.TimerGetSettings.Enabled = false;
    if (payload.size() < 5) {
        return;
    }
    if (panel_.MSComm1.PortOpen()) {  // a simulated one is no ECU
        panel_.ecuMaps.identified(payload);
    }
    tables_.SWType = payload[4];
    showFirmwareType();
    machine_.pump.sleep(kIdentityPause);
    core::InitParams(tables_, tables_.SWType);
}

void Dispatcher::showIdentity(Payload payload) {
    tables_.Features = checked(payload, 0) * 256 + checked(payload, 1);
    tables_.HwVersion = static_cast<float>((checked(payload, 2) * 256 + checked(payload, 3)) / 1000.0);
    checked(tables_.EEParams, tables_.addresses.SW_VER).value = tables_.HwVersion;
    panel_.lblHWVer.Caption = "hwVer: " + core::textOf(tables_.HwVersion);
    panel_.lblHWVer.Visible = true;
    core::InitTimeUnits(tables_);
    panel_.lblFeatures.Caption = core::textOf(tables_.Features);
}

void Dispatcher::showFirmwareType() {
    const auto padded = panel_.window.Caption.get() + "      ";
    panel_.window.Caption = leftCharacters(padded, kCaptionWidth) + checked(tables_.SWTypeNames, tables_.SWType);
}

void Dispatcher::ignitionDebug(Payload payload) {
    opened(windows_.frmIGNDebug).showDebugFrame(payload);
}

MapWindow* Dispatcher::replyWindow() const {
    return tables_.ignWindowOpen ? windows_.frmMaps_QV_ign : windows_.curMapWindow;
}

void Dispatcher::setMapCaption(std::string_view text) {
    part<MapWindow>(windows_.curMapWindow).setCaption(std::string(text) + timeText());
}

std::string Dispatcher::timeText() const {
    return core::timeText(machine_.pump.wallTime());
}

}  // namespace korvane::link
