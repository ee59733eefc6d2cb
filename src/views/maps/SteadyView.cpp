#include "views/maps/SteadyView.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <vector>

#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TextList.h"
#include "views/widgets/charts/PictureView.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{40, 43};  // text sizes
constexpr int kDigits = 6;

QLabel& makeLine(controls::Label& label, const char* spoken, Binder& binder, QWidget* parent) {
    auto& line = child<QLabel>(parent);
    line.setWordWrap(true);
    line.setAccessibleName(QLatin1String(spoken));
    binder.bind(label, line);
    return line;
}

ValueBox& makeValue(controls::TextBox& box, const QString& spoken, Binder& binder, QWidget* parent) {
    auto& value = child<ValueBox>(parent, kDigits);
    value.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    value.setAccessibleName(spoken);
    binder.bind(box, value);
    return value;
}

}  // namespace

SteadyView::SteadyView(maps::FrmSteady& window, FrameClock& clock)
    : FittedView(window, clock, kUsual), window_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeState());
    auto& cards = child<QHBoxLayout>(kNobody);
    cards.setSpacing(kSpacing);
    cards.addWidget(&makeAuthority());
    cards.addWidget(&makeDelays(), 1);
    rows.addLayout(&cards);
    auto& below = child<QHBoxLayout>(kNobody);
    below.setSpacing(kSpacing);
    below.addWidget(&makeSamples(), 1);
    below.addWidget(&makeErrors(), 1);
    rows.addLayout(&below, 1);
    rows.addLayout(&makeButtons());
    std::vector<controls::Control*> order{&window.txtRich, &window.txtLean, &window.chkCarry};
    for (auto& box : window.txtDelay) {
        order.push_back(&box);
    }
    order.insert(order.end(), {&window.lstSamples, &window.btnPutBack, &window.btnNewBaseline});
    binder().setTabOrder(order);
    fitTexts();
}

void SteadyView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && binder().isAttached()) {
        binder().act([this] { window_.leaveBox(); });
    }
    FittedView::changeEvent(event);
}

QWidget& SteadyView::makeState() {
    auto& card = child<Card>(&content(), QStringLiteral("State"));
    auto& rows = child<QVBoxLayout>(&card);
    rows.addWidget(&makeLine(window_.lblState, "State", binder(), &card));
    rows.addWidget(&makeLine(window_.lblReason, "Why it is stopped", binder(), &card));
    rows.addWidget(&makeLine(window_.lblCell, "Cell in which the engine runs", binder(), &card));
    rows.addWidget(&makeLine(window_.lblReasons, "Samples rejected there, by reason", binder(), &card));
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    card.fitMargins();
    return card;
}

QWidget& SteadyView::makeAuthority() {
    auto& card = child<Card>(&content(), QStringLiteral("Authority"));
    auto& grid = child<QGridLayout>(&card);
    const auto add = [&](const char* name, controls::TextBox& box) {
        const int row = grid.rowCount();
        const QString words = QLatin1String(name);
        auto& value = makeValue(box, words + QStringLiteral(", per cent"), binder(), &card);
        auto& label = child<QLabel>(&card, words);
        label.setBuddy(&value);
        grid.addWidget(&label, row, 0);
        grid.addWidget(&value, row, 1);
        grid.addWidget(&child<QLabel>(&card, QStringLiteral("%")), row, 2);
    };
    add("Richer by at most", window_.txtRich);
    add("Leaner by at most", window_.txtLean);
    auto& carry = child<QCheckBox>(&card);
    binder().bind(window_.chkCarry, carry, 'c');
    grid.addWidget(&carry, grid.rowCount(), 0, 1, 3);
    grid.setRowStretch(grid.rowCount(), 1);
    card.fitMargins();
    return card;
}

QWidget& SteadyView::makeDelays() {
    auto& card = child<Card>(&content(), QStringLiteral("Delay of lambda, by load"));
    auto& grid = child<QGridLayout>(&card);
    grid.addWidget(&child<QLabel>(&card, QStringLiteral("Fixed, ms")), 0, 1);
    for (int zone = 0; zone < window_.txtDelay.count(); ++zone) {
        auto& words = child<QLabel>(&card);
        binder().bind(window_.lblZone(zone), words);
        grid.addWidget(&words, zone + 1, 0);
        grid.addWidget(&makeValue(window_.txtDelay(zone), QStringLiteral("Fixed delay of zone %1, ms").arg(zone + 1),
                                  binder(), &card),
                       zone + 1, 1);
    }
    grid.setColumnStretch(0, 1);
    card.fitMargins();
    return card;
}

QWidget& SteadyView::makeSamples() {
    auto& card = child<Card>(&content(), QStringLiteral("Samples"));
    auto& rows = child<QVBoxLayout>(&card);
    auto& list = child<TextList>(&card);
    list.setAccessibleName(QStringLiteral("Samples used, and rejected by reason"));
    binder().bind(window_.lstSamples, list);
    rows.addWidget(&list, 1);
    card.fitMargins();
    return card;
}

QWidget& SteadyView::makeErrors() {
    auto& card = child<Card>(&content(), QStringLiteral("Error of the map against the targets"));
    auto& rows = child<QVBoxLayout>(&card);
    auto& picture = child<PictureView>(&card);
    picture.setAccessibleName(QStringLiteral("Error of the map over the time of the run"));
    binder().bind(window_.picErrors, picture);
    rows.addWidget(&picture, 1);
    rows.addWidget(&makeLine(window_.lblErrors, "Error of the map", binder(), &card));
    card.fitMargins();
    return card;
}

QLayout& SteadyView::makeButtons() {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(&makeLine(window_.lblNote, "What came of it", binder(), &content()), 1);
    const auto add = [&](controls::CommandButton& button, char mnemonic) {
        auto& widget = child<QPushButton>(&content());
        binder().bind(button, widget, mnemonic);
        row.addWidget(&widget);
    };
    add(window_.btnPutBack, 'p');
    add(window_.btnNewBaseline, 'n');
    return row;
}

}  // namespace korvane::views
