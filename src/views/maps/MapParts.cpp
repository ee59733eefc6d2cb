#include "views/maps/MapParts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/frame/BoundWidgets.h"
#include "views/frame/ObjectPart.h"
#include "views/frame/StatusLine.h"
#include "views/frame/TransferBar.h"
#include "views/frame/VerifyPart.h"
#include "views/frame/WindowView.h"
#include "views/maps/GridMarksBinding.h"
#include "views/maps/LiveStripView.h"
#include "views/maps/MapGridBinding.h"
#include "views/maps/MapGridView.h"
#include "views/maps/MapNotes.h"
#include "views/widgets/Child.h"
#include "views/widgets/FoldingRow.h"
#include "views/widgets/values/Lamp.h"

namespace korvane::views {

namespace {

constexpr int kRowGap = 3;
constexpr int kColumnGap = 6;
constexpr int kBoxGap = 16;
constexpr int kGroupGap = 14;

// May take the height that a row has to spare.
QPushButton& makeHighButton(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent) {
    auto& push = makeButton(button, mnemonic, binder, parent);
    push.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    return push;
}

// The caption, and below it what the ECU has answered. The progress and the running engine share a place: while a map
// is on its way no live data come.
QLayout& makeTransferState(const MapBar& bar, WindowView& view, QWidget* parent) {
    auto& binder = view.binder();
    auto& progress = bar.window.prgTransfer;
    auto& state = child<QGridLayout>(kNobody);
    state.setHorizontalSpacing(kGroupGap);
    state.setVerticalSpacing(0);
    state.setColumnStretch(0, 1);
    state.addWidget(
        &makeStatusLine(view, bar.window, QStringLiteral("PWM table have been sent to ECU 00:00:00"), parent), 0, 0);
    auto& heard = child<QHBoxLayout>(kNobody);
    heard.setSpacing(kGroupGap);
    heard.addWidget(&makeTransferNote(bar.window.line().watch(), binder, parent));
    if (bar.answers != nullptr) {
        heard.addWidget(&makeAnswersNote(*bar.answers, binder, parent));
    }
    heard.addWidget(&makeVerifyNote(bar.window.verifyReport(), bar.window, binder, parent), 1);
    state.addLayout(&heard, 1, 0);
    state.addWidget(&makeTransferBar(progress, binder, parent, QStringLiteral("Transfer")), 0, 1);
    auto& strip = makeLiveStrip(bar.window.liveStrip, bar.injScale != nullptr, binder, parent);
    state.addWidget(&strip, 0, 1, 2, 1);
    ObjectPart::bind(binder, {&progress}, [&progress, &strip] { strip.setVisible(!progress.Visible); });
    return state;
}

// Opens the steady agent's window; beside its box.
QPushButton& makeDetails(maps::AnalyserPane& pane, Binder& binder, QWidget* parent) {
    auto& button = child<QPushButton>(parent, QStringLiteral("Details"));
    button.setObjectName(QStringLiteral("steadyDetails"));
    button.setToolTip(QStringLiteral("What the steady agent knows and does, and what you allow it"));
    button.setAccessibleName(QStringLiteral("Steady agent, details"));
    QObject::connect(&button, &QPushButton::clicked, &button,
                     [&pane, &binder] { binder.act([&pane] { pane.showSteady(); }); });
    ObjectPart::bind(binder, {&pane.chkSteadyAgent},
                     [&pane, &button] { button.setVisible(pane.chkSteadyAgent.Visible); });
    return button;
}

}  // namespace

Card& GridCards::make(controls::Frame& frame, maps::MapGrid& grid, const QString& name, QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& inside = child<QVBoxLayout>(&card);
    auto& view = child<MapGridView>(&card, grid.geometry);
    view.setAccessibleName(name);
    inside.addWidget(&view);
    binder_.bind(frame, card);
    bindGrid(binder_, grid, view);
    addNeverReadNote(grid, view, binder_);
    bindMarks(binder_, grid, window_.look, view);
    view.shareDigits(digits_);
    card.fitMargins();
    return card;
}

QWidget& makeMapBar(const MapBar& bar, WindowView& view, QWidget* parent) {
    auto& binder = view.binder();
    auto& card = child<Card>(parent);
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    card.setTight();
    auto& bars = child<FoldingRow>(&card, kColumnGap);
    child<QHBoxLayout>(&card).addWidget(&bars);
    QWidget* const inside = &bars;
    bars.first().addLayout(&makeTransferState(bar, view, inside), 1);
    auto& row = bars.second();
    const auto add = [&](controls::CommandButton& button, char mnemonic) {
        row.addWidget(&makeHighButton(button, mnemonic, binder, inside), 0, Qt::AlignVCenter);
    };
    row.addSpacing(kGroupGap - kColumnGap);
    add(bar.files.btnLoad, 'h');
    add(bar.files.btnSave, 't');
    row.addSpacing(kGroupGap);
    add(bar.tools.btnShow3D, '3');
    if (bar.injScale != nullptr) {
        add(*bar.injScale, 'j');
    }
    row.addSpacing(kGroupGap);
    add(bar.tools.btnHelp, 'o');
    card.fitMargins();
    return card;
}

QWidget& makeAgentBoxes(maps::AnalyserPane& pane, Binder& binder, QWidget* parent) {
    auto& strip = child<QWidget>(parent);
    strip.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&strip);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(kBoxGap);
    row.addWidget(&makeBox(pane.chkModifyInjSetpoint, 'd', binder, &strip));
    auto& lamp = child<Lamp>(&strip);
    lamp.setAccessibleName(QStringLiteral("Tuning Agent"));
    auto& agent = child<QHBoxLayout>(kNobody);
    agent.setSpacing(kColumnGap);
    agent.addWidget(&lamp);
    agent.addWidget(&makeBox(pane.chkUseTuningAgent, 'u', binder, &strip));
    binder.bind(pane.imgAgentLed, lamp);
    row.addLayout(&agent);
    row.addWidget(&makeBox(pane.chkSimplemode, 'l', binder, &strip));
    return strip;
}

