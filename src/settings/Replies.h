// Brings values of settings from the ECU or a settings file to the controls that show them.
#pragma once

#include <cstdint>
#include <span>

#include "fields/Fields.h"
#include "platform/Nesting.h"
#include "settings/MiscContext.h"

namespace korvane::settings {

class Replies {
public:
    Replies(const MiscContext& context, fields::Fields& fields);

    // As fields::Fields::take(); a value that no row takes is shown in TextArvo.
    void UpdateReadEE(std::int32_t value, int addr, bool is16, fields::From from = fields::From::Ecu);

    // The settings block, 19 bytes:
    //
    //     0 acceleration pump, 10 cells   10 start help   11 choke   12 voltage, 4 cells   16 charge time
    //     17 throttle closed   18 throttle fully open
    //
    // Takes 600 ms, in which the poll is stopped. RuntimeError 9 at the first byte that is missing.
    void LoadMisc2(std::span<const std::uint8_t> payload, bool& handled);

    // Marks the acceleration cell in use, 0 to 9; any other index does not move the mark.
    void MarkAccelCell(int index);

private:
    void showBlock(std::span<const std::uint8_t> payload);
    void show(fields::Address address, std::uint8_t value, int cell = 0);
    void pause();

    const MiscContext& context_;
    fields::Fields& fields_;
    platform::Nesting pauses_;
    int markedCell_ = -1;
};

}  // namespace korvane::settings
