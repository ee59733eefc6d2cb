#include "views/dashboard/LogCountsPart.h"

namespace korvane::views {

LogCountsPart::LogCountsPart(logs::LogCounts& counts, QLabel& label, Binder& binder)
    : counts_(&counts), label_(label), binder_(binder) {
    label_.setObjectName(QStringLiteral("logCounts"));
    counts.addObserver(*this);
}

LogCountsPart::~LogCountsPart() {
    if (counts_ != nullptr) {
        counts_->removeObserver(*this);
    }
}

void LogCountsPart::show() {
    marked_ = false;
    if (counts_ == nullptr) {
        return;
    }
    const bool known = counts_->onDisk != 0 || counts_->waiting != 0;
    label_.setText(known ? QStringLiteral("%1 rows on disk, %2 waiting").arg(counts_->onDisk).arg(counts_->waiting)
                         : QString());
    label_.setToolTip(QString::fromStdString(counts_->path));
}

void LogCountsPart::detach(const ControlSet&) {
    if (counts_ != nullptr) {
        counts_->removeObserver(*this);
        counts_ = nullptr;
    }
}

void LogCountsPart::propertyChanged(controls::Object&, const void*) {
    if (!marked_) {
        marked_ = true;
        binder_.marked(*this);
    }
}

void LogCountsPart::objectGone(const controls::Object&) {
    counts_ = nullptr;
}

}  // namespace korvane::views
