// A progress bar that keeps its place while it is hidden, so that nothing else moves.
#pragma once

#include <QProgressBar>
#include <QString>

#include "views/frame/Binder.h"

namespace korvane::views {

// `format` is the text in the bar, with %p for the percentage; none for an empty one. `name` is what a screen reader
// says.
[[nodiscard]] QProgressBar& makeTransferBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent,
                                            const QString& name, const QString& format = {});

}  // namespace korvane::views
