#include "views/frame/TransferBar.h"

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kWidth = 12;  // text sizes

}  // namespace

QProgressBar& makeTransferBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent, const QString& name,
                              const QString& format) {
    auto& bar = child<QProgressBar>(parent);
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

}  // namespace korvane::views
