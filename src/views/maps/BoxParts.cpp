#include "views/maps/BoxParts.h"

namespace korvane::views {

void addLaunch(GroupCard& card, maps::IgnitionBoxControls& window) {
    card.addValue(QStringLiteral("Launch control rpm limit"), window.txtLaunchControlLimit, kWordDigits);
    card.addChoice(QStringLiteral("Launch mode"), window.Combolaunchmode);
    card.addValue(QStringLiteral("Fixed time"), window.txtLaunchFixedDelay, kByteDigits);
    card.addChoice(QStringLiteral("Accel limiter"), window.ComboAccellimiter);
    card.addValue(QStringLiteral("max accel speed"), window.txtMaxAccel, kByteDigits);
}

void addTransfer(GroupCard& card, maps::ParameterGroup& group, char readMnemonic, char saveMnemonic) {
    card.addButton(group.btnRead, readMnemonic);
    card.addButton(group.btnSave, saveMnemonic);
}

}  // namespace korvane::views
