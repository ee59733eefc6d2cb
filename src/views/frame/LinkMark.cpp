#include "views/frame/LinkMark.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

#include "views/frame/FittedView.h"
#include "views/frame/LinkWords.h"
#include "views/frame/TransferBar.h"
#include "views/widgets/Child.h"
#include "views/widgets/Dimmable.h"
#include "views/widgets/ScaledFont.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {
using State = link::LinkState::State;

constexpr double kScale = 0.9;  // of the view's text
constexpr int kBelow = 1;       // logical pixels above the mark and below it
}  // namespace

LinkMark::LinkMark(link::LinkState& link, std::function<void()> closePort, platform::EventPump& pump, WindowView* view)
    : QWidget(view),
      link_(&link),
      closePort_(std::move(closePort)),
      pump_(pump),
      view_(*view),
      badge_(child<LinkBadge>(this)),
      stop_(child<QPushButton>(this)),
      nextSecond_(pump.makeAlarm([this] { showAge(); }, platform::AlarmKind::Device)) {
    auto& row = child<QHBoxLayout>(this);
    row.setContentsMargins(0, 0, 0, 0);
    row.addWidget(&stop_);
    row.addWidget(&badge_);
    badge_.onTip([this] { return link_ != nullptr ? linkTip(*link_) : QString(); });
    makeStop();
    place();
    view_.installEventFilter(this);
    link_->addObserver(*this);
    showState();
}

LinkMark::~LinkMark() {
    if (link_ != nullptr) {
        link_->removeObserver(*this);
    }
}

void LinkMark::makeStop() {
    stop_.setObjectName(QStringLiteral("stopTransfer"));
    stop_.setText(QStringLiteral("Stop"));
    stop_.setToolTip(
        QStringLiteral("Closes the port, which ends the transfer. What the ECU has taken until then stays in it."));
    stop_.setAutoDefault(false);
    stop_.hide();
    connect(&stop_, &QPushButton::clicked, this, [this] { view_.binder().act(closePort_); });
}

void LinkMark::place() {
    if (auto* const named = view_.findChild<QBoxLayout*>(QLatin1String(kPlace))) {
        named->addWidget(this);
        return;
    }
    setFont(scaledFont(font(), kScale));
    badge_.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    stop_.setFixedSize(stop_.fontMetrics().horizontalAdvance(stop_.text()) + 2 * kSpacing, badge_.sizeHint().height());
    if (auto* const rows = dynamic_cast<QBoxLayout*>(view_.layout())) {
        hasStop_ = true;
        layout()->setContentsMargins(0, 0, kSpacing, kBelow);
        rows->addWidget(this, 0, Qt::AlignRight);
        takeMarginBelow();
    } else {
        inCorner_ = true;
        moveToCorner();
    }
}

// The badge stands in what is otherwise empty below the parts of a view that fits its window.
void LinkMark::takeMarginBelow() {
    auto* const fitted = dynamic_cast<FittedView*>(&view_);
    if (auto* const parts = fitted != nullptr ? fitted->content().layout() : nullptr) {
        QMargins margins = parts->contentsMargins();
        margins.setBottom(std::min(margins.bottom(), kBelow));
        parts->setContentsMargins(margins);
    }
}

void LinkMark::moveToCorner() {
    const QSize size = sizeHint();
    setGeometry(view_.width() - size.width() - kSpacing, view_.height() - size.height() - kSpacing, size.width(),
                size.height());
    raise();
}

bool LinkMark::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && inCorner_) {
        moveToCorner();
    } else if (event->type() == QEvent::Show) {
        showAge();
    }
    return QWidget::eventFilter(watched, event);
}

void LinkMark::propertyChanged(controls::Object&, const void* property) {
    if (property == link_->stateProperty() || property == link_->busyProperty()) {
        showState();
    }
}

void LinkMark::objectGone(const controls::Object&) {
    link_ = nullptr;
    nextSecond_->cancel();
}

void LinkMark::showState() {
    stop_.setVisible(hasStop_ && link_->isBusy());
    if (link_->isBusy()) {
        view_.setCursor(Qt::BusyCursor);
    } else {
        view_.unsetCursor();
    }
    dimValues();
    endBars();
    showAge();
}

// While live data comes in nothing changes with the time. It goes on while the program blocks or shows a message box.
void LinkMark::showAge() {
    if (link_ == nullptr) {
        return;
    }
    badge_.setState(linkLook(*link_), linkWord(*link_), linkAge(*link_));
    const auto state = link_->state();
    if (view_.isVisible() && state != State::Closed && state != State::Live) {
        nextSecond_->callAt(pump_.now() + platform::kMicrosPerSecond - link_->age() % platform::kMicrosPerSecond);
    } else {
        nextSecond_->cancel();
    }
}

void LinkMark::dimValues() {
    const auto state = link_->state();
    for (auto* const widget : view_.findChildren<QWidget*>()) {
        auto* const value = dynamic_cast<Dimmable*>(widget);
        if (value != nullptr && value->source() != Dimmable::Source::Own) {
            const bool live = value->source() == Dimmable::Source::LiveData;
            value->setDimmed(live ? state != State::Live : state == State::Closed);
        }
    }
}

void LinkMark::endBars() {
    for (auto* const bar : view_.findChildren<QProgressBar*>()) {
        if (auto* const transfer = dynamic_cast<TransferBar*>(bar)) {
            transfer->setEnded(link_->state() == State::Closed);
        }
    }
}

}  // namespace korvane::views
