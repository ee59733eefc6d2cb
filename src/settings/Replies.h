// What the ECU, or a settings file, says of a setting, on its way to the control that shows it.
#pragma once

#include <cstdint>
#include <span>

#include "settings/MiscContext.h"
#include "settings/ScaledFields.h"

namespace korvane::settings {

class Replies {
public:
    Replies(const MiscContext& context, ScaledFields& scaled) : context_(context), scaled_(scaled) {}

    // Keeps EEImage current and shows `value` where the first row of the routing that holds `addr` says; what no row
    // holds goes to TextArvo. RuntimeError 9 for an address that the EEPROM has not got, 6 for a negative word, 380 for
    // a launch mode that the list has not got.
    void UpdateReadEE(std::int32_t value, int addr, bool is16);

    // The settings block, 19 bytes:
    //
    //     0 acceleration pump, 10 cells   10 start help   11 choke   12 voltage, 4 cells   16 charge time
    //     17 throttle closed   18 throttle fully open
    //
    // Takes 600 ms in which the poll stands still. RuntimeError 9 at the first byte that is missing.
    void LoadMisc2(std::span<const std::uint8_t> payload, bool& handled);

    // Marks the acceleration cell in use, 0 to 9; any other index leaves the mark where it is.
    void MarkAccelCell(int index);

private:
    struct Row;
    static std::span<const Row> rows();

    void keepImage(std::int32_t value, int addr, bool is16);
    void dispatch(const Row& row, std::int32_t value, int cell);

    void showVolt(std::int32_t value);
    void showFlags(std::int32_t value);
    void showLoadMode(std::int32_t value);
    void showLaunchMode(std::int32_t value);
    void showMultiplier(std::int32_t value);
    void showPwmMode(std::int32_t value);
    void showLambdaType(std::int32_t value);
    void addSetpointHigh(std::int32_t value);

    [[nodiscard]] bool bit(std::int32_t value, int number) const;
    void showWord(controls::TextBox& box, int addr);
    // The option of optInj8ms for the injection mode and its multiplier.
    [[nodiscard]] int longestInjection(std::int32_t multiplier) const;
    void showBlock(std::span<const std::uint8_t> payload);
    void pause();

    const MiscContext& context_;
    ScaledFields& scaled_;
    int pauses_ = 0;
    int markedCell_ = -1;
};

}  // namespace korvane::settings
