#include "views/MainView.h"

#include <QFontInfo>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "views/Child.h"
#include "views/MainParts.h"

namespace korvane::views {

namespace {

// A window of this many text sizes has all its parts at their usual size.
constexpr double kUsualWidth = 105;
constexpr double kUsualHeight = 56;
// How much of a larger window goes into larger texts; the rest goes into dials and trends.
constexpr double kTextShare = 0.6;
constexpr QSize kSmallest{480, 320};
constexpr int kInstrumentStretch = 12;
constexpr int kValueStretch = 4;
constexpr int kTrendStretch = 8;

}  // namespace

MainView::MainView(live::FrmSarn2& window, FrameClock& clock)
    : WindowView(window, clock), content_(child<QWidget>(static_cast<QWidget*>(nullptr))) {
    auto& scroll = child<QScrollArea>(static_cast<QWidget*>(this));
    scroll.setFrameShape(QFrame::NoFrame);
    scroll.setWidgetResizable(true);
    scroll.setFocusPolicy(Qt::NoFocus);
    scroll.setWidget(&content_);
    auto& whole = child<QVBoxLayout>(static_cast<QWidget*>(this));
    whole.setContentsMargins(0, 0, 0, 0);
    whole.addWidget(&scroll);
    setMinimumSize(kSmallest);
    build(window);
    orderTabs(window);
    fitTexts();
}

void MainView::build(live::FrmSarn2& window) {
    auto& rows = child<QVBoxLayout>(&content_);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeConnectionBar(window, binder(), &content_));
    auto& columns = child<QHBoxLayout>(static_cast<QWidget*>(nullptr));
    columns.setSpacing(kSpacing);
    rows.addLayout(&columns, 1);
    columns.addWidget(&makeServiceColumn(window, binder(), &content_));
    auto& middle = child<QVBoxLayout>(static_cast<QWidget*>(nullptr));
    middle.setSpacing(kSpacing);
    columns.addLayout(&middle, 1);
    middle.addWidget(&makeInstruments(window, binder(), &content_), kInstrumentStretch);
    middle.addWidget(&makeValues(window, binder(), &content_), kValueStretch);
    middle.addWidget(&makeTrends(window, binder(), &content_), kTrendStretch);
    columns.addWidget(&makeStatusColumn(window, binder(), &content_));
}

void MainView::orderTabs(live::FrmSarn2& window) {
    binder().setTabOrder({&window.ComboPort,  &window.ComboBaud,       &window.ComboRefresh,    &window.btnConnect,
                          &window.btnKartat,  &window.btnAsetukset,    &window.btnTuningHelp,   &window.Command1,
                          &window.Command7,   &window.btnDatalogTrend, &window.Command5,        &window.Command8,
                          &window.Command6,   &window.btnBackup,       &window.btnUploadEEPROM, &window.Command2,
                          &window.Command3,   &window.Command4,        &window.chkSlowTrend,    &window.chkUseSound,
                          &window.chkDatalog, &window.txtDatalogFile});
}

void MainView::fitTexts() {
    const double usual = QFontInfo(font()).pixelSize();
    const double room = std::min(width() / (usual * kUsualWidth), height() / (usual * kUsualHeight));
    const int pixels = static_cast<int>(std::lround(usual * (1 + std::max(room - 1, 0.0) * kTextShare)));
    if (pixels != QFontInfo(content_.font()).pixelSize()) {
        QFont sized = font();
        sized.setPixelSize(pixels);
        content_.setFont(sized);
    }
}

void MainView::resizeEvent(QResizeEvent* event) {
    fitTexts();
    WindowView::resizeEvent(event);
}

void MainView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        fitTexts();
    }
    WindowView::changeEvent(event);
}

}  // namespace korvane::views
