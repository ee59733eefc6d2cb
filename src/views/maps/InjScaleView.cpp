#include "views/maps/InjScaleView.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr int kSizeWidth = 8;  // of a box, in letters

void addSize(Binder& binder, Card& card, QGridLayout& grid, controls::Label& name, controls::TextBox& box) {
    QWidget* const parent = &card;
    const int row = grid.rowCount();
    auto& label = child<QLabel>(parent);
    auto& edit = child<QLineEdit>(parent);
    edit.setMinimumWidth(edit.fontMetrics().averageCharWidth() * kSizeWidth);
    edit.setAccessibleName(QString::fromStdString(name.Caption));
    label.setBuddy(&edit);
    binder.bind(name, label);
    binder.bind(box, edit);
    grid.addWidget(&label, row, 0);
    grid.addWidget(&edit, row, 1);
    grid.addWidget(&child<QLabel>(parent, QStringLiteral("ccm/min")), row, 2);
}

}  // namespace

InjScaleView::InjScaleView(maps::FrmInjScale& window, FrameClock& clock) : WindowView(window, clock) {
    auto& rows = child<QVBoxLayout>(this);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeSizes(window));
    auto& pressure = child<Card>(this);
    binder().bind(window.FrameFuelPressure, pressure);
    rows.addWidget(&pressure, 1);
    binder().setTabOrder({&window.txtInjectorOld, &window.txtInjectorNew, &window.btnInjectorChange});
}

Card& InjScaleView::makeSizes(maps::FrmInjScale& window) {
    auto& card = child<Card>(this);
    auto& grid = child<QGridLayout>(&card);
    grid.setSpacing(kSpacing);
    grid.setColumnStretch(1, 1);
    binder().bind(window.FrameInjectorSize, card);
    addSize(binder(), card, grid, window.lblInjectorOld, window.txtInjectorOld);
    addSize(binder(), card, grid, window.lblInjectorNew, window.txtInjectorNew);
    auto& change = child<QPushButton>(&card);
    binder().bind(window.btnInjectorChange, change, 'c');
    grid.addWidget(&change, grid.rowCount(), 1);
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
