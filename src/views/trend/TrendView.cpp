#include "views/trend/TrendView.h"

#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>

#include "views/frame/BoundWidgets.h"
#include "views/frame/TransferBar.h"
#include "views/trend/LogPlot.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/ScrollColumn.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{88, 40};  // text sizes
constexpr int kGap = 6;
constexpr int kListLetters = 11;

// Where the mark stands follows from the surface's twips.
class MarkBinding : public Binding {
public:
    MarkBinding(Binder& binder, trend::FrmTrend_txt& window, LogPlot& plot)
        : Binding(binder, window.Cursor, plot.mark()), window_(window), plot_(plot) {}

    void show() override {
        const double twips = std::max(window_.Picture1.Width.get(), 1);
        plot_.mark().standAt(static_cast<int>(window_.Cursor.Left * plot_.width() / twips));
        Binding::show();
    }

protected:
    void showContent() override {}

private:
    trend::FrmTrend_txt& window_;
    LogPlot& plot_;
};

DropDown& makeList(controls::ComboBox& list, const QString& name, Binder& binder, QWidget* parent) {
    auto& widget = child<DropDown>(parent);
    widget.setMinimumContentsLength(kListLetters);
    widget.setAccessibleName(name);
    binder.bind(list, widget);
    return widget;
}

// A list behind its label.
void addLine(QGridLayout& grid, controls::Label& label, controls::ComboBox& list, Binder& binder, QWidget* parent) {
    auto& name = child<QLabel>(parent);
    binder.bind(label, name);
    auto& widget = makeList(list, name.text().remove(u':'), binder, parent);
    name.setBuddy(&widget);
    const int row = grid.rowCount();
    grid.addWidget(&name, row, 0);
    grid.addWidget(&widget, row, 1);
}

QString droppedFile(const QMimeData& data) {
    const auto urls = data.urls();
    return urls.size() == 1 && urls.front().isLocalFile() ? urls.front().toLocalFile() : QString();
}

}  // namespace

TrendView::TrendView(trend::FrmTrend_txt& window, FrameClock& clock)
    : FittedView(window, clock, kUsual), window_(window) {
    auto& columns = child<QHBoxLayout>(&content());
    columns.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    columns.setSpacing(kSpacing);
    columns.addWidget(&makeChoices());
    auto& rows = child<QVBoxLayout>(kNobody);
    rows.setSpacing(kSpacing);
    columns.addLayout(&rows, 1);
    rows.addWidget(&makePlot(), 1);
    rows.addWidget(&makeNotes());
    setAcceptDrops(true);
    fitTexts();
}

QWidget& TrendView::makeChoices() {
    auto& column = child<ScrollColumn>(&content());
    QWidget* const inside = &column.inside();
    auto& rows = child<QVBoxLayout>(inside);
    rows.setContentsMargins(0, 0, 0, 0);
    rows.setSpacing(kSpacing);
    for (auto* const card : {&makeFile(inside), &makeSeries(inside), &makeScale(inside), &makePages(inside)}) {
        rows.addWidget(card);
    }
    rows.addStretch(1);
    return column;
}

QWidget& TrendView::makeFile(QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& rows = child<QVBoxLayout>(&card);
    rows.setSpacing(kGap);
    rows.addWidget(&makeButton(window_.btnLoad, 'l', binder(), &card));
    rows.addWidget(&makeButton(window_.btnSimulate, 's', binder(), &card));
    rows.addWidget(&makeButton(window_.btnRehearse, 'd', binder(), &card));
    card.fitMargins();
    return card;
}

QWidget& TrendView::makeSeries(QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& rows = child<QVBoxLayout>(&card);
    rows.setSpacing(kGap);
    binder().bind(window_.Frame1, card);
    int number = 0;
    for (auto* const list : {&window_.Combo1, &window_.Combo2, &window_.Combo3, &window_.Combo4, &window_.Combo5}) {
        rows.addWidget(&makeList(*list, QStringLiteral("Trendline %1").arg(++number), binder(), &card));
    }
    card.fitMargins();
    return card;
}

