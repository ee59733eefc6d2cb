#include "maps/MapFiles.h"

#include <algorithm>
#include <array>
#include <limits>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/SettingsFile.h"
#include "core/TableFile.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

using platform::FileDialog;

constexpr const char* kSettingsFilter = "All Files (*.txt)|*.txt";
constexpr const char* kSetpointFilter = "All Files (*.lam)|*.lam";

constexpr int kSetpoints = 160;
constexpr std::size_t kWrittenEntries = kSetpoints + 1;  // the writer leaves out the last one
constexpr std::size_t kReadEntries = 181;                // the reader begins at entry 1

// A number as the settings and setpoint files have it.
std::string printed(float number) {
    std::string text = core::textOf(number) + ' ';
    return text.starts_with('-') ? text : ' ' + text;
}

float setpointOf(const std::string& line) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(core::val(line), -kLargest, kLargest));
}

}  // namespace

MapFiles::MapFiles(MapControls& window, const MapContext& context, MapDisplay& display, MapTransfer& transfer)
    : window_(window), context_(context), display_(display), transfer_(transfer) {
    window_.btnSave.Click = [this] { trapped("Error savefile: ", [this] { save(); }); };
    window_.btnLoad.Click = [this] { trapped("Error loadfile: ", [this] { load(); }); };
    window_.btnSaveLambdaSetpoint.Click = [this] { saveSetpoints(); };
    window_.btnloadLambdaSetpoint.Click = [this] { loadSetpoints(); };
}

void MapFiles::trapped(const std::string& failureText, const std::function<void()>& operation) {
    try {
        operation();
    } catch (const platform::RuntimeError& failure) {
        tell(failureText + failure.what());
    }
}

void MapFiles::tell(const std::string& text) {
    window_.machine().dialogs.show({"", text});
}

void MapFiles::save() {
    auto& dialogs = window_.machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Save, "Save Settings", kSettingsFilter});
    if (path.empty()) {
        return;
    }
    context_.tables.SaveFileName = path;
    core::SaveSettingsFile(path, context_.tables, core::toInt16(window_.fuel.geometry.cells()), dialogs);
}

void MapFiles::load() {
    auto& dialogs = window_.machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Open, "Open Settings file", kSettingsFilter});
    if (path.empty()) {
        return;
    }
    context_.tables.LoadFileName = path;
    const int status = core::LoadSettingsFile(path, context_.tables, {}, dialogs);
    if (status != core::kSettingsRead) {
        tell("Error loading data:\r\n" + core::settingsStatusText(status));
    }
    if (status == core::kSettingsRead || status == core::kSettingsOldType || status == core::kSettingsNoPwm) {
        accept(status == core::kSettingsRead);
    }
}

void MapFiles::accept(bool withPwm) {
    auto& tables = context_.tables;
    transfer_.showMiscOfFile();
    showReceived();
    tables.FuelMapOut = tables.FuelMapIn;
    tables.IgnMapOut = tables.IgnMapIn;
    if (withPwm) {
        acceptPwm();
    }
    display_.populateFuelOUT();
    display_.populateIGNOUT();
}

void MapFiles::showReceived() {
    const auto show = [this](const char* failureText, void (MapDisplay::*populate)()) {
        try {
            (display_.*populate)();
        } catch (const platform::RuntimeError&) {
            tell(failureText);
        }
    };
    show("Virhe fuel kartassa", &MapDisplay::populateFuel);
    show("Virhe sytytys kartassa", &MapDisplay::populateIGN);
}

void MapFiles::acceptPwm() {
    auto& tables = context_.tables;
    tables.PwmMapOut = tables.PwmMapIn;
    for (int cell = 0; cell < window_.pwm.geometry.cells(); ++cell) {
        window_.pwm(cell).Text = core::numberText(core::checked(tables.PwmMapOut, cell) * tables.TickD).view();
    }
}

void MapFiles::saveSetpoints() {
    auto& dialogs = window_.machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Save, "Save Settings", kSetpointFilter, false});
    if (path.empty()) {
        return;
    }
    std::array<std::string, kWrittenEntries> lines;
    for (int cell = 0; cell < kSetpoints; ++cell) {
        core::checked(lines, cell) = printed(context_.analyser.Setpointget(cell));
    }
    core::SaveTextTable(path, lines, dialogs);
}

// A file that can't be read at all leaves the targets alone; one that is too short sets the rest to 0.
void MapFiles::loadSetpoints() {
    const std::string path =
        window_.machine().dialogs.choose({FileDialog::Kind::Open, "Load Settings", kSetpointFilter});
    if (path.empty()) {
        return;
    }
    std::array<std::string, kReadEntries> lines;
    const auto load = core::LoadTextTable(path, lines);
    if (load.error != 0 && load.lastIndex == 0) {
        tell("The lambda file can't be read:\r\n" + path);
        return;
    }
    for (int entry = 1; entry <= kSetpoints; ++entry) {
        context_.analyser.Setpoint(setpointOf(core::checked(lines, entry)), entry - 1);
    }
}

}  // namespace korvane::maps
