#include "views/settings/MiscView.h"

#include <QLabel>
#include <QVBoxLayout>

#include <array>

#include "views/frame/GroupCard.h"
#include "views/frame/ObjectPart.h"
#include "views/frame/StatusLine.h"
#include "views/frame/TransferBar.h"
#include "views/frame/VerifyPart.h"
#include "views/settings/MarksPart.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/PaneStack.h"
#include "views/widgets/ScrollColumn.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TabRow.h"
#include "views/widgets/values/LongLine.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{72, 44};  // text sizes
constexpr int kSaveShare = 3;     // of the width, for each one of the verification: how a report ends matters most

using Fill = void (*)(settings::MiscControls&, Binder&, QWidget*);
constexpr std::array<Fill, settings::kPages> kFills{&fillIgnitionPage, &fillInjectionPage, &fillPwmPage,
                                                    &fillLambdaPage,   &fillMiscPage,      &fillFlagsPage,
                                                    &fillWarningsPage, &fillLaunchPage,    &fillToolsPage};

QLayout& layoutOf(QWidget& widget) {
    auto& layout = child<QVBoxLayout>(&widget);
    layout.setContentsMargins(0, 0, 0, 0);
    return layout;
}

// A read that has not got everything is told before the last save.
QString toldBy(const fields::Answers& read, const fields::SaveReport& save) {
    QStringList told;
    for (const auto& text : {read.Failed ? read.Text.get() : std::string(), save.Text.get()}) {
        if (!text.empty()) {
            told << QString::fromStdString(text);
        }
    }
    return told.join(QStringLiteral(". "));
}

void keepPlace(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

}  // namespace

// Tab goes through the widgets in the order in which they are made: tabs, page after page, the row below.
MiscView::MiscView(settings::FrmMisc& window, FrameClock& clock) : FittedView(window, clock, kUsual) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeTabs(window));
    rows.addWidget(&makePages(window), 1);
    rows.addWidget(&makeFoot(window));
    binder().bind(
        std::make_unique<MarksPart>(window, *content().findChild<QLabel*>(QStringLiteral("lambdaLine")), binder()));
    fitTexts();
}

QWidget& MiscView::makeTabs(settings::FrmMisc& window) {
    auto& tabs = child<TabRow>(&content());
    tabs.setAccessibleName(QStringLiteral("Settings"));
    binder().bind(window.tbsOptions, tabs);
    return tabs;
}

// Every page takes part in the size, so that none of them jumps when the tab changes. In a low window one that
// needs it is scrolled above the foot.
QWidget& MiscView::makePages(settings::FrmMisc& window) {
    auto& stack = child<PaneStack>(&content());
    for (int i = 0; i < settings::kPages; ++i) {
        auto& page = stack.addPage();
        auto& column = child<ScrollColumn>(&page, ScrollColumn::Width::AtLeast);
        layoutOf(page).addWidget(&column);
        auto& pane = child<QWidget>(&column.inside());
        layoutOf(column.inside()).addWidget(&pane);
        keepPlace(pane);
        binder().bindContainer(window.picOptions(i), pane);
        kFills.at(static_cast<std::size_t>(i))(window, binder(), &pane);
        stack.watch(pane);
    }
    return stack;
}

QWidget& MiscView::makeFoot(settings::FrmMisc& window) {
    auto& card = child<Card>(&content());
    QWidget* const inside = &card;
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(inside);
    row.setSpacing(kSpacing);
    auto& lines = child<QVBoxLayout>(kNobody);
    lines.setSpacing(0);
    lines.addLayout(&makeState(window, inside));
    auto& told = child<QHBoxLayout>(kNobody);
    told.setSpacing(kSpacing);
    told.addWidget(&makeSaveLine(window, inside), kSaveShare);
    told.addWidget(&makeVerifyLine(window.verifyReport(), binder(), inside), 1);
    lines.addLayout(&told);
    row.addLayout(&lines, 1);
    auto& again = makeAgainButton(window.verifyReport(), window, binder(), inside);
    auto& verify = makeVerifyBox(window.verifySwitch(), binder(), inside);
    verify.setText(QStringLiteral("Verif&y"));
    // Tab goes through the page, "Send again" while it is there, the two buttons, and the box. It comes last: when a
    // page goes, the focus must go from it to a control, which the window has the keys of.
    keepPlace(again);
    row.addWidget(&again);
    row.addWidget(&makeCommand(window.btnLoad, 'h', binder(), inside));
    row.addWidget(&makeCommand(window.btnReadFromFile, 'l', binder(), inside));
    row.addWidget(&verify);
    setTabOrder(binder().widgetOf(&window.btnReadFromFile), &verify);
    card.fitMargins();
    return card;
}

QLayout& MiscView::makeState(settings::FrmMisc& window, QWidget* parent) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(
        &makeStatusLine(*this, window, QStringLiteral("Receiving data from target device!:  Loading.. 70.5%"), parent));
    row.addWidget(&makeTransferBar(window.prgLoad, binder(), parent, QStringLiteral("Reading")));
    row.addStretch(1);
    return row;
}

QWidget& MiscView::makeSaveLine(settings::FrmMisc& window, QWidget* parent) {
    auto& line = child<LongLine>(parent);
    line.setObjectName(QStringLiteral("saveLine"));
    auto& report = window.saveReport();
    auto& answers = window.readAnswers();
    ObjectPart::bind(binder(), {&report, &answers},
                     [&report, &answers, &line] { line.setWords(toldBy(answers, report)); });
    return line;
}

// The window's own size is too small for its pages.
QSize MiscView::wantedSize() const {
    return size().expandedTo(withScrollBar(content().sizeHint()) + QSize(0, heightBelow()));
}

}  // namespace korvane::views
