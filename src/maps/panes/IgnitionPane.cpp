#include "maps/panes/IgnitionPane.h"

namespace korvane::maps {

namespace {

constexpr WholeMap kIgnitionMap{
    .names = {{"FrameIgn", "Ignition [deg]"},
              {"txtIgn", "lblRpmI", "lblMapI"},
              {"btnReadIgn", "Read Ign Values"},
              {"btnWriteIgn", "Send Ign Values"},
              {"Ignition", "ignition", "deg"}},
    .images = kIgnitionImages,
    .commands = link::kIgnitionMap,
    .writer = MapWriter::kIgnition,
    .featureBit = kIgnitionBit,
    .loadFailure = "Virhe sytytys kartassa",
};

}  // namespace

IgnitionPane::IgnitionPane(PaneWindow& window, Halves halves, Pointing pointing)
    : WholeMapPane(window, kIgnitionMap, halves, ignitionRules(pointing)), display_(ign, window.context()) {}

}  // namespace korvane::maps
