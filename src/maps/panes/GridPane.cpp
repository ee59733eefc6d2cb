#include "maps/panes/GridPane.h"

#include <algorithm>
#include <utility>

#include "core/Checked.h"
#include "maps/Frm3Dmap.h"

namespace korvane::maps {

GridPane::GridPane(PaneWindow& window, const GridPaneNames& names, const MapImages& images, GridRules rules)
    : MapPane(window),
      images_(images),
      noun_(names.noun),
      mapFrame_(window, names.frame.name),
      mapGrid_(window, names.grid, window.geometry, mapFrame_),
      readButton_(window, names.read.name),
      sendButton_(window, names.send.name),
      editor_(window, mapGrid_, window.context().tables, connected(std::move(rules))) {
    mapFrame_.Caption = names.frame.caption;
    readButton_.Caption = names.read.caption;
    sendButton_.Caption = names.send.caption;
}

GridRules GridPane::connected(GridRules rules) {
    rules.image = images_.edited;
    rules.map = images_.inHistory;
    rules.history = paneWindow().context().history;
    rules.redraw = [this] { showEdited(); };
    rules.redrawCell = [this](int cell) { redrawCell(cell); };
    rules.cellEdited = [this](int cell) { cellEdited(cell); };
    rules.focusMoved = [this](int cell, bool has) {
        auto& view = paneWindow().context().frm3Dmap;
        if (has) {
            view.focusAt(images_.number, cell, paneWindow());
        } else {
            view.noFocusIn(paneWindow());
        }
    };
    return rules;
}

void GridPane::redrawCell(int) {
    showEdited();
}

void GridPane::cellEdited(int) {}

std::uint8_t GridPane::editedByte(int cell) const {
    return core::checked(tables().*images_.edited, cell);
}

std::string GridPane::cellStatus(int cell) {
    if (mapGrid_.fill.isUnread(cell)) {
        return neverReadWords(noun_, mapGrid_.geometry, cell);
    }
    const std::uint8_t edited = editedByte(cell);
    const std::uint8_t received = core::checked(tables().*images_.received, cell);
    const auto& display = mapDisplay();
    const auto reading = display.readingOf(cell, edited);
    return cellWords(noun_, mapGrid_.geometry, cell,
                     {.edited = {reading.number, edited},
                      .received = {display.readingOf(cell, received).number, received},
                      .tooLong = reading.tooLong,
                      .power = display.powerOf(cell, edited),
                      .injectorSize = tables().NewInjectorSize});
}

std::string GridPane::blockStatus() const {
    const auto range = blockRange(mapGrid_);
    if (!range || mapGrid_.fill.NeverRead) {
        return {};
    }
    double sum = 0;
    int unread = 0;
    for (int cell = range->first; cell <= range->last; ++cell) {
        if (mapGrid_.fill.isUnread(cell)) {
            ++unread;
        } else {
            sum += shownNumber(cell);
        }
    }
    return blockWords(noun_, *range, sum, unread);
}

std::optional<UnsentOfMap> GridPane::unsentStatus() const {
    return UnsentOfMap{noun_.inside, unsentCells(paneWindow().context(), images_, mapGrid_.geometry)};
}

std::optional<MapPane::Target> GridPane::targetAt(int cell) const {
    return Target{images_, blockRange(mapGrid_).value_or(CellRange{cell, cell})};
}

void GridPane::showWorkingMap(core::EditedMap map) {
    if (map == images_.inHistory) {
        showEdited();
    }
}

std::optional<StoreOfMap> GridPane::storeStatus() const {
    return StoreOfMap{noun_.inside, (paneWindow().context().connection.ecuMaps.*images_.inEcu).store()};
}

std::optional<MapPane::Sends> GridPane::sends() const {
    if (!sendButton_.Enabled) {
        return {};
    }
    const auto& inEcu = paneWindow().context().connection.ecuMaps.*images_.inEcu;
    bool isRead = true;
    for (int cell = images_.firstKept; cell <= std::min(images_.lastSent, mapGrid_.geometry.cells() - 1); ++cell) {
        isRead = isRead && inEcu.isFresh(static_cast<std::size_t>(cell));
    }
    return Sends{noun_.inside, images_.part, isRead};
}

void GridPane::loadPane(std::int32_t) {
    mapGrid_.place();
}

// What was sent without a read is no longer unread once the ECU has acknowledged it.
void GridPane::tickPane() {
    if (!mapGrid_.fill.Unread.get().empty()) {
        mapDisplay().noteFill();
    }
}

void GridPane::showReceived() {
    const controls::Window::Stay stay(paneWindow());
    mapDisplay().showReceived();
}

void GridPane::showEdited() {
    const controls::Window::Stay stay(paneWindow());
    mapDisplay().showEdited();
}

}  // namespace korvane::maps
