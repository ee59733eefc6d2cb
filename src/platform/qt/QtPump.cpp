#include "platform/qt/QtPump.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QEventLoop>

#include <algorithm>
#include <iterator>
#include <utility>

namespace korvane::platform {

namespace {
// A longer interval is split into several steps: the timer's interval is an int.
constexpr Micros kLongestSleep = 3'600'000 * kMicrosPerMilli;
}  // namespace

// Delivers when an event that was posted to it arrives.
class QtPump::Waker : public QObject {
public:
    explicit Waker(QtPump& pump) : pump_(pump) {}

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        pump_.posted_ = false;
        pump_.deliver();
        return true;
    }

private:
    QtPump& pump_;
};

QtPump::QtPump() : waker_(std::make_unique<Waker>(*this)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { deliver(); });
}

QtPump::~QtPump() = default;

Micros QtPump::now() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start_).count();
}

WallTime QtPump::wallTime() const {
    const QDateTime local = QDateTime::currentDateTime();
    const QDate date = local.date();
    const QTime time = local.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

void QtPump::pump() {
    schedule();
    ++depth_;
    QCoreApplication::processEvents();
    --depth_;
}

void QtPump::wait(int milliseconds) {
    runLoop(milliseconds, QEventLoop::AllEvents);
}

void QtPump::sleep(int milliseconds) {
    if (milliseconds <= 0) {
        return;
    }
    ++sleeps_;
    runLoop(milliseconds, QEventLoop::ExcludeUserInputEvents);
    --sleeps_;
    schedule();
}

void QtPump::runLoop(int milliseconds, QEventLoop::ProcessEventsFlags flags) {
    QEventLoop loop;
    const auto end = makeAlarm([&loop] { loop.quit(); }, AlarmKind::Device);
    end->callAt(now() + std::max(milliseconds, 0) * kMicrosPerMilli);
    ++depth_;
    loop.exec(flags);
    --depth_;
}

void QtPump::whenSettled(std::function<void()> call, Micros patience) {
    const auto settled = settled_.insert(settled_.end(), {std::move(call), now() + patience, depth_, holds_, nullptr});
    settled->alarm = makeAlarm([this, settled] { settle(settled); }, AlarmKind::Command);
    settled->alarm->callAt(now());
}

// An alarm that is asked for now runs after all that are due already.
void QtPump::settle(std::list<Settled>::iterator settled) {
    if (isUnsettled(*settled)) {
        settled->alarm->callAt(now() + (depth_ > settled->depth ? kMicrosPerMilli : 0));
        return;
    }
    const auto call = std::move(settled->call);
    settled_.erase(settled);
    call();
}

// A handler that waits runs inside an event loop deeper than that of the asking.
bool QtPump::isUnsettled(const Settled& settled) const {
    if (holds_ > settled.holds || now() >= settled.latest) {
        return false;
    }
    return depth_ > settled.depth || isDue(AlarmKind::Program) || isDue(AlarmKind::Device);
}

QtPump::Hold::Hold(QtPump& pump) : pump_(pump) {
    ++pump_.holds_;
}

QtPump::Hold::~Hold() {
    --pump_.holds_;
    pump_.schedule();
}

bool QtPump::mayRun(AlarmKind kind) const {
    return kind == AlarmKind::Device || (sleeps_ == 0 && (kind == AlarmKind::Command || holds_ == 0));
}

void QtPump::schedule() {
    const Entry* const next = first();
    if (next == nullptr) {
        return;
    }
    const Micros due = next->due;
    const Micros left = due - now();
    if (left <= 0) {
        post();
    } else if (!timer_.isActive() || timerDue_ != due) {
        timerDue_ = due;
        timer_.start(static_cast<int>((std::min(left, kLongestSleep) + kMicrosPerMilli - 1) / kMicrosPerMilli));
    }
}

// A posted event is served at the loop's next turn, while a timer of no length waits until nothing else is to do.
void QtPump::post() {
    if (!std::exchange(posted_, true)) {
        QCoreApplication::postEvent(waker_.get(), new QEvent(QEvent::User));
    }
}

void QtPump::deliver() {
    // What the alarms ask for while they run waits for the next turn, so that the loop gets to its other work.
    const auto before = orders();
    while (runFirst(now(), before)) {
    }
    schedule();
}

}  // namespace korvane::platform
