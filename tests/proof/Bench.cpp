#include "Bench.h"

#include <algorithm>
#include <cctype>

#include "Operations.h"
#include "keep/restore/FrmRestore.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::proof {

namespace {

constexpr int kFullRead = 25'000;  // ms, from the connect to the end of the read of all settings
constexpr int kAnswers = 2'500;    // ms, until a window has given up to wait for an answer
constexpr int kStart = 500;        // ms, of an ECU
constexpr int kRefresh = 4;        // the row of the live polls: one in 100 ms

std::string namelessChannels() {
    std::string text;
    for (int channel = 0; channel <= 30; ++channel) {
        const auto number = std::to_string(channel);
        text += "[Par" + number + "]\nname_" + number + "\ndescription\n1\n0\n10000\n";
    }
    return text;
}

void copyFiles(const support::TempFolder& from, const support::TempFolder& to) {
    std::filesystem::copy(from.path(), to.path(),
                          std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
}

// By a read of the EEPROM, of the misc block, or of the map that is kept there.
bool isTold(const link::ConnectionPanel& main, const core::ParameterAddresses& places, int address) {
    if (const auto cell = link::mapCellAt(places, address)) {
        return (main.ecuMaps.*cell->map).told(cell->cell).has_value();
    }
    const bool ofMisc = address >= ecu::kMiscAddress && address < ecu::kMiscAddress + ecu::kMiscBytes;
    return (ofMisc && main.ecuMisc.bytes()) ||
           main.ecuEeprom.cells().at(static_cast<std::size_t>(address)).known == link::Known::Told;
}

// A point of what a connection has left, made when the cable was pulled or the program ended.
bool isOfAnEnd(const std::string& reason) {
    return reason == "disconnect" || reason == "end of the program";
}

CellSet toldTo(program::Program& program) {
    CellSet told;
    for (std::size_t at = 0; at < told.size(); ++at) {
        told[at] = isTold(program.frmSarn2(), program.tables().addresses, static_cast<int>(at));
    }
    return told;
}

std::string withoutDigits(std::string text) {
    std::erase_if(text, [](unsigned char c) { return std::isdigit(c) != 0; });
    return text;
}

}  // namespace

Desk::Desk(FaultyEcu& device, const Desk* killed) : machine(&device) {
    machine.folder.write("Settings_par.ini", namelessChannels());
    if (killed != nullptr) {
        copyFiles(killed->atKill_->folder, machine.folder);
        machine.preferences = killed->atKill_->preferences;
        // Time does not go back for the ECU.
        machine.pump.runUntil(killed->machine.pump.now());
    }
    program.start();
}

void Desk::noteDisk() {
    atKill_.emplace();
    copyFiles(machine.folder, atKill_->folder);
    atKill_->preferences = machine.preferences;
}

void Desk::connect() {
    program.connectTo(1);
    program.frmSarn2().ComboRefresh.choose(kRefresh);
    wait(kFullRead);
}

controls::Window& Desk::window(std::string_view name) {
    const auto& loaded = machine.windows.loaded();
    const auto found =
        std::find_if(loaded.rbegin(), loaded.rend(), [&](const auto* each) { return each->name() == name; });
    if (found == loaded.rend()) {
        throw std::logic_error("no window " + std::string(name) + " is loaded");
    }
    return **found;
}

std::string Desk::words() {
    std::string text(link::nameOf(program.frmSarn2().linkState.state()));
    text += "\n" + program.frmMisc().saveReport().Text.get() + "\n" + verification();
    for (auto* const window : machine.windows.loaded()) {
        text += "\n" + withoutDigits(window->Caption);
        if (auto* const maps = dynamic_cast<maps::PaneWindow*>(window)) {
            text += "\n" + maps->line().watch().Text.get();
        }
        if (auto* const restore = dynamic_cast<keep::FrmRestore*>(window)) {
            text += "\n" + restore->lblState.Caption.get() + "\n" + restore->lblOffer.Caption.get();
        }
    }
    for (const auto& message : machine.dialogs.takeMessages()) {
        text += "\n" + message.text;
    }
    return text;
}

std::string Desk::verification() {
    std::string text = program.frmMisc().verifyReport().Text;
    for (auto* const window : machine.windows.loaded()) {
        if (auto* const maps = dynamic_cast<maps::PaneWindow*>(window)) {
            text += maps->verifyReport().Text.get();
        }
    }
    return text;
}

Bench::Bench(int type, std::vector<std::uint8_t> cells)
    : device([&] {
          ecu::EcuSettings settings;
          settings.type = type;
          settings.eeprom = std::move(cells);
          settings.drive.kind = ecu::DriveKind::Off;
          return settings;
      }()),
      desk(std::make_unique<Desk>(device)) {
    desk->connect();
    openMaps(*desk);
}

void Bench::reconnect() {
    if (!desk->program.frmSarn2().MSComm1.PortOpen()) {
        desk->connect();
    }
    openMaps(*desk);
}

void Bench::arm(const Try& what) {
    static_cast<void>(desk->words());
    told_ = toldTo(desk->program);
    device.arm(what, desk->machine.pump.now(), [this, fault = what.fault] { struck(fault); });
}

void Bench::struck(Fault fault) {
    if (fault == Fault::Killed) {
        killed_ = true;
        desk->noteDisk();
        return;
    }
    // The system tells the program of it as soon as that takes events.
    auto& machine = desk->machine;
    unplug_ = machine.pump.makeAlarm([&machine] { machine.line.pullOut(); }, platform::AlarmKind::Program);
    unplug_->callAt(machine.pump.now());
}

void Bench::settle() {
    while (desk->machine.line.pendingOutput() > 0) {
        desk->wait(1);
    }
    device.disarm();
    desk->wait(kAnswers);
    words_ = desk->words();
    verification_ = desk->verification();
    atEnd_ = stateOf(device.ecu());
    const auto& points = desk->program.keeper().points();
    const auto found = std::ranges::find_if_not(points, isOfAnEnd, &keep::PointEntry::reason);
    point_ = found == points.end() ? std::string() : found->name;
    if (killed_) {
        auto next = std::make_unique<Desk>(device, desk.get());
        unplug_.reset();
        desk = std::move(next);
        words_.clear();
    }
    device.plugIn();
    auto& machine = desk->machine;
    for (const auto& [key, value] :
         {std::pair{"power", "1"}, {"restart", "0"}, {"cut", "0"}, {"refuse", "none"}, {"mute", "none"}}) {
        static_cast<void>(device.ecu().set(key, value, machine.pump.now()));
    }
    machine.line.deviceChanged();
    desk->wait(kStart);
    words_ += desk->words();
}

}  // namespace korvane::proof
