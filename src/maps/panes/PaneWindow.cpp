#include "maps/panes/PaneWindow.h"

#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr int kWidth = 1340 * 15;  // twips; fits a laptop of 1366 by 768
constexpr int kHeight = 690 * 15;
constexpr int kNarrowScreen = 12001;  // twips: below, cells have to be small
constexpr int kWideScreen = 15700;    // above, bold text fits
constexpr int kSmallFont = 6;
constexpr int kSmallButtonFont = 7;

void sizeCells(MapGrid& grid, bool small, bool bold) {
    const auto size = [&](auto& controls) {
        for (auto& control : controls) {
            control.FontSize = small ? kSmallFont : control.FontSize.get();
            control.FontBold = bold;
        }
    };
    size(grid.cells);
    size(grid.columnLabels);
    size(grid.rowLabels);
}

}  // namespace

PaneWindow::PaneWindow(platform::Machine& machine, const MapContext& context, const Title& title, MapGeometry shape)
    : Window(machine, title.name), geometry(shape), context_(context), line_(*this, context) {
    Caption = title.caption;
    Width = kWidth;
    Height = kHeight;
    chkOnlineChanges.Caption = "Realtime changes";
    Timer1.Tick = [this] {
        followEngine();
        for (auto* pane : panes_) {
            pane->tickPane();
        }
    };
}

void PaneWindow::Form_Load() {
    sizeFonts(machine().screen.Width);
    for (auto* pane : panes_) {
        pane->loadPane(context_.tables.Features);
    }
    arrangePanes();
    isFormLoaded = true;
}

void PaneWindow::initialReads() {
    if (!line_.isOpen()) {
        return;
    }
    for (auto* pane : panes_) {
        pane->readPane();
    }
}

void PaneWindow::sizeFonts(int screenWidth) {
    const bool small = screenWidth < kNarrowScreen;
    const bool bold = screenWidth > kWideScreen;
    for (auto* pane : panes_) {
        if (auto* const grid = pane->paneGrid()) {
            sizeCells(*grid, small, bold);
        }
    }
    for (auto* control : controls()) {
        if (small && dynamic_cast<controls::CommandButton*>(control) != nullptr) {
            control->FontSize = kSmallButtonFont;
        }
    }
}

void PaneWindow::focusOn(MapGrid& grid) {
    const int place = context_.tables.MapPlace;
    if (grid.geometry.has(place)) {
        setFocus(&grid(place));
    }
}

void PaneWindow::tell(const std::string& text) {
    machine().dialogs.show({"", text});
}

void PaneWindow::toldAs(const char* text, const std::function<void()>& step) {
    try {
        step();
    } catch (const platform::RuntimeError&) {
        tell(text);
    }
}

}  // namespace korvane::maps
