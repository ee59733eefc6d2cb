#include "maps/Frm3Dmap.h"

#include <algorithm>
#include <string>

#include "core/Checked.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::maps {

namespace {

constexpr std::int32_t kSameTable = 99;
constexpr int kMargin = 200;  // twips

const core::MapImage& imageOf(const core::SharedTables& tables, std::int32_t table) {
    switch (table) {
        case kFuelTable:
            return tables.FuelMapOut;
        case kPwmTable:
            return tables.PwmMapOut;
        default:
            return tables.IgnMapOut;
    }
}

std::size_t placeOf(std::int32_t table) {
    return static_cast<std::size_t>(table - kFuelTable);
}

std::string_view nameOf(std::int32_t table) {
    switch (table) {
        case kFuelTable:
            return "Fuel map";
        case kPwmTable:
            return "PWM table";
        default:
            return "Ignition map";
    }
}

}  // namespace

Frm3Dmap::Frm3Dmap(platform::Machine& machine, const core::SharedTables& tables)
    : Window(machine, "frm3Dmap"), tables_(tables) {
    hideOnClose();
    Caption = "3D map";
    Command1.Caption = "update";
    Command1.Click = [this] { Update3D(kSameTable); };
    Width = 900 * 15;
    Height = 600 * 15;
}

void Frm3Dmap::setMapSizes(std::int16_t columns, std::int16_t rows) {
    columns_ = columns;
    rows_ = rows;
}

void Frm3Dmap::Update3D(std::int32_t mapNumber) {
    if (Tag.get().empty()) {
        return;
    }
    if (mapNumber != kSameTable) {
        mapNumber_ = mapNumber;
    }
    enter("Update3D", [this] { redraw(); });
}

std::int32_t Frm3Dmap::shownTable() const {
    return mapNumber_ == kFuelTable || mapNumber_ == kPwmTable ? mapNumber_ : kIgnitionTable;
}

std::string_view Frm3Dmap::tableName() const {
    return nameOf(shownTable());
}

std::string Frm3Dmap::tableScale() const {
    return std::to_string(columns_) + " by " + std::to_string(rows_) + ", raw counts";
}

std::string Frm3Dmap::unreadWords() const {
    const auto& cells = marks.Unread.get();
    const auto unread = std::count(cells.begin(), cells.end(), true);
    return unread == 0 ? std::string()
                       : std::to_string(unread) + " of " + std::to_string(cells.size()) +
                             (unread == 1 ? " cells was never read" : " cells were never read");
}

// Two map windows may have maps of different sizes: what counts is the one on show here.
void Frm3Dmap::engineAt(int cell) {
    marks.Engine = cell >= 0 && cell < columns_ * rows_ ? cell : Marks3D::kNoCell;
}

void Frm3Dmap::focusAt(std::int32_t table, int cell, const controls::Window& window) {
    focusTable_ = table;
    focusCell_ = cell;
    focusWindow_ = &window;
    showFocus();
}

void Frm3Dmap::noFocusIn(const controls::Window& window) {
    if (focusWindow_ == &window) {
        focusCell_ = Marks3D::kNoCell;
        showFocus();
    }
}

void Frm3Dmap::unreadIn(std::int32_t table, const std::vector<bool>& cells) {
    core::checked(unread_, placeOf(table)) = cells;
    showUnread();
}

void Frm3Dmap::nothingRead() {
    unread_.fill(std::vector<bool>(core::kMapSize, true));
    showUnread();
}

// Of a layout of more cells than an image holds only those count that it has.
void Frm3Dmap::showUnread() {
    const auto& told = unread_.at(placeOf(shownTable()));
    const auto& image = imageOf(tables_, mapNumber_);
    std::vector<bool> cells;
    for (int cell = 0; cell < std::min(columns_ * rows_, static_cast<int>(image.size())); ++cell) {
        const auto place = static_cast<std::size_t>(cell);
        cells.push_back(place < told.size() && told[place] && core::checked(image, cell) == 0);
    }
    const bool none = std::find(cells.begin(), cells.end(), true) == cells.end();
    marks.Unread = none ? std::vector<bool>() : cells;
}

void Frm3Dmap::redraw() {
    showFocus();
    showUnread();
    MSChart1.RowCount = rows_;
    MSChart1.ColumnCount = columns_;
    writeLabels();
    writeData(imageOf(tables_, mapNumber_));
    MSChart1.Refresh();
}

// A column's label is the same in every row.
void Frm3Dmap::writeLabels() {
    for (int column = 1; column <= columns_; ++column) {
        MSChart1.Column = column;
        MSChart1.setColumnLabel(std::to_string((column + 1) * 500) + " RPM");
    }
    for (int row = 1; row <= rows_; ++row) {
        MSChart1.Row = row;
        MSChart1.setRowLabel(std::to_string((row - 1) * 10) + " - " + std::to_string(row * 10) + " %");
    }
}

// The raw bytes, not milliseconds or degrees. A layout of more cells than an image holds fails where they end.
void Frm3Dmap::writeData(const core::MapImage& image) {
    for (int cell = 0; cell < columns_ * rows_; ++cell) {
        MSChart1.Row = cell / columns_ + 1;
        MSChart1.Column = cell % columns_ + 1;
        MSChart1.setData(std::to_string(core::checked(image, cell)));
    }
}

void Frm3Dmap::open() {
    show();
    Tag = "VISIBLE";
    Update3D(kSameTable);
}

void Frm3Dmap::Form_Load() {
    columns_ = kOrdinaryMaps.columns;
    rows_ = kOrdinaryMaps.rows;
    Tag = "";
    Command1.press();
    Form_Resize();
}

void Frm3Dmap::Form_Resize() {
    MSChart1.place(kMargin / 2, kMargin / 2, std::max(kMargin, Width.get()) - kMargin,
                   std::max(kMargin, Height.get()) - kMargin);
}

}  // namespace korvane::maps
