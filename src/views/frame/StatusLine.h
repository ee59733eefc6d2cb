// Shows the text of a window's caption inside the window as well.
#pragma once

#include <QString>

#include "views/frame/WindowView.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

// `longest` is the longest usual caption.
[[nodiscard]] Readout& makeStatusLine(WindowView& view, const controls::Window& window, const QString& longest,
                                      QWidget* parent);

}  // namespace korvane::views
