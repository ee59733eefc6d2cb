#include "views/dashboard/BigTextView.h"

#include <QCheckBox>
#include <QHBoxLayout>

#include <algorithm>

#include "live/readout/BigTextShape.h"
#include "platform/Machine.h"
#include "views/frame/LinkMark.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/BigFigures.h"

namespace korvane::views {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kShortestName = 10;  // letters of a channel's name that are always in view

class FiguresBinding : public Binding {
public:
    FiguresBinding(Binder& binder, controls::Label& label, BigFigures& widget)
        : Binding(binder, label, widget), label_(label), figures_(widget) {}

protected:
    void showContent() override { figures_.setText(QString::fromStdString(label_.Caption)); }

private:
    controls::Label& label_;
    BigFigures& figures_;
};

}  // namespace

BigTextView::BigTextView(live::FrmBigText& window, FrameClock& clock)
    : WindowView(window, clock),
      window_(window),
      bar_(child<QWidget>(this)),
      figures_(child<BigFigures>(this)),
      rest_(window.machine().pump.makeAlarm([this] { rested(); })) {
    makeBar();
    figures_.setFromEcu();
    binder().bind(std::make_unique<FiguresBinding>(binder(), window_.Label1, figures_), {&window_.Label1}, figures_);
    const int room = live::kBesideFigures / kTwipsPerPixel;
    const auto least = live::shapeAround((bar_.minimumSizeHint().width() + room) * kTwipsPerPixel, 1 << 20);
    setMinimumSize(least.width / kTwipsPerPixel, least.height / kTwipsPerPixel);
}

void BigTextView::makeBar() {
    auto& row = child<QHBoxLayout>(&bar_);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(2 * kSpacing);
    auto& channel = child<DropDown>(&bar_);
    auto& alarms = child<QCheckBox>(&bar_);
    channel.setAccessibleName(QStringLiteral("Channel"));
    channel.setMinimumContentsLength(kShortestName);
    binder().bind(window_.Combo1, channel);
    binder().bind(window_.Check1, alarms, 'a');
    connect(&channel, &DropDown::currentIndexChanged, &figures_, [this] { figures_.forget(); });
    row.addWidget(&channel);
    row.addWidget(&alarms);
    row.addStretch(1);
    auto& badge = child<QHBoxLayout>(kNobody);
    badge.setObjectName(QLatin1String(LinkMark::kPlace));
    row.addLayout(&badge);
    binder().setTabOrder({&window_.Combo1, &window_.Check1});
}

// What the window's rule leaves around the figures, half of it at each side and below them, is the bar's above them.
void BigTextView::layOut() {
    const int margin = live::kBesideFigures / 2 / kTwipsPerPixel;
    const int above = live::kAboveAndBelowFigures / kTwipsPerPixel - margin;
    bar_.setGeometry(margin, 0, std::max(width() - 2 * margin, 0), above);
    figures_.setGeometry(margin, above, std::max(width() - 2 * margin, 0), std::max(height() - above - margin, 0));
}

void BigTextView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
    if (binder().isAttached()) {
        auto& pump = window_.machine().pump;
        rest_->callAt(pump.now() + kRest * platform::kMicrosPerMilli);
    }
}

void BigTextView::rested() {
    if (!binder().isAttached()) {
        return;
    }
    if (size() == modelSize()) {
        refused_ = QSize();
    } else if (size() != refused_) {
        refused_ = size();
        reportSize();
    }
}

}  // namespace korvane::views
