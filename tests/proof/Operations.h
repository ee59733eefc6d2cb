// Every operation by which the program makes the ECU store something.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Bench.h"

namespace korvane::proof {

struct Operation {
    std::string name;
    int type;  // of the firmware
    // Brings what is to be stored onto the desk, on which the maps are open; the ECU still has what it had.
    std::function<void(Desk&)> edit;
    // Stores it, and returns when that has ended.
    std::function<void(Desk&)> store;
    // The halves of a map that the ECU acknowledges, as its keys name them.
    std::vector<std::string_view> halves = {};
    // Some of its cells are never read, unless the tuner reads them: no restore point knows them.
    bool storesUnread = false;
    // The tuner reads the EEPROM by a backup, which tells the cells that the settings window does not read.
    bool backsUp = false;
    // It is the restore of a point's settings: the way back is that of its journal.
    bool restores = false;
    // Of its bytes, which are tried at all: each, or every so many and the last.
    long step = 1;
    // After how many tries the program is asked for the way back, where all are tried: after each, or every so many.
    int asking = 1;
};

[[nodiscard]] const std::vector<Operation>& operations();

// Why the point was made that the restore brings back.
inline constexpr auto kRestoredPoint = "other settings";

// Opens the window of the ECU's maps, which reads them.
void openMaps(Desk& desk);
// Sends the maps on the desk, each that the firmware has.
void sendMaps(Desk& desk);
// Reads them, and all settings, into the desk.
void readAll(Desk& desk);
// Reads all cells from 0 to 1010.
void backUp(Desk& desk);

// The EEPROM of an ECU of this type before each operation.
[[nodiscard]] std::vector<std::uint8_t> cellsBefore(int type);

// A tune file in which everything is other than that.
[[nodiscard]] const std::string& otherTune(int type);

}  // namespace korvane::proof
