#include "views/maps/IgnitionBoxView.h"

#include <QFontInfo>
#include <QHBoxLayout>

#include <vector>

#include "views/frame/VerifyPart.h"
#include "views/maps/BoxParts.h"
#include "views/maps/MapNotes.h"
#include "views/maps/MapParts.h"
#include "views/maps/MapStatusLine.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{105, 56};  // text sizes
constexpr double kSmallestText = 0.8;
constexpr double kRoomForGroups = 96;  // text sizes, of a window that has them side by side

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
    : FittedView(window, clock, kUsual, kSmallestText),
      maps_(window),
      pages_(child<MapPages>(&content(), QStringLiteral("Ignition"), QStringLiteral("Idle, launch, sensor"))),
      column_(child<ScrollColumn>(&content())),
      groups_(makeLayout<QGridLayout>()) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeMapBar({window, window, window, nullptr, &window.answers}, *this, &content()));
    auto& columns = makeLayout<QHBoxLayout>();
    columns.addLayout(&makeLeft(), 1);
    columns.addWidget(&column_);
    fillRight();
    rows.addLayout(&columns, 1);
    rows.addWidget(&makeMapStatusLine(maps_, binder(), &content()));
    orderTabs();
    fitTexts();
}

QLayout& IgnitionBoxView::makeLeft() {
    auto& left = makeLayout<QVBoxLayout>();
    left.addWidget(&makeSizeNote(maps_.sizeNote, binder(), &content()));
    left.addWidget(&pages_, 1);
    auto& map = GridCards(maps_, binder()).make(maps_.FrameIgn, maps_.ign, QStringLiteral("Ignition"), &pages_.upper());
    pages_.upper().layout()->addWidget(&map);
    makeGroups();
    return left;
}

void IgnitionBoxView::makeGroups() {
    dynamic_cast<QVBoxLayout&>(*pages_.lower().layout()).addLayout(&groups_);
    groups_.setAlignment(Qt::AlignTop);
    pages_.keepLowerLow();
    idle_ = &makeIdle(maps_, binder(), &pages_.lower());
    launch_ = &makeLaunch(maps_, binder(), &pages_.lower());
    setup_ = &makeSetup(maps_, binder(), &pages_.lower());
    placeGroups();
}

// Side by side, or, on a page of their own, one below the other beside the highest of them.
void IgnitionBoxView::placeGroups() {
    const bool paged = pages_.isPaged();
    groups_.addWidget(idle_, 0, 0);
    groups_.addWidget(launch_, 0, 1, paged ? 2 : 1, 1);
    groups_.addWidget(setup_, paged ? 1 : 0, paged ? 0 : 2);
    groups_.setColumnStretch(1, 1);
}

void IgnitionBoxView::resizeEvent(QResizeEvent* event) {
    const bool narrow = width() < kRoomForGroups * QFontInfo(font()).pixelSize();
    if (const bool paged = narrow || MapPages::neededIn(*this); paged != pages_.isPaged()) {
        pages_.setPaged(paged);
        placeGroups();
    }
    FittedView::resizeEvent(event);
}

void IgnitionBoxView::fillRight() {
    auto& right = child<QVBoxLayout>(&column_.inside());
    right.setContentsMargins(0, 0, 0, 0);
    right.setSpacing(kSpacing);
    PairCard transfer(QStringLiteral("ECU"), binder(), &content());
    transfer.addButtons(maps_.btnReadIgn, 'i', maps_.btnWriteIgn, 'g');
    transfer.addButtons(maps_.btnReadMisc, 'm', maps_.btnSaveMisc, 'c');
    transfer.addVerify(maps_.verifySwitch(), 0);
    right.addWidget(&transfer.card());
    PairCard live(QStringLiteral("Live"), binder(), &content());
    live.addBox(maps_.chkOnlineChanges, 'e', 0);
    live.addBox(maps_.chkFocusOnIGN, 'n', 1);
    right.addWidget(&live.card());
    right.addWidget(&makeMiscCard(maps_, binder(), &content()), 1);
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
    putVerifyBehind(maps_.btnSaveMisc, *this);
    // Behind the grid, so that a window with pages begins in its map too.
    setTabOrder(binder().widgetOf(&maps_.ign(0)), &pages_.tabs());
}

}  // namespace korvane::views
