#include "views/performance/PowerCalcView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <vector>

#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TextList.h"
#include "views/widgets/Veil.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsualSize(68, 38);  // of the text's
constexpr int kDigits = 8;
constexpr int kLineGap = 6;
constexpr int kBlockGap = 20;
constexpr int kListShare = 4;  // of the list's width, free beside the button
constexpr double kTimerScale = 2.2;

// Shows a number that nobody types.
class NumberBox : public QLineEdit {
public:
    explicit NumberBox(QWidget* parent) : QLineEdit(parent) {
        setAlignment(Qt::AlignRight);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        return {metrics.horizontalAdvance(u'0') * kDigits + metrics.height(), QLineEdit::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

QLabel& makeName(const QString& text, QWidget& field, QWidget* parent) {
    auto& label = child<QLabel>(parent, text);
    label.setTextFormat(Qt::PlainText);
    label.setBuddy(&field);
    field.setAccessibleName(text);
    return label;
}

QGridLayout& makeGrid(Card& card) {
    auto& grid = child<QGridLayout>(&card);
    grid.setHorizontalSpacing(kSpacing);
    grid.setVerticalSpacing(kLineGap);
    return grid;
}

}  // namespace

PowerCalcView::PowerCalcView(performance::FrmPowerCalc& window, FrameClock& clock)
    : FittedView(window, clock, kUsualSize), window_(window) {
    auto& columns = child<QHBoxLayout>(&content());
    columns.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    columns.setSpacing(kSpacing);
    columns.addWidget(&makeCar());
    auto& right = child<QVBoxLayout>(kNobody);
    right.setSpacing(kSpacing);
    right.addWidget(&makePull());
    right.addWidget(&makeLog(), 1);
    columns.addLayout(&right, 1);
}

void PowerCalcView::addLine(Card& card, QGridLayout& grid, int row, const Line& line) {
    auto& edit = child<ValueBox>(&card, kDigits);
    edit.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    binder().bind(line.box, edit);
    auto& name = makeName(line.name, edit, &card);
    name.setToolTip(line.meaning);
    edit.setAccessibleDescription(line.meaning);
    grid.addWidget(&name, row, 0);
    grid.addWidget(&edit, row, 1);
    grid.addWidget(&child<QLabel>(&card, line.unit), row, 2);
}

Card& PowerCalcView::makeCar() {
    auto& card = child<Card>(&content(), QStringLiteral("Car"));
    auto& grid = makeGrid(card);
    auto& name = child<QLineEdit>(&card);
    name.setAccessibleName(QStringLiteral("Car name"));
    binder().bind(window_.txtCarName, name);
    grid.addWidget(&name, 0, 0, 1, 3);
    std::vector<Line> lines{{QStringLiteral("Perä"), window_.txtPera, {}, QStringLiteral("final drive ratio")}};
    for (int gear = 0; gear < window_.txtVaihde.count(); ++gear) {
        lines.push_back({QStringLiteral("vaihde%1").arg(gear + 1),
                         window_.txtVaihde(gear),
                         {},
                         QStringLiteral("ratio of gear %1").arg(gear + 1)});
    }
    lines.push_back({QStringLiteral("käytetty vaihde"), window_.txtUsedGear, QStringLiteral("1 to 5"),
                     QStringLiteral("gear in use")});
    lines.push_back({QStringLiteral("paino"), window_.txtPaino, QStringLiteral("kg"), QStringLiteral("weight")});
    lines.push_back({QStringLiteral("renkaan halkaisija"), window_.txtrengas, QStringLiteral("cm"),
                     QStringLiteral("tyre diameter")});
    for (const Line& line : lines) {
        addLine(card, grid, grid.rowCount(), line);
    }
    grid.setRowStretch(grid.rowCount(), 1);
    auto& buttons = child<QHBoxLayout>(kNobody);
    buttons.setSpacing(kSpacing);
    for (const auto& [button, mnemonic] : {std::pair{&window_.Command2, 's'}, std::pair{&window_.Command3, 'l'}}) {
        auto& push = child<QPushButton>(&card);
        binder().bind(*button, push, mnemonic);
        buttons.addWidget(&push);
    }
    grid.addLayout(&buttons, grid.rowCount(), 0, 1, 3);
    card.fitMargins();
    return card;
}

Card& PowerCalcView::makePull() {
    auto& card = child<Card>(&content(), QStringLiteral("Pull"));
    auto& grid = makeGrid(card);
    addLine(card, grid, 0, {QStringLiteral("Start RPM"), window_.txtStartRPM, {}, {}});
    addLine(card, grid, 1, {QStringLiteral("Stop RPM"), window_.txtStopRPM, {}, {}});
    grid.setColumnMinimumWidth(2, kBlockGap);
    addSpeed(card, grid);
    addTimer(card, grid);
    card.fitMargins();
    return card;
}

void PowerCalcView::addSpeed(Card& card, QGridLayout& grid) {
    auto& speed = child<NumberBox>(&card);
    binder().bind(window_.txtSpeed, speed);
    child<Veil>(static_cast<QWidget*>(&speed)).setFromEcu();
    grid.addWidget(&makeName(QStringLiteral("nopeus"), speed, &card), 0, 3);
    grid.addWidget(&speed, 0, 4);
    grid.addWidget(&child<QLabel>(&card, QStringLiteral("km/h")), 0, 5);
}

void PowerCalcView::addTimer(Card& card, QGridLayout& grid) {
    auto& lamp = child<Lamp>(&card);
    lamp.setFromEcu();
    binder().bind(window_.imgLed, lamp);
    auto& state = child<QHBoxLayout>(kNobody);
    state.setSpacing(kLineGap);
    state.addWidget(&lamp);
    state.addWidget(&makeName(QStringLiteral("Timer in ON"), lamp, &card));
    state.addStretch(1);
    grid.addLayout(&state, 1, 3, 1, 3);
    const Readout::Look look{.scale = kTimerScale, .bold = true, .alignment = Qt::AlignRight};
    auto& time = child<Readout>(&card, look);
    time.setReserve(QStringLiteral("00000 ms"));
    binder().bind(window_.lbltimer, time);
    grid.addWidget(&time, 0, 6, 2, 1);
    grid.setColumnStretch(6, 1);
}

Card& PowerCalcView::makeLog() {
    auto& card = child<Card>(&content(), QStringLiteral("Log"));
    auto& rows = child<QVBoxLayout>(&card);
    rows.setSpacing(kSpacing);
    auto& list = child<TextList>(&card);
    list.setAccessibleName(QStringLiteral("Log of pulls"));
    binder().bind(window_.List1, list);
    auto& clear = child<QPushButton>(&card);
    binder().bind(window_.Command1, clear, 'c');
    rows.addWidget(&list, 1);
    auto& foot = child<QHBoxLayout>(kNobody);
    foot.addStretch(kListShare);
    foot.addWidget(&clear, 1);
    rows.addLayout(&foot);
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
