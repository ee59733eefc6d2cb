// The view of the history: the steps, and the buttons that walk through them.
#pragma once

#include "maps/history/FrmHistory.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

class HistoryView : public WindowView {
public:
    HistoryView(maps::FrmHistory& window, FrameClock& clock);

private:
    [[nodiscard]] QWidget& makeTable(maps::FrmHistory& window);
    [[nodiscard]] QLayout& makeButtons(maps::FrmHistory& window);
};

}  // namespace korvane::views
