#include "views/frame/TransferBar.h"

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kWidth = 12;  // text sizes

template <class Bar>
QProgressBar& makeBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent, const QString& name,
                      const QString& format) {
    auto& bar = child<Bar>(parent);
    bar.setFormat(format);
    bar.setTextVisible(!format.isEmpty());
    bar.setFixedWidth(bar.fontMetrics().height() * kWidth);
    bar.setMaximumHeight(bar.fontMetrics().height() + (format.isEmpty() ? 0 : bar.fontMetrics().height() / 3));
    bar.setAccessibleName(name);
    QSizePolicy policy = bar.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    bar.setSizePolicy(policy);
    binder.bind(progress, bar);
    return bar;
}

}  // namespace

void TransferBar::setEnded(bool ended) {
    if (ended != ended_) {
        ended_ = ended;
        update();
    }
}

void TransferBar::paintEvent(QPaintEvent* event) {
    if (!ended_) {
        QProgressBar::paintEvent(event);
    }
}

QProgressBar& makeTransferBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent, const QString& name,
                              const QString& format) {
    return makeBar<TransferBar>(progress, binder, parent, name, format);
}

QProgressBar& makeWorkBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent, const QString& name,
                          const QString& format) {
    return makeBar<QProgressBar>(progress, binder, parent, name, format);
}

}  // namespace korvane::views
