// The 3D map view: one of the three edited maps as a chart over engine speed and load.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Chart.h"
#include "controls/Controls.h"
#include "controls/Window.h"
#include "core/tables/SharedTables.h"
#include "maps/Marks3D.h"

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
    // The table on show: "Fuel map", and "16 by 10, raw counts".
    [[nodiscard]] std::string_view tableName() const;
    [[nodiscard]] std::string tableScale() const;
    // "3 of 160 cells were never read"; empty where all were.
    [[nodiscard]] std::string unreadWords() const;

    Marks3D marks;
    // The map windows tell the cell that the engine runs in, and the cell of a table that has the focus in `window`.
    // That a window has none any more counts only if the last one was its own.
    void engineAt(int cell);
    void focusAt(std::int32_t table, int cell, const controls::Window& window);
    void noFocusIn(const controls::Window& window);
    // They tell as well which cells of a table have no value yet; a cell with a count has one, whatever was told.
    void unreadIn(std::int32_t table, const std::vector<bool>& cells);
    // No table has been read or loaded yet.
    void nothingRead();
    // What btnShow3D does.
    void open();

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void redraw();
    [[nodiscard]] std::int32_t shownTable() const;
    void showFocus() { marks.Focus = focusTable_ == shownTable() ? focusCell_ : Marks3D::kNoCell; }
    void showUnread();
    void writeLabels();
    void writeData(const core::MapImage& image);

    const core::SharedTables& tables_;
    std::int16_t columns_ = 0;
    std::int16_t rows_ = 0;
    std::int32_t mapNumber_ = 0;
    std::array<std::vector<bool>, 3> unread_;  // of fuel, ignition, PWM
    std::int32_t focusTable_ = 0;
    int focusCell_ = Marks3D::kNoCell;
    const controls::Window* focusWindow_ = nullptr;  // compared, never used
};

}  // namespace korvane::maps
