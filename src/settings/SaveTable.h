// The groups of settings as data: what each save button writes, from where, in which order and with which pauses.
#pragma once

#include <cstdint>
#include <span>
#include <variant>

#include "core/SharedTables.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// How a box becomes what is written. Numbers are rounded half to even; what is no number is 0.
enum class Taken {
    Byte,      // the text's number
    Tag,       // the raw byte of a scaled box
    Half,      // half the text's number
    Counts,    // the text's milliseconds as counts
    Word,      // the text's number as 16 bits in one call; its row has the mark of a word
    TwoBytes,  // the text's number as 16 bits: the low byte, then the high byte to the next address
};

// Waits for `ms` behind every `every`-th cell of a row, and behind its last one as `atEnd` says.
struct Pause {
    int ms = 0;
    int every = 1;
    bool atEnd = true;
};

using SavedBox = controls::TextBox MiscControls::*;
using SavedBoxes = controls::ControlArray<controls::TextBox> MiscControls::*;  // cell i to the address + i
using SavedList = controls::ComboBox MiscControls::*;                          // its row
using SavedChoice = std::uint8_t (*)(MiscControls&, const core::SharedTables&);

struct SaveRow {
    int core::ParameterAddresses::*address;
    std::variant<SavedBox, SavedBoxes, SavedList, SavedChoice> source;
    Taken taken = Taken::Byte;
    Pause pause = {};
};

struct SaveGroup {
    controls::CommandButton MiscControls::*button;
    bool stopsPoll;  // the poll stands still from the press to the end
    std::span<const SaveRow> rows;
};

[[nodiscard]] std::span<const SaveGroup> saveGroups();

}  // namespace korvane::settings
