// The service tools of the settings window: the list of parameters, the raw EEPROM tools, the editor of the live
// channels, and the program's own option.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "fields/CellVerification.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// Sets the handlers of its controls. The raw tools check nothing: a value that does not fit its target ends in one
// message box, and what was sent before stays sent.
class ParameterTools {
public:
    // `verification` reads back what the raw tools have written; null: nobody does.
    ParameterTools(MiscControls& window, core::SharedTables& tables, core::EepromAccess& eeprom,
                   fields::CellVerification* verification = nullptr);

    // Called when a channel has been renamed.
    std::function<void()> channelRenamed;

    // Fills the lists of parameters and of channels and picks the first channel. Called when the window loads.
    void fill();

private:
    void ListView1_ItemClick(int row);
    void read(void (core::EepromAccess::*ask)(std::int16_t, std::int32_t, bool));
    void announce(int address, int last) const;
    // What WriteEE sends to an address.
    [[nodiscard]] fields::SavedValue sentTo(int address, std::int32_t value) const;
    [[nodiscard]] bool verifies() const;
    void Command1_Click();
    void btnWriteEE16bit_Click();
    void Combo1_Click();
    void btnSaveParam_Click();
    void Command3_Click();

    // RuntimeError 6, with a sentence for the user, for a number that its target can't hold.
    [[nodiscard]] std::int16_t address() const;
    // Runs one of the raw tools; a failure is shown in a message box.
    template <class Tool>
    void trapped(Tool&& tool);

    MiscControls& window_;
    core::SharedTables& tables_;
    core::EepromAccess& eeprom_;
    fields::CellVerification* verification_;
};

}  // namespace korvane::settings
