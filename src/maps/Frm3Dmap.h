// The 3D map view: one of the three edited maps as a chart over engine speed and load.
#pragma once

#include <cstdint>

#include "controls/Chart.h"
#include "controls/Controls.h"
#include "controls/Window.h"
#include "core/tables/SharedTables.h"

namespace korvane::maps {

// The tables by the number that Update3D takes.
inline constexpr std::int32_t kFuelTable = 1;
inline constexpr std::int32_t kIgnitionTable = 2;
inline constexpr std::int32_t kPwmTable = 3;

// Loaded hidden at the program's start, one for the whole run: its close box hides it. Refreshes only once it has been
// opened: while its Tag is empty Update3D does nothing.
class Frm3Dmap : public controls::Window {
public:
    Frm3Dmap(platform::Machine& machine, const core::SharedTables& tables);

    controls::Chart MSChart1{*this, "MSChart1"};
    controls::CommandButton Command1{*this, "Command1"};  // "update"

    // Stored for the next Update3D.
    void setMapSizes(std::int16_t columns, std::int16_t rows);
    // Any number that is not fuel's or PWM's is ignition; 99 keeps the table that is shown. A failure is written to the
    // debug log.
    void Update3D(std::int32_t mapNumber);
    // The number of the table that is shown, as passed to Update3D; 0 before the first call.
    [[nodiscard]] std::int32_t mapNumber() const { return mapNumber_; }
    // What btnShow3D does.
    void open();

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void redraw();
    void writeLabels();
    void writeData(const core::MapImage& image);

    const core::SharedTables& tables_;
    std::int16_t columns_ = 0;
    std::int16_t rows_ = 0;
    std::int32_t mapNumber_ = 0;
};

}  // namespace korvane::maps
