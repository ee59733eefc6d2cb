// Settings files, and after an 'L' setpoint files: any bytes give a status and tables, and tables that were read whole
// come back from a file of our own.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>

#include "core/Checked.h"
#include "core/Module1.h"
#include "core/SettingsFile.h"
#include "core/SharedTables.h"
#include "core/TableFile.h"
#include "platform/QueuedDialogs.h"
#include "platform/RuntimeError.h"

namespace {

using namespace korvane;
namespace fs = std::filesystem;

constexpr char kSetpoints = 'L';
constexpr std::size_t kSetpointLines = 181;  // index 0 is not used

// In memory where the system has such a place; gone with its owner.
class Folder {
public:
    Folder() { fs::create_directories(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code error;
        fs::remove_all(path, error);
    }

    const fs::path path = (fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
                          ("korvane-fuzz-settings-" + std::to_string(getpid()));
};

// One for the whole run of the target.
const fs::path& folder() {
    static const Folder folder;
    return folder.path;
}

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void write(const fs::path& file, const std::uint8_t* data, std::size_t size) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

bool isStatus(int status) {
    return (status >= core::kSettingsRead && status <= core::kSettingsNoPwm) ||
           (status >= core::kSettingsBadFuel && status <= core::kSettingsBadPwm);
}

// As the settings window does, whose image has the addresses that the ECU has.
void take(core::SharedTables& tables, std::int32_t value, std::int32_t addr, bool is16) {
    require(!is16);
    core::checked(tables.EEImage, addr) = static_cast<std::uint8_t>(value & 0xFF);
    core::checked(tables.EEParams, addr).value = value;
}

void comesBack(core::SharedTables& tables, platform::Dialogs& dialogs) {
    const auto file = folder() / "again.txt";
    const auto fuel = tables.FuelMapOut = tables.FuelMapIn;
    const auto ignition = tables.IgnMapOut = tables.IgnMapIn;
    const auto pwm = tables.PwmMapOut = tables.PwmMapIn;
    const auto misc = tables.MiscBlock;
    core::SaveSettingsFile(file, tables, 320, dialogs);
    tables.FuelMapIn.fill(0);
    tables.IgnMapIn.fill(0);
    std::fill_n(tables.PwmMapIn.begin(), 160, std::uint8_t{0});
    std::fill(tables.MiscBlock.begin() + 1, tables.MiscBlock.end(), std::uint8_t{0});
    const auto update = [&](std::int32_t value, std::int32_t addr, bool is16) { take(tables, value, addr, is16); };
    require(core::LoadSettingsFile(file, tables, update, dialogs) == core::kSettingsRead);
    require(tables.FuelMapIn == fuel && tables.IgnMapIn == ignition && tables.PwmMapIn == pwm);
    require(tables.MiscBlock == misc);
}

void readSettings(const fs::path& file) {
    const auto tables = std::make_unique<core::SharedTables>();
    platform::QueuedDialogs dialogs;
    core::InitParams(*tables, 11);
    const auto update = [&](std::int32_t value, std::int32_t addr, bool is16) { take(*tables, value, addr, is16); };
    const int status = core::LoadSettingsFile(file, *tables, update, dialogs);
    require(isStatus(status));
    require(core::settingsStatusText(status).empty() == (status == core::kSettingsRead));
    require(dialogs.takeMessages().size() <= (status == core::kSettingsRead ? 1U : 0U));
    if (status == core::kSettingsRead) {
        comesBack(*tables, dialogs);
        require(dialogs.takeMessages().empty());
    }
}

void readSetpoints(const fs::path& file) {
    std::array<std::string, kSetpointLines> lines;
    lines.front() = "kept";
    const auto load = core::LoadTextTable(file, lines);
    require(load.error == 0 || load.error == platform::kErrorSubscript);
    require(load.lastIndex >= 0 && static_cast<std::size_t>(load.lastIndex) < lines.size());
    require((load.error != 0) <= (static_cast<std::size_t>(load.lastIndex) + 1 == lines.size()));
    require(lines.front() == "kept");
    require(
        std::all_of(lines.begin() + load.lastIndex + 1, lines.end(), [](const auto& line) { return line.empty(); }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto file = folder() / "tune.txt";
    write(file, data + 1, size - 1);
    if (data[0] == kSetpoints) {
        readSetpoints(file);
    } else {
        readSettings(file);
    }
    return 0;
}
