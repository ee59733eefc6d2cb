#include "maps/panes/WholeMapPane.h"

#include <utility>

namespace korvane::maps {

WholeMapPane::WholeMapPane(PaneWindow& window, const WholeMap& map, Halves halves, GridRules rules)
    : GridPane(window, map.names, map.images, std::move(rules)),
      map_(map),
      realtime_(window.chkOnlineChanges, window.context().connection.MSComm1),
      writer_(window, map.writer, halves) {
    readButton().Click = [this] { paneWindow().line().request(map_.commands.ask); };
    sendButton().Click = [this] { writer_.write(); };
}

void WholeMapPane::loadPane(std::int32_t features) {
    GridPane::loadPane(features);
    readButton().Enabled = sendButton().Enabled = (features & map_.featureBit) != 0;
}

void WholeMapPane::readPane() {
    paneWindow().line().requestFirst(map_.commands.ask);
}

void WholeMapPane::showLoadedTune() {
    paneWindow().toldAs(map_.loadFailure, [this] { showReceived(); });
}

void WholeMapPane::cellEdited(int cell) {
    const std::uint8_t byte = editedByte(cell);
    if (!realtime_.send(map_.commands.changeCell, cell, byte)) {
        return;
    }
    const auto at = static_cast<std::size_t>(cell);
    auto& connection = paneWindow().context().connection;
    if (connection.linkState.isHeard()) {
        (connection.ecuMaps.*map_.images.inEcu).changed(at, byte);
    }
    if (auto* const history = paneWindow().context().history) {
        history->reachedEngine({map_.images.inHistory, at});
    }
}

}  // namespace korvane::maps
