#include "maps/panes/PaneWindow.h"

#include <algorithm>
#include <array>

#include "controls/PropertyTable.h"
#include "fields/VerifyProperties.h"
#include "maps/Frm3Dmap.h"
#include "maps/history/MapUndo.h"
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

controls::Value historyNote(const controls::Object& object) {
    return dynamic_cast<const PaneWindow&>(object).HistoryNote.get();
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

// The line of the window leaves out what is not known.
controls::Value storeStatus(const controls::Object& object) {
    const auto status = statusOf(dynamic_cast<const PaneWindow&>(object));
    return status.store + (status.store.empty() || status.unknown.empty() ? "" : "; ") + status.unknown;
}

constexpr std::array kProperties{lookProperty<&GridLook::HeatTint>("HeatTint"),
                                 lookProperty<&GridLook::AlignNumbers>("AlignNumbers"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::cell>>("CellStatus"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::block>>("BlockStatus"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::unsent>>("UnsentStatus"),
                                 controls::readOnlyProperty<&statusText<&MapStatus::unread>>("UnreadStatus"),
                                 controls::readOnlyProperty<&historyNote>("HistoryNote"),
                                 controls::readOnlyProperty<&storeStatus>("StoreStatus"),
                                 controls::readOnlyProperty<&transferResult>("TransferResult")};

}  // namespace

PaneWindow::PaneWindow(platform::Machine& machine, const MapContext& context, const Title& title, MapGeometry shape)
    : Window(machine, title.name),
      look(machine.preferences),
      geometry(shape),
      context_(context),
      line_(*this, context),
      opening_(context.connection.MSComm1, [this] { verifyReport_.lineOpened(); }) {
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
    if (context_.history != nullptr) {
        context_.history->addObserver(*this);
    }
}

PaneWindow::~PaneWindow() {
    if (context_.history != nullptr) {
        context_.history->removeObserver(*this);
    }
}

// An unloaded window may be kept for a while.
void PaneWindow::propertyChanged(controls::Object&, const void* property) {
    HistoryNote = "";
    if (isLoaded() && property == context_.history->mapsProperty()) {
        enter(name(), [this] { showNewMaps(*context_.history); });
    }
}

void PaneWindow::showNewMaps(const core::MapHistory& history) {
    for (const auto map : {core::EditedMap::Fuel, core::EditedMap::Ignition, core::EditedMap::Pwm}) {
        for (auto* pane : panes_) {
            if (history.isNew(map)) {
                pane->showWorkingMap(map);
            }
        }
    }
}

void PaneWindow::afterChange(const void* property) {
    Window::afterChange(property);
    if (property == focusProperty()) {
        HistoryNote = "";
    }
}

bool PaneWindow::takesKey(int keyCode, int shift) {
    return (context_.undo != nullptr && context_.undo->takesKey(*this, keyCode, shift)) ||
           context_.connection.keepWindows.takesKey(keyCode, shift);
}

MapPane* PaneWindow::paneWithFocus() const {
    const auto* const focus = activeControl();
    const auto found = std::find_if(panes_.begin(), panes_.end(), [&](MapPane* pane) {
        auto* const grid = pane->paneGrid();
        return grid != nullptr && focus != nullptr && focus->index() && focus->name() == (*grid)(0).name();
    });
    return found != panes_.end() ? *found : nullptr;
}

std::optional<MapPane::Target> PaneWindow::revertTarget() const {
    const auto* const pane = paneWithFocus();
    return pane != nullptr ? pane->targetAt(*activeControl()->index()) : std::nullopt;
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
    auto tables = controls::withTable<Window>(*this, kProperties);
    tables.emplace_back(fields::kVerifyProperties<PaneWindow>);
    return tables;
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