QWidget& makeSteadyBox(maps::AnalyserPane& pane, Binder& binder, QWidget* parent) {
    auto& strip = child<QWidget>(parent);
    strip.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&strip);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(kBoxGap);
    row.addWidget(&makeBox(pane.chkSteadyAgent, 0, binder, &strip));
    row.addWidget(&makeDetails(pane, binder, &strip));
    row.addStretch(1);
    ObjectPart::bind(binder, {&pane.chkSteadyAgent},
                     [&pane, &strip] { strip.setVisible(pane.chkSteadyAgent.Visible); });
    return strip;
}

Card& makeAnalyserCard(maps::AnalyserPane& pane, Binder& binder, QWidget* parent) {
    PairCard pairs(QStringLiteral("Injection analyser"), binder, parent);
    pairs.addWideBox(pane.chkInjAnal, 'y');
    pairs.addButtons(pane.btnloadLambdaSetpoint, 0, pane.btnSaveLambdaSetpoint, 'v');
    return pairs.card();
}

PairCard::PairCard(const QString& title, Binder& binder, QWidget* parent)
    : binder_(binder), card_(child<Card>(parent, title)), rows_(child<QGridLayout>(&card_)) {
    card_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    rows_.setVerticalSpacing(kRowGap);
    rows_.setHorizontalSpacing(kColumnGap);
    rows_.setColumnStretch(0, 1);
    rows_.setColumnStretch(1, 1);
    card_.fitMargins();
}

void PairCard::addButtons(controls::CommandButton& left, char leftMnemonic, controls::CommandButton& right,
                          char rightMnemonic) {
    ++row_;
    for (int column = 0; column < 2; ++column) {
        auto& place = child<QHBoxLayout>(kNobody);
        place.setSpacing(0);
        rows_.addLayout(&place, row_, column);
        pair_.at(static_cast<std::size_t>(column)) = &place;
    }
    addInstead(left, leftMnemonic, right, rightMnemonic);
}

void PairCard::addInstead(controls::CommandButton& left, char leftMnemonic, controls::CommandButton& right,
                          char rightMnemonic) {
    pair_.front()->addWidget(&makeHighButton(left, leftMnemonic, binder_, &card_));
    pair_.back()->addWidget(&makeHighButton(right, rightMnemonic, binder_, &card_));
}

void PairCard::addBox(controls::CheckBox& box, char mnemonic, int column) {
    row_ += column == 0 ? 1 : 0;
    rows_.addWidget(&make(box, mnemonic), row_, column);
}

void PairCard::addWideBox(controls::CheckBox& box, char mnemonic) {
    rows_.addWidget(&make(box, mnemonic), ++row_, 0, 1, 2);
}

void PairCard::addVerify(link::VerifySwitch& choice, int column) {
    row_ += column == 0 ? 1 : 0;
    rows_.addWidget(&makeVerifyBox(choice, binder_, &card_), row_, column);
}

QWidget& PairCard::make(controls::CheckBox& box, char mnemonic) {
    return makeBox(box, mnemonic, binder_, &card_);
}

}  // namespace korvane::views
