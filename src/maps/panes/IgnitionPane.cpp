#include "maps/panes/IgnitionPane.h"

#include "core/Checked.h"

namespace korvane::maps {

namespace {

constexpr auto kRead = link::kAskIgnitionMap;
constexpr auto kChange = link::kChangeIgnitionCell;

}  // namespace

IgnitionPane::IgnitionPane(PaneWindow& window, Halves halves, Pointing pointing)
    : MapPane(window),
      FrameIgn(window, "FrameIgn"),
      ign(window, {"txtIgn", "lblRpmI", "lblMapI"}, window.geometry, FrameIgn),
      btnReadIgn(window, "btnReadIgn"),
      btnWriteIgn(window, "btnWriteIgn"),
      display_(ign, window.context().tables, window.context().frm3Dmap),
      realtime_(window.chkOnlineChanges, window.context().connection.MSComm1),
      editor_(window, ign, window.context().tables, rules(pointing)),
      writer_(window, MapWriter::kIgnition, halves) {
    FrameIgn.Caption = "Ignition [deg]";
    btnReadIgn.Caption = "Read Ign Values";
    btnReadIgn.Click = [&window] { window.line().request(kRead); };
    btnWriteIgn.Caption = "Send Ign Values";
    btnWriteIgn.Click = [this] { writer_.write(); };
}

GridRules IgnitionPane::rules(Pointing pointing) {
    auto rules = ignitionRules(pointing);
    rules.redraw = [this] { populateIGNOUT(); };
    rules.redrawCell = [this](int) { populateIGNOUT(); };
    rules.cellEdited = [this](int cell) {
        realtime_.send(kChange, cell, core::checked(paneWindow().context().tables.IgnMapOut, cell));
    };
    return rules;
}

void IgnitionPane::loadPane(std::int32_t features) {
    ign.place();
    btnReadIgn.Enabled = btnWriteIgn.Enabled = (features & kIgnitionBit) != 0;
}

void IgnitionPane::readPane() {
    paneWindow().line().requestFirst(kRead);
}

void IgnitionPane::populateIGN() {
    const controls::Window::Stay stay(paneWindow());
    display_.populateIGN();
}

void IgnitionPane::showLoadedTune() {
    paneWindow().toldAs("Virhe sytytys kartassa", [this] { populateIGN(); });
}

void IgnitionPane::acceptLoadedTune(bool) {
    auto& tables = paneWindow().context().tables;
    tables.IgnMapOut = tables.IgnMapIn;
}

}  // namespace korvane::maps
