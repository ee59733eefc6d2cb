#include "maps/panes/PaneWindow.h"

#include <array>

#include "controls/PropertyTable.h"
#include "maps/Frm3Dmap.h"
#include "maps/panes/MapStatus.h"
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

controls::Value transferResult(const controls::Object& object) {
    return dynamic_cast<const PaneWindow&>(object).line().watch().Text.get();
}

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

// A choice of the look, as a property of the window.
template <auto Choice>
constexpr controls::PropertyInfo lookProperty(std::string_view name) {
    return {name,
            [](const controls::Object& object) -> controls::Value {
                return (dynamic_cast<const PaneWindow&>(object).look.*Choice).get();
            },
            [](controls::Object& object, const controls::Value& value) {
                (dynamic_cast<PaneWindow&>(object).look.*Choice) = controls::detail::fromValue<bool>(value);
            }};
}

template <auto Text>
controls::Value statusText(const controls::Object& object) {
    return statusOf(dynamic_cast<const PaneWindow&>(object)).*Text;
}

constexpr std::array kProperties{lookProperty<&GridLook::HeatTint>("HeatTint"),
                                 lookProperty<&GridLook::AlignNumbers>("AlignNumbers"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::cell>>("CellStatus"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::block>>("BlockStatus"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::unsent>>("UnsentStatus"),
                                 controls::readOnlyProperty<&transferResult>("TransferResult")};

}  // namespace

PaneWindow::PaneWindow(platform::Machine& machine, const MapContext& context, const Title& title, MapGeometry shape)
    : Window(machine, title.name),
      look(machine.preferences),
      geometry(shape),
      context_(context),
      line_(*this, context) {
    Caption = title.caption;
    Width = kWidth;
    Height = kHeight;
    chkOnlineChanges.Caption = "Realtime changes";
    Timer1.Tick = [this] {
        showNotes();
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
    showNotes();
    isFormLoaded = true;
}

bool PaneWindow::Form_Unload() {
    context_.frm3Dmap.noFocusIn(*this);
    context_.frm3Dmap.engineAt(Marks3D::kNoCell);
    return true;
}

void PaneWindow::initialReads() {
    if (!line_.isOpen()) {
        return;
    }
    for (auto* pane : panes_) {
        pane->readPane();
    }
}

std::vector<std::span<const controls::PropertyInfo>> PaneWindow::propertyTables() const {
    return controls::withTable<Window>(*this, kProperties);
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

void PaneWindow::showNotes() {
    const auto& tables = context_.tables;
    const int place = tables.MapPlace;
    liveStrip.show(tables, geometry.has(place) ? fuelOf(place) : LiveStrip::Cell());
    sizeNote.Text = maps::sizeNote(tables.SWType, geometry);
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
