#include "views/maps/IgnitionBoxView.h"

#include <QHBoxLayout>

#include <vector>

#include "views/maps/BoxParts.h"
#include "views/maps/MapNotes.h"
#include "views/maps/MapParts.h"
#include "views/maps/MapStatusLine.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{105, 56};  // text sizes

template <class Layout>
Layout& makeLayout() {
    auto& layout = child<Layout>(kNobody);
    layout.setSpacing(kSpacing);
    return layout;
}

// The word and the speeds that the label has in one line stand over the boxes.
Card& makeIdle(maps::FrmMaps_QV_ign& window, Binder& binder, QWidget* parent) {
    QStringList heads = QString::fromStdString(window.lblIdleAdv.Caption).split(u' ', Qt::SkipEmptyParts);
    const QString word = heads.takeFirst();
    GroupCard group(window.idleIgnition.frame, binder, parent);
    group.addTable(word, heads, QStringLiteral("Idle Ignition"), window.txtIdleAdv, kByteDigits);
    addTransfer(group, window.idleIgnition, 'r', 's');
    return group.card();
}

Card& makeLaunch(maps::FrmMaps_QV_ign& window, Binder& binder, QWidget* parent) {
    GroupCard group(window.launchControl.frame, binder, parent);
    addLaunch(group, window);
    addTransfer(group, window.launchControl, 'l', 'u');
    return group.card();
}

Card& makeSetup(maps::FrmMaps_QV_ign& window, Binder& binder, QWidget* parent) {
    GroupCard group(window.ignitionSetup.frame, binder, parent);
    group.addValue(labelOf(window.txtchargetime), window.txtchargetime, kScaledDigits, QStringLiteral("ms"));
    group.addChoice(labelOf(window.Combosensortype), window.Combosensortype);
    group.addNote(steppedLegend());
    addTransfer(group, window.ignitionSetup, 'a', 'v');
    return group.card();
}

}  // namespace

IgnitionBoxView::IgnitionBoxView(maps::FrmMaps_QV_ign& window, FrameClock& clock)
    : FittedView(window, clock, kUsual), maps_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeMapBar({window, window, window, nullptr, &window.answers}, *this, &content()));
    auto& columns = makeLayout<QHBoxLayout>();
    columns.addLayout(&makeLeft(), 1);
    columns.addLayout(&makeRight());
    rows.addLayout(&columns, 1);
    rows.addWidget(&makeMapStatusLine(maps_, binder(), &content()));
    orderTabs();
    fitTexts();
}

QLayout& IgnitionBoxView::makeLeft() {
    auto& left = makeLayout<QVBoxLayout>();
    left.addWidget(&makeSizeNote(maps_.sizeNote, binder(), &content()));
    left.addWidget(&GridCards(maps_, binder()).make(maps_.FrameIgn, maps_.ign, QStringLiteral("Ignition"), &content()),
                   1);
    left.addLayout(&makeGroups());
    return left;
}

QLayout& IgnitionBoxView::makeGroups() {
    auto& groups = makeLayout<QHBoxLayout>();
    groups.addWidget(&makeIdle(maps_, binder(), &content()));
    groups.addWidget(&makeLaunch(maps_, binder(), &content()), 1);
    groups.addWidget(&makeSetup(maps_, binder(), &content()));
    return groups;
}

QLayout& IgnitionBoxView::makeRight() {
    auto& right = makeLayout<QVBoxLayout>();
    PairCard transfer(QStringLiteral("ECU"), binder(), &content());
    transfer.addButtons(maps_.btnReadIgn, 'i', maps_.btnWriteIgn, 'g');
    transfer.addButtons(maps_.btnReadMisc, 'm', maps_.btnSaveMisc, 'c');
    transfer.addVerify(maps_, 0);
    right.addWidget(&transfer.card());
    PairCard live(QStringLiteral("Live"), binder(), &content());
    live.addBox(maps_.chkOnlineChanges, 'e', 0);
    live.addBox(maps_.chkFocusOnIGN, 'n', 1);
    right.addWidget(&live.card());
    right.addWidget(&makeMiscCard(maps_, binder(), &content()), 1);
    return right;
}

void IgnitionBoxView::orderTabs() {
    std::vector<controls::Control*> order{&maps_.ign(0)};
    const auto add = [&order](auto&... controls) { (order.push_back(&controls), ...); };
    const auto addAll = [&order](auto& controls) {
        for (auto& control : controls) {
            order.push_back(&control);
        }
    };
    addAll(maps_.txtIdleAdv);
    add(maps_.idleIgnition.btnRead, maps_.idleIgnition.btnSave, maps_.txtLaunchControlLimit, maps_.Combolaunchmode,
        maps_.txtLaunchFixedDelay, maps_.ComboAccellimiter, maps_.txtMaxAccel, maps_.launchControl.btnRead,
        maps_.launchControl.btnSave, maps_.txtchargetime, maps_.Combosensortype, maps_.ignitionSetup.btnRead,
        maps_.ignitionSetup.btnSave, maps_.btnReadIgn, maps_.btnWriteIgn, maps_.btnReadMisc, maps_.btnSaveMisc,
        maps_.chkOnlineChanges, maps_.chkFocusOnIGN);
    addAll(maps_.txtMisc);
    addAll(maps_.CheckMisc);
    addAll(maps_.optINJMaxOpen);
    add(maps_.btnLoad, maps_.btnSave, maps_.btnShow3D, maps_.btnHelp);
    binder().setTabOrder(order);
}

}  // namespace korvane::views
