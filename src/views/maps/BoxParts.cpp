#include "views/maps/BoxParts.h"

namespace korvane::views {

void addLaunch(GroupCard& card, maps::IgnitionBoxControls& window) {
    card.addValue(labelOf(window.txtLaunchControlLimit), window.txtLaunchControlLimit, kWordDigits);
    card.addChoice(labelOf(window.Combolaunchmode), window.Combolaunchmode);
    card.addValue(labelOf(window.txtLaunchFixedDelay), window.txtLaunchFixedDelay, kByteDigits);
    card.addChoice(labelOf(window.ComboAccellimiter), window.ComboAccellimiter);
    card.addValue(labelOf(window.txtMaxAccel), window.txtMaxAccel, kByteDigits);
}

void addTransfer(GroupCard& card, maps::ParameterGroup& group, char readMnemonic, char saveMnemonic) {
    card.addButton(group.btnRead, readMnemonic);
    card.addButton(group.btnSave, saveMnemonic);
}

}  // namespace korvane::views
