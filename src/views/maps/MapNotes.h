// What a map window says beside its controls: what a transfer was answered, sizes that do not agree, grids that were
// never read.
#pragma once

#include <QWidget>

#include "fields/Answers.h"
#include "maps/panes/PaneWindow.h"
#include "views/frame/Binder.h"
#include "views/maps/MapGridView.h"

namespace korvane::views {

// The answer of the ECU to the last transfer.
[[nodiscard]] QWidget& makeTransferNote(maps::TransferWatch& watch, Binder& binder, QWidget* parent);
[[nodiscard]] QWidget& makeAnswersNote(fields::Answers& answers, Binder& binder, QWidget* parent);

// A line across the grids while its maps have another size than the ECU's.
[[nodiscard]] QWidget& makeSizeNote(maps::SizeNote& note, Binder& binder, QWidget* parent);

// A text across the middle of a grid that was never read; over the grid.
void addNeverReadNote(maps::MapGrid& grid, MapGridView& view, Binder& binder);

}  // namespace korvane::views
