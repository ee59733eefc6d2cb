// A map that is read and sent as a whole, and cell by cell while the engine runs: fuel and ignition.
#pragma once

#include "link/Commands.h"
#include "maps/grid/RealtimeChanges.h"
#include "maps/panes/GridPane.h"
#include "maps/transfer/MapWriter.h"

namespace korvane::maps {

struct WholeMap {
    GridPaneNames names;
    const MapImages& images;
    const link::MapCommands& commands;
    const MapWriter::Kind& writer;
    std::int32_t featureBit;  // without it the buttons are disabled
    const char* loadFailure;  // the message when a tune from a file can't be shown
};

class WholeMapPane : public GridPane {
public:
    // `map` must outlive the pane.
    WholeMapPane(PaneWindow& window, const WholeMap& map, Halves halves, GridRules rules);

    void loadPane(std::int32_t features) override;
    void readPane() override;
    void showLoadedTune() override;
    void showAcceptedTune() override { showEdited(); }

private:
    void cellEdited(int cell) override;

    const WholeMap& map_;
    RealtimeChanges realtime_;
    MapWriter writer_;
};

}  // namespace korvane::maps
