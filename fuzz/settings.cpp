// Settings files: any bytes give a status and tables, and tables that were read whole come back from a file of our own.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "Support.h"
#include "core/Checked.h"
#include "core/files/SettingsFile.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"

namespace {

using namespace korvane;
using fuzz::require;
namespace fs = std::filesystem;

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

void comesBack(core::SharedTables& tables, const fs::path& file, platform::Dialogs& dialogs) {
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
        comesBack(*tables, file.parent_path() / "again.txt", dialogs);
        require(dialogs.takeMessages().empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const support::TempFolder folder;
    readSettings(folder.write("tune.txt", fuzz::textOf({data, size})));
    return 0;
}
