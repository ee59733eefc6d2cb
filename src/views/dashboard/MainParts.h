// The parts of the main window.
#pragma once

#include <QWidget>

#include "live/FrmSarn2.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Port, speed, refresh, connect, and what is known of the line and the device at its end.
QWidget& makeConnectionBar(live::FrmSarn2& window, Binder& binder, QWidget* parent);

// The buttons: tuning, tools, service.
QWidget& makeServiceColumn(live::FrmSarn2& window, Binder& binder, QWidget* parent);

// Both dials, the gauge and the accelerator word.
QWidget& makeInstruments(live::FrmSarn2& window, Binder& binder, QWidget* parent);

// The twelve values with their names.
QWidget& makeValues(live::FrmSarn2& window, Binder& binder, QWidget* parent);

// Both trends and the boxes below them.
QWidget& makeTrends(live::FrmSarn2& window, Binder& binder, QWidget* parent);

// Lamps above, multiplexed inputs below.
QWidget& makeStatusColumn(live::FrmSarn2& window, Binder& binder, QWidget* parent);

}  // namespace korvane::views