QWidget& TrendView::makeScale(QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& grid = child<QGridLayout>(&card);
    grid.setSpacing(kGap);
    grid.setColumnStretch(1, 1);
    addLine(grid, window_.lblMaxValue, window_.Combo6, binder(), &card);
    grid.addWidget(&makeBox(window_.chkAutoSetpoint, 'a', binder(), &card), grid.rowCount(), 0, 1, 2);
    grid.addWidget(&makeBox(window_.CheckWithLimits, 'w', binder(), &card), grid.rowCount(), 0, 1, 2);
    card.fitMargins();
    return card;
}

QWidget& TrendView::makePages(QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& grid = child<QGridLayout>(&card);
    grid.setSpacing(kGap);
    grid.setColumnStretch(1, 1);
    addLine(grid, window_.lblPoints, window_.Combopoints, binder(), &card);
    auto& rows = child<Readout>(static_cast<QWidget*>(&card), Readout::Look{.alignment = Qt::AlignRight});
    rows.setReserve(QStringLiteral("100000"));
    rows.setAccessibleName(QStringLiteral("Rows in the log"));
    binder().bind(window_.lblMaxpoints, rows);
    const int row = grid.rowCount();
    auto& name = child<QLabel>(static_cast<QWidget*>(&card), QStringLiteral("Rows:"));
    grid.addWidget(&name, row, 0);
    grid.addWidget(&rows, row, 1);
    auto& buttons = child<QHBoxLayout>(kNobody);
    buttons.setSpacing(kGap);
    buttons.addWidget(&makeButton(window_.btnPrev, 'p', binder(), &card));
    buttons.addWidget(&makeButton(window_.btnNext, 'n', binder(), &card));
    grid.addLayout(&buttons, row + 1, 0, 1, 2);
    card.fitMargins();
    return card;
}

QWidget& TrendView::makePlot() {
    auto& plot = child<LogPlot>(&content());
    plot.setAccessibleName(QStringLiteral("Log"));
    binder().bind(window_.Picture1, plot);
    binder().bind(std::make_unique<MarkBinding>(binder(), window_, plot), {&window_.Cursor}, plot.mark());
    connectPlot(plot);
    return plot;
}

void TrendView::connectPlot(LogPlot& plot) {
    plot.pointed = [this](double share) { binder().act([&] { window_.pointAt(share * window_.Picture1.Width); }); };
    plot.left = [this] { binder().act([this] { window_.pointAway(); }); };
    plot.turned = [this](int notches) { binder().act([&] { window_.changePoints(notches); }); };
}

QWidget& TrendView::makeNotes() {
    auto& card = child<Card>(&content());
    QWidget* const inside = &card;
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kGap);
    auto& row = child<QHBoxLayout>(kNobody);
    auto& log = child<QLabel>(inside);
    log.setWordWrap(true);
    log.setMinimumWidth(1);  // however long a word in it
    log.setTextInteractionFlags(Qt::TextSelectableByMouse);
    binder().bind(window_.lblLog, log);
    load_ = &makeWorkBar(window_.prgLoad, binder(), inside, QStringLiteral("Loading"), QStringLiteral("Loading %p%"));
    QSizePolicy policy = load_->sizePolicy();
    policy.setRetainSizeWhenHidden(false);
    load_->setSizePolicy(policy);
    load_->installEventFilter(this);
    row.addWidget(&log, 1);
    row.addWidget(load_);
    rows.addLayout(&row);
    auto& values = child<Readout>(inside);
    values.setAccessibleName(QStringLiteral("Values of the row"));
    values.setMinimumWidth(1);
    binder().bind(window_.lblCursor, values);
    rows.addWidget(&values);
    card.fitMargins();
    return card;
}

void TrendView::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFile(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void TrendView::dropEvent(QDropEvent* event) {
    const auto file = droppedFile(*event->mimeData());
    if (!file.isEmpty()) {
        event->acceptProposedAction();
        binder().act([&] { window_.open(std::filesystem::path(QFile::encodeName(file).toStdString())); });
    }
}

bool TrendView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == load_ && event->type() == QEvent::Show) {
        setCursor(Qt::BusyCursor);
    } else if (watched == load_ && event->type() == QEvent::Hide) {
        unsetCursor();
    }
    return FittedView::eventFilter(watched, event);
}

}  // namespace korvane::views
