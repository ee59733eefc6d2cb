#include "views/maps/LimiterView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>

#include "views/frame/StatusLine.h"
#include "views/frame/VerifyPart.h"
#include "views/maps/BoxParts.h"
#include "views/maps/MapNotes.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{96, 46};  // text sizes
constexpr double kSmallestText = 0.8;
constexpr double kNarrow = 0.98;  // of the usual width
const QString kShownElsewhere = QStringLiteral("What is read shows in the settings window, not here.");

// Before the limit that a pre limit belongs to; in the window that is the one above it.
const QString kOfLimit = QStringLiteral(" (");

constexpr std::array kLimits{&maps::FrmMaps_ign_limiter::txtrpmlimitLOW, &maps::FrmMaps_ign_limiter::txtrpmlimitLOWpre,
                             &maps::FrmMaps_ign_limiter::txtrpmlimitHIGH,
                             &maps::FrmMaps_ign_limiter::txtrpmlimitHIGHpre};
static_assert(kLimits.size() == maps::FrmMaps_ign_limiter::kLimits);
constexpr std::array kInputLabels{&maps::FrmMaps_ign_limiter::lblInput1, &maps::FrmMaps_ign_limiter::lblInput2,
                                  &maps::FrmMaps_ign_limiter::lblInput3};

}  // namespace

// Tab goes through the widgets in the order in which they are made.
LimiterView::LimiterView(maps::FrmMaps_ign_limiter& window, FrameClock& clock)
    : FittedView(window, clock, kUsual, kSmallestText, kNarrow), window_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeBar());
    auto& upper = child<QHBoxLayout>(kNobody);
    auto& lower = child<QHBoxLayout>(kNobody);
    for (auto* row : {&upper, &lower}) {
        row->setSpacing(kSpacing);
        rows.addLayout(row);
    }
    upper.addWidget(&makeSensor(), 3);
    upper.addWidget(&makeLimits(), 4);
    upper.addWidget(&makeLaunch(), 4);
    for (int input = 0; input < maps::FrmMaps_ign_limiter::kInputs; ++input) {
        lower.addWidget(&makeInput(input), 1);
    }
    rows.addStretch(1);
    fitTexts();
}

Card& LimiterView::makeBar() {
    auto& card = child<Card>(&content());
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&card);
    row.setSpacing(kSpacing);
    auto& state = child<QVBoxLayout>(kNobody);
    state.setSpacing(0);
    state.addWidget(
        &makeStatusLine(*this, window_, QStringLiteral("Receiving data from target device!:  Received 100%"), &card));
    auto& heard = child<QHBoxLayout>(kNobody);
    heard.setSpacing(kSpacing);
    heard.addWidget(&makeAnswersNote(window_.answers, binder(), &card), 1);
    heard.addWidget(&makeVerifyLine(window_.verifyReport(), binder(), &card), 2);
    state.addLayout(&heard);
    row.addLayout(&state, 1);
    row.addWidget(&makeAgainButton(window_.verifyReport(), window_, binder(), &card));
    row.addWidget(&makeCommand(window_.btnReadData, 'r', binder(), &card));
    row.addWidget(&makeCommand(window_.btnSendSettings, 's', binder(), &card));
    row.addWidget(&makeVerifyBox(window_.verifySwitch(), binder(), &card));
    row.addWidget(&makeCommand(window_.btnHelp, 'o', binder(), &card));
    card.fitMargins();
    return card;
}

Card& LimiterView::makeSensor() {
    GroupCard group(window_.FrameRpmSensor, binder(), &content());
    group.addValue(labelOf(window_.txtSigPerRev), window_.txtSigPerRev, kWordDigits, QStringLiteral("( RB2xDET 180 )"));
    group.addValue(labelOf(window_.txtCylCount), window_.txtCylCount, kWordDigits);
    group.addChoice(labelOf(window_.Combosensortype), window_.Combosensortype);
    group.addNote(kShownElsewhere);
    return group.card();
}

Card& LimiterView::makeLimits() {
    GroupCard group(window_.FrameRpmLimit, binder(), &content());
    int list = maps::FrmMaps_ign_limiter::kInputs;
    for (const auto limit : kLimits) {
        auto& function = window_.ComboInputFuncLow(list++);
        const QString label = labelOf(window_.*limit);
        group.addValue(label.section(kOfLimit, 0, 0), window_.*limit, kWordDigits, QStringLiteral("rpm"));
        if (label.contains(kOfLimit)) {
            binder().widgetOf(&(window_.*limit))->setAccessibleDescription(label);
        }
        group.addBeside(labelOf(function), function);
    }
    return group.card();
}

Card& LimiterView::makeInput(int input) {
    GroupCard group(window_.FrameInput(input), binder(), &content());
    group.addShown(QStringLiteral("Current value"), window_.*kInputLabels.at(static_cast<std::size_t>(input)),
                   QStringLiteral("0.00"), QStringLiteral("V"));
    group.addChoice(QStringLiteral("Comparison (not sent)"), window_.ComboInputCompare(input));
    group.addValue(labelOf(window_.txtInputvolt(input)), window_.txtInputvolt(input), kScaledDigits,
                   QStringLiteral("V"));
    group.addChoice(labelOf(window_.ComboInputFuncLow(input)), window_.ComboInputFuncLow(input));
    group.addChoice(labelOf(window_.comboInputFuncHi(input)), window_.comboInputFuncHi(input));
    group.addValue(labelOf(window_.txtInputFuncVal(input)), window_.txtInputFuncVal(input), kWordDigits);
    group.addNote(steppedLegend());
    return group.card();
}

Card& LimiterView::makeLaunch() {
    GroupCard group(window_.launchControl.frame, binder(), &content());
    addLaunch(group, window_);
    group.addNote(kShownElsewhere);
    addTransfer(group, window_.launchControl, 'l', 'v');
    return group.card();
}

}  // namespace korvane::views
