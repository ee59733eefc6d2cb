#include "keep/compare/FileSides.h"

#include <algorithm>
#include <span>
#include <vector>

#include "core/Bytes.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "core/files/TextFile.h"
#include "link/EcuMap.h"
#include "live/EepromImage.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"

namespace korvane::keep {

namespace {

namespace fs = std::filesystem;

constexpr int kErrorContent = 321;  // "Invalid file format"
constexpr std::int32_t kByteMax = 255;
constexpr std::int32_t kWordMax = 65535;
constexpr std::size_t kUploaded = 1011;                             // lines of an image that an upload takes
constexpr std::size_t kLongestImage = core::kEepromSize;            // lines
constexpr int kLastCell = static_cast<int>(core::kEepromSize) - 3;  // of the EEPROM

// Keeps what would be shown.
class KeptWords : public platform::Dialogs {
public:
    void show(const platform::MessageBox& box) override { text = box.text; }
    [[nodiscard]] std::string choose(const platform::FileDialog&) override { return {}; }

    std::string text;
};

[[noreturn]] void refuse(const fs::path& path, const std::string& why) {
    throw platform::RuntimeError(kErrorContent, path.filename().string() + ": " + why);
}

template <class Read>
auto reading(const fs::path& path, Read&& read) {
    try {
        return read();
    } catch (const platform::RuntimeError& failure) {
        refuse(path, std::string("the file can't be read (") + failure.what() + ").");
    }
}

MapSide mapOf(const core::MapImage& image, std::size_t known, std::size_t size) {
    MapSide map{.bytes = {}, .size = static_cast<int>(size)};
    std::copy_n(image.begin(), known, map.bytes.begin());
    return map;
}

// Takes the rows of a tune's parameters in their order.
class Parameters {
public:
    explicit Parameters(Side& side) : side_(side) {}

    void take(std::int32_t value, std::int32_t address) {
        if (address < 0 || address > kLastCell || value < 0 || value > kWordMax || address == highByteOfWord_) {
            return;
        }
        core::checked(side_.eeprom, address) = core::lowByte(value);
        if (value > kByteMax) {
            highByteOfWord_ = address + 1;
            core::checked(side_.eeprom, highByteOfWord_) = core::highByte(value);
        }
    }

private:
    Side& side_;
    int highByteOfWord_ = -1;  // of the last one
};

MiscBytes miscOf(const core::MapImages& tables) {
    MiscBytes misc{};
    std::copy_n(tables.MiscBlock.begin() + 1, misc.size(), misc.begin());
    return misc;
}

bool hasMapsAndMisc(int status) {
    return status == core::kSettingsRead || status == core::kSettingsOldType || status == core::kSettingsNoPwm;
}

std::string tuneFault(int status) {
    const std::string words = core::settingsStatusText(status);
    const bool isNumber = words.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? "a damaged tune file (status " + words + ")." : "no tune file (" + words + ").";
}

// As long as an upload needs it, each line a byte.
void checkImage(const fs::path& path, const std::vector<std::string>& lines) {
    if (lines.size() < kUploaded) {
        refuse(path, "no EEPROM image: it ends at line " + std::to_string(lines.size()) + ", and an image has " +
                         std::to_string(kUploaded) + " lines at least.");
    }
    if (lines.size() > kLongestImage) {
        refuse(path, "no EEPROM image: it has more than " + std::to_string(kLongestImage) + " lines.");
    }
    const auto bad =
        std::find_if(lines.begin(), lines.end(), [](const std::string& line) { return !live::imageByte(line); });
    if (bad != lines.end()) {
        refuse(path,
               "no EEPROM image: line " + std::to_string(bad - lines.begin() + 1) + " is not a number from 0 to 255.");
    }
}

void takeImageByte(Side& side, const core::ParameterAddresses& places, int address, std::uint8_t byte) {
    side.eeprom.at(static_cast<std::size_t>(address)) = byte;
    constexpr std::array kMaps{&link::EcuMaps::fuel, &link::EcuMaps::ignition, &link::EcuMaps::pwm};
    if (const auto place = link::mapCellAt(places, address)) {
        const auto map = std::find(kMaps.begin(), kMaps.end(), place->map) - kMaps.begin();
        side.maps.at(static_cast<std::size_t>(map)).bytes.at(place->cell) = byte;
    }
}

}  // namespace

Side readTune(const fs::path& path) {
    Side side;
    side.name = "tune " + path.filename().string();
    core::MapImages tables;
    core::SettingsSizes sizes;
    KeptWords words;
    Parameters parameters(side);
    const auto take = [&](std::int32_t value, std::int32_t address, bool) { parameters.take(value, address); };
    const int status = reading(path, [&] { return core::LoadSettingsFile(path, tables, take, words, sizes); });
    if (!hasMapsAndMisc(status)) {
        refuse(path, tuneFault(status));
    }
    side.maps = {mapOf(tables.FuelMapIn, sizes.fuel, sizes.fuel),
                 mapOf(tables.IgnMapIn, sizes.ignition, sizes.ignition), mapOf(tables.PwmMapIn, sizes.pwm, sizes.fuel)};
    side.misc = miscOf(tables);
    if (status != core::kSettingsRead) {
        side.note = "An old tune file: no PWM map and no settings.";
    } else if (!words.text.empty()) {
        side.eeprom = {};
        side.note = "The parameters of this file can't be read: it has no settings.";
    }
    return side;
}

Side readImage(const fs::path& path, const core::ParameterAddresses& places) {
    const auto lines = reading(path, [&] { return core::readLines(path); });
    checkImage(path, lines);
    Side side;
    side.name = "image " + path.filename().string();
    side.note = "Of large maps an image has the first half.";
    for (std::size_t address = 0; address < lines.size() && address <= kLastCell; ++address) {
        const auto byte = live::imageByte(lines[address]).value_or(0);
        if (address < kUploaded || byte != 0) {
            takeImageByte(side, places, static_cast<int>(address), byte);
        }
    }
    return side;
}

}  // namespace korvane::keep
