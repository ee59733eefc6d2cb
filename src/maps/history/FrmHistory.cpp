#include "maps/history/FrmHistory.h"

namespace korvane::maps {

namespace {
constexpr int kWidth = 460 * 15;  // twips
constexpr int kHeight = 520 * 15;
}  // namespace

FrmHistory::FrmHistory(platform::Machine& machine, MapUndo& undo)
    : Window(machine, "frmHistory"), lstSteps(*this, "lstSteps", undo.history()), undo_(undo) {
    Caption = "History";
    Width = kWidth;
    Height = kHeight;
    lstSteps.setLabel("Steps");
    btnUndo.Caption = "Undo";
    btnRedo.Caption = "Redo";
    lstSteps.Picked = [this](std::size_t row) { lblNote.Caption = undo_.goTo(row, mapWindow()); };
    btnUndo.Click = [this] { lblNote.Caption = undo_.undo(mapWindow()); };
    btnRedo.Click = [this] { lblNote.Caption = undo_.redo(mapWindow()); };
    Timer1.Tick = [this] { undo_.history().look(); };
    undo_.history().addObserver(*this);
}

FrmHistory::~FrmHistory() {
    undo_.history().removeObserver(*this);
}

void FrmHistory::Form_Load() {
    undo_.history().look();
    showRows();
}

bool FrmHistory::takesKey(int keyCode, int shift) {
    const auto order = orderOf(keyCode, shift);
    if (order == HistoryOrder::Undo) {
        lblNote.Caption = undo_.undo(mapWindow());
    } else if (order == HistoryOrder::Redo) {
        lblNote.Caption = undo_.redo(mapWindow());
    }
    return order == HistoryOrder::Undo || order == HistoryOrder::Redo;
}

void FrmHistory::propertyChanged(controls::Object&, const void* property) {
    if (property == &undo_.history()) {
        lblNote.Caption = "";
        showRows();
    }
}

void FrmHistory::showRows() {
    btnUndo.Enabled = lstSteps.here() > 0;
    btnRedo.Enabled = lstSteps.here() + 1 < lstSteps.rowCount();
    lstSteps.changed(lstSteps.rowsProperty());
}

PaneWindow* FrmHistory::mapWindow() const {
    return undo_.currentWindow ? undo_.currentWindow() : nullptr;
}

}  // namespace korvane::maps
