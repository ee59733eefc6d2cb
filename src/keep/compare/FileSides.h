// Sides of a comparison that come from a file. Nothing of the program changes with them.
#pragma once

#include <filesystem>

#include "core/ParameterAddresses.h"
#include "keep/compare/Side.h"

namespace korvane::keep {

// A settings file. An old one without PWM table has no PWM map and no settings; one whose parameters can't be read has
// no settings.
//
// The value of a row of 16 bits is a word if it does not fit a byte; otherwise it is the low byte, and its high byte is
// known where its own row has it. RuntimeError, with a sentence for the user, for any other file.
[[nodiscard]] Side readTune(const std::filesystem::path& path);

// An EEPROM image: a line for each address, of which an upload takes those to 1010. Behind them a 0 stands for what has
// not been read. The first halves of the maps are in it at the places of this layout. RuntimeError as above.
[[nodiscard]] Side readImage(const std::filesystem::path& path, const core::ParameterAddresses& places);

}  // namespace korvane::keep
