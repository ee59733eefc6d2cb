#include "views/dashboard/LogCountsPart.h"

#include <QTextDocument>

namespace korvane::views {

namespace {

const QString kWords = QStringLiteral("%1 rows on disk, %2 waiting");
constexpr int kWide = 10000;  // keeps the layout still while the numbers grow

// A tool-tip that looks like marked up text is shown as such.
QString plain(const std::string& path) {
    const QString text = QString::fromStdString(path);
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped().prepend(QStringLiteral("<qt>")) : text;
}

}  // namespace

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
    if (counts_->onDisk.get() != 0 || counts_->waiting.get() != 0 || !label_.text().isEmpty()) {
        label_.setText(kWords.arg(counts_->onDisk.get()).arg(counts_->waiting.get()));
        label_.setMinimumWidth(label_.fontMetrics().horizontalAdvance(kWords.arg(kWide).arg(kWide)));
    }
    label_.setToolTip(plain(counts_->path.get()));
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
