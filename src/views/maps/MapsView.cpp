#include "views/maps/MapsView.h"

#include <QHBoxLayout>

#include <utility>

#include "views/frame/ObjectPart.h"
#include "views/frame/VerifyPart.h"
#include "views/maps/MapNotes.h"
#include "views/maps/MapPages.h"
#include "views/maps/MapStatusLine.h"
#include "views/widgets/Child.h"
#include "views/widgets/FoldingRow.h"
#include "views/widgets/PaneStack.h"
#include "views/widgets/ScrollColumn.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TabRow.h"

namespace korvane::views {

namespace {

constexpr int kAgentGap = 16;

constexpr QSizeF kUsual{105, 56};  // text sizes
constexpr double kSmallestText = 0.8;

template <class Layout, class Parent>
Layout& layoutIn(Parent* parent) {
    auto& layout = child<Layout>(parent);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(kSpacing);
    return layout;
}

}  // namespace

MapsView::MapsView(maps::MapForm& window, FrameClock& clock)
    : FittedView(window, clock, kUsual, kSmallestText),
      maps_(window),
      rows_(child<QVBoxLayout>(&content())),
      column_(child<ScrollColumn>(&content())),
      left_(layoutIn<QVBoxLayout>(kNobody)),
      right_(layoutIn<QVBoxLayout>(&column_.inside())) {
    QWidget* const inside = &content();
    rows_.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows_.setSpacing(kSpacing);
    rows_.addWidget(&makeMapBar({window, window, window, &window.btnInjScale}, *this, inside));
    auto& columns = layoutIn<QHBoxLayout>(kNobody);
    rows_.addLayout(&columns, 1);
    columns.addLayout(&left_, 1);
    left_.addWidget(&makeSizeNote(window.sizeNote, binder(), inside));
    columns.addWidget(&column_);
}

void MapsView::addStatusLine() {
    status_ = &makeMapStatusLine(maps_, binder(), &content());
    left_.addWidget(status_);
}

void MapsView::resizeEvent(QResizeEvent* event) {
    if (const bool low = MapPages::neededIn(*this); low != low_) {
        low_ = low;
        (low ? rows_ : left_).addWidget(status_);
    }
    FittedView::resizeEvent(event);
}

void MapsView::addLowerCards() {
    right_.addWidget(&makeAnalyserCard(maps_, binder(), &content()));
    right_.addWidget(&makeMiscCard(maps_, binder(), &content()), 1);
}

void MapsView::orderTabs(std::vector<controls::Control*> first) {
    const auto add = [&first](auto&... controls) { (first.push_back(&controls), ...); };
    const auto addAll = [&first](auto& controls) {
        for (auto& control : controls) {
            first.push_back(&control);
        }
    };
    add(maps_.chkInjAnal, maps_.btnloadLambdaSetpoint, maps_.btnSaveLambdaSetpoint);
    addAll(maps_.txtMisc);
    addAll(maps_.CheckMisc);
    addAll(maps_.optINJMaxOpen);
    add(maps_.btnLoad, maps_.btnSave, maps_.btnShow3D, maps_.btnInjScale, maps_.btnHelp);
    binder().setTabOrder(first);
}

void MapsView::addTransfers(PairCard& card) {
    card.addButtons(maps_.btnReadFuel, 'r', maps_.btnWriteFuel, 's');
    card.addButtons(maps_.btnReadIgn, 'i', maps_.btnWriteIgn, 'g');
}

void MapsView::addLive(PairCard& card) {
    card.addBox(maps_.chkTrace, 'a', 0);
    card.addBox(maps_.chkOnlineChanges, 'e', 1);
}

FrmMapsView::FrmMapsView(maps::FrmMaps& window, FrameClock& clock)
    : MapsView(window, clock),
      pages_(child<MapPages>(&content(), QStringLiteral("Fuel"), QStringLiteral("Ignition, PWM, analyser"))) {
    addPanes(window);
    addStatusLine();
    addCommands(window);
    addLowerCards();
    orderTabs({&window.fuel(0),           &window.ign(0),        &window.pwm(0),           &window.chkModifyInjSetpoint,
               &window.chkUseTuningAgent, &window.chkSimplemode, &window.chkSteadyAgent,   &window.analys(0),
               &window.btnReadFuel,       &window.btnWriteFuel,  &window.btnReadIgn,       &window.btnWriteIgn,
               &window.btnReadPWM,        &window.btnSavePWM,    &window.btnReadMisc,      &window.btnSaveMisc,
               &window.chkShowPwm,        &window.chkTrace,      &window.chkOnlineChanges, &window.chkFocusOnFuel,
               &window.chkFocusOnIGN});
    putVerifyBehind(window.chkShowPwm, *this);
    // Behind the grids, so that a window with pages begins in its map too.
    setTabOrder(binder().widgetOf(&window.analys(0)), &pages_.tabs());
    fitTexts();
}

// The PWM pane lies over the ignition grid, the analyser in its place.
void FrmMapsView::addPanes(maps::FrmMaps& window) {
    GridCards cards(window, binder());
    const auto card = [&](auto& frame, auto& grid, const char* name, QWidget* parent) -> QWidget& {
        return cards.make(frame, grid, QString::fromLatin1(name), parent);
    };
    left().addWidget(&pages_, 1);
    pages_.upper().layout()->addWidget(&card(window.FrameFuel, window.fuel, "Fuel", &pages_.upper()));
    auto& stack = child<PaneStack>(&pages_.lower());
    pages_.lower().layout()->addWidget(&stack);
    const auto addPane = [&](auto& frame, auto& grid, const char* name, bool boxes) {
        auto& page = stack.addPage();
        auto& rows = layoutIn<QVBoxLayout>(&page);
        if (boxes) {
            auto& agents = child<FoldingRow>(&page, kAgentGap);
            agents.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
            agents.first().addWidget(&makeAgentBoxes(window, binder(), &agents));
            agents.first().addStretch(1);
            agents.second().addWidget(&makeSteadyBox(window, binder(), &agents));
            rows.addWidget(&agents);
        }
        auto& pane = card(frame, grid, name, &page);
        rows.addWidget(&pane, 1);
        stack.watch(pane);
    };
    addPane(window.FrameInjAnalys, window.analys, "Injection analyser", true);
    addPane(window.FramePWM, window.pwm, "PWM", false);
    addPane(window.FrameIgn, window.ign, "Ignition", false);
    showPageOf(window.FrameInjAnalys);
    showPageOf(window.FramePWM);
}

// The box that shows it is beside the pages, and another page may be open.
void FrmMapsView::showPageOf(controls::Frame& frame) {
    ObjectPart::bind(binder(), {&frame}, [this, &frame, shown = frame.inSight()]() mutable {
        if (const bool wasShown = std::exchange(shown, frame.inSight()); shown && !wasShown) {
            pages_.reveal(*binder().widgetOf(&frame));
        }
    });
}

void FrmMapsView::resizeEvent(QResizeEvent* event) {
    MapsView::resizeEvent(event);
    pages_.setPaged(isLow());
}

void FrmMapsView::focusMoved(QWidget& widget) {
    pages_.reveal(widget);
}

void FrmMapsView::addCommands(maps::FrmMaps& window) {
    PairCard transfer(QStringLiteral("ECU"), binder(), &content());
    addTransfers(transfer);
    transfer.addInstead(window.btnReadPWM, 'p', window.btnSavePWM, 'w');
    transfer.addButtons(window.btnReadMisc, 'm', window.btnSaveMisc, 'c');
    transfer.addBox(window.chkShowPwm, 'b', 0);
    transfer.addVerify(window.verifySwitch(), 1);
    right().addWidget(&transfer.card());
    PairCard live(QStringLiteral("Live"), binder(), &content());
    addLive(live);
    live.addBox(window.chkFocusOnFuel, 'f', 0);
    live.addBox(window.chkFocusOnIGN, 'n', 1);
    right().addWidget(&live.card());
}

FrmMapsLargeView::FrmMapsLargeView(maps::FrmMaps_Large& window, FrameClock& clock) : MapsView(window, clock) {
    addTabs(window);
    addPages(window);
    addStatusLine();
    addCommands(window);
    addLowerCards();
    orderTabs({&window.fuel(0),           &window.ign(0),        &window.pwm(0),
               &window.analys(0),         &window.TabStrip1,     &window.chkModifyInjSetpoint,
               &window.chkUseTuningAgent, &window.chkSimplemode, &window.chkSteadyAgent,
               &window.btnReadFuel,       &window.btnWriteFuel,  &window.btnReadIgn,
               &window.btnWriteIgn,       &window.btnReadPWM,    &window.btnSavePWM,
               &window.btnReadMisc,       &window.btnSaveMisc,   &window.chkTrace,
               &window.chkOnlineChanges,  &window.chkFocusOnMAP});
    putVerifyBehind(window.btnSaveMisc, *this);
    fitTexts();
}

void FrmMapsLargeView::addTabs(maps::FrmMaps_Large& window) {
    auto& row = layoutIn<QHBoxLayout>(kNobody);
    auto& tabs = child<TabRow>(&content());
    tabs.setAccessibleName(QStringLiteral("Maps"));
    binder().bind(window.TabStrip1, tabs);
    row.addWidget(&tabs);
    row.addStretch(1);
    row.addWidget(&makeAgentBoxes(window, binder(), &content()));
    left().addLayout(&row);
}

void FrmMapsLargeView::addPages(maps::FrmMaps_Large& window) {
    auto& stack = child<PaneStack>(&content());
    left().addWidget(&stack, 1);
    GridCards cards(window, binder());
    const auto addPage = [&](int index, auto& frame, auto& grid, const char* name) {
        auto& page = stack.addPage();
        auto& pane = child<QWidget>(&page);
        layoutIn<QVBoxLayout>(&page).addWidget(&pane);
        binder().bindContainer(window.picOptions(index), pane);
        auto& card = cards.make(frame, grid, QString::fromLatin1(name), &pane);
        layoutIn<QVBoxLayout>(&pane).addWidget(&card);
        stack.watch(pane);
    };
    addPage(0, window.FrameFuel, window.fuel, "Fuel");
    addPage(1, window.FrameIgn, window.ign, "Ignition");
    addPage(2, window.FramePWM, window.pwm, "PWM");
    addPage(3, window.FrameInjAnalys, window.analys, "Injection analyser");
}

void FrmMapsLargeView::addCommands(maps::FrmMaps_Large& window) {
    PairCard transfer(QStringLiteral("ECU"), binder(), &content());
    addTransfers(transfer);
    transfer.addButtons(window.btnReadPWM, 'p', window.btnSavePWM, 'w');
    transfer.addButtons(window.btnReadMisc, 'm', window.btnSaveMisc, 'c');
    transfer.addVerify(window.verifySwitch(), 0);
    right().addWidget(&transfer.card());
    PairCard live(QStringLiteral("Live"), binder(), &content());
    addLive(live);
    live.addBox(window.chkFocusOnMAP, 'k', 0);
    right().addWidget(&live.card());
    right().addWidget(&makeSteadyBox(window, binder(), &content()));
}

}  // namespace korvane::views
