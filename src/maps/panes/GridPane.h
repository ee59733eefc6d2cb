// A pane with a map: its grid, its editing, and the buttons that read it from the ECU and send it.
#pragma once

#include <string_view>

#include "maps/grid/GridEditor.h"
#include "maps/grid/MapDisplay.h"
#include "maps/grid/MapGrid.h"
#include "maps/grid/MapImages.h"
#include "maps/grid/StatusWords.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

// A control's name, a literal, and what it says.
struct NamedCaption {
    std::string_view name;
    std::string_view caption;
};

struct GridPaneNames {
    NamedCaption frame;
    MapGridNames grid;
    NamedCaption read;
    NamedCaption send;
    MapNoun noun;
};

// The panes of the single maps call its controls by the names that scripts know.
class GridPane : public MapPane {
public:
    // `rules` say how a key changes a byte; what is drawn and sent behind it is set here.
    GridPane(PaneWindow& window, const GridPaneNames& names, const MapImages& images, GridRules rules);

    [[nodiscard]] MapGrid* paneGrid() override { return &mapGrid_; }
    void loadPane(std::int32_t features) override;
    void tickPane() override;
    [[nodiscard]] std::string cellStatus(int cell) override;
    [[nodiscard]] std::string blockStatus() const override;
    [[nodiscard]] std::optional<UnsentOfMap> unsentStatus() const override;
    [[nodiscard]] std::optional<Target> targetAt(int cell) const override;
    void showWorkingMap(core::EditedMap map) override;
    [[nodiscard]] std::optional<StoreOfMap> storeStatus() const override;
    [[nodiscard]] std::optional<Sends> sends() const override;

protected:
    [[nodiscard]] virtual const MapDisplay& mapDisplay() const = 0;
    [[nodiscard]] virtual MapDisplay& mapDisplay() = 0;
    // After the step of a cell: how it is drawn anew, and what else then happens.
    virtual void redrawCell(int cell);
    virtual void cellEdited(int cell);

    // Show the image as received, or as edited. Called without Window::enter(); events may run in them.
    void showReceived();
    void showEdited();
    // RuntimeError 9 for a cell outside the grid; nothing is changed then.
    void editCell(int index, int keyCode, int shift, Hand hand = Hand::Tuner) {
        editor_.keyDown(index, keyCode, shift, hand);
    }

    [[nodiscard]] controls::Frame& mapFrame() { return mapFrame_; }
    [[nodiscard]] MapGrid& mapGrid() { return mapGrid_; }
    [[nodiscard]] controls::CommandButton& readButton() { return readButton_; }
    [[nodiscard]] controls::CommandButton& sendButton() { return sendButton_; }
    [[nodiscard]] core::SharedTables& tables() const { return paneWindow().context().tables; }
    [[nodiscard]] std::uint8_t editedByte(int cell) const;

private:
    [[nodiscard]] GridRules connected(GridRules rules);
    [[nodiscard]] double shownNumber(int cell) const { return mapDisplay().readingOf(cell, editedByte(cell)).number; }

    const MapImages& images_;
    MapNoun noun_;
    controls::Frame mapFrame_;
    MapGrid mapGrid_;
    controls::CommandButton readButton_, sendButton_;
    GridEditor editor_;
};

}  // namespace korvane::maps
