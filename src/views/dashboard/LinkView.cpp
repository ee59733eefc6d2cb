#include "views/dashboard/LinkView.h"

#include <QLabel>
#include <QVBoxLayout>

#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/charts/PictureView.h"

namespace korvane::views {

namespace {
constexpr QSizeF kUsual{43, 43};  // text sizes
constexpr int kPlotLines = 6;     // of text, the least height of a plot: all three fit a low screen
}  // namespace

LinkView::LinkView(doctor::FrmLink& window, FrameClock& clock) : FittedView(window, clock, kUsual) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeLine(window.lblState, content()));
    rows.addWidget(&makePlot("Round trip", window.lblRoundTrip, window.picRoundTrip), 1);
    rows.addWidget(&makePlot("Frames", window.lblFrames, window.picFrames), 1);
    rows.addWidget(&makePlot("Faults", window.lblFaults, window.picFaults), 1);
    fitTexts();
}

QWidget& LinkView::makeLine(controls::Label& label, QWidget& parent) {
    auto& line = child<QLabel>(&parent);
    line.setWordWrap(true);
    line.setTextInteractionFlags(Qt::TextSelectableByMouse);
    binder().bind(label, line);
    return line;
}

QWidget& LinkView::makePlot(const char* title, controls::Label& label, controls::PictureBox& picture) {
    auto& card = child<Card>(&content(), QLatin1String(title));
    auto& rows = child<QVBoxLayout>(&card);
    auto& plot = child<PictureView>(&card);
    plot.setAccessibleName(QLatin1String(title) + QStringLiteral(" of the last ten minutes"));
    binder().bind(picture, plot);
    plot.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    plot.setMinimumHeight(kPlotLines * fontMetrics().lineSpacing());
    rows.addWidget(&plot, 1);
    rows.addWidget(&makeLine(label, card));
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
