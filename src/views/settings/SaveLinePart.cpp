#include "views/settings/SaveLinePart.h"

#include "views/widgets/values/LongLine.h"

namespace korvane::views {

SaveLinePart::SaveLinePart(fields::SaveReport& report, LongLine& line, Binder& binder)
    : report_(&report), line_(line), binder_(binder) {
    report.addObserver(*this);
}

SaveLinePart::~SaveLinePart() {
    if (report_ != nullptr) {
        report_->removeObserver(*this);
    }
}

void SaveLinePart::show() {
    waiting_ = false;
    if (report_ != nullptr) {
        line_.setWords(QString::fromStdString(report_->Text));
    }
}

void SaveLinePart::detach(const ControlSet&) {
    if (report_ != nullptr) {
        report_->removeObserver(*this);
        report_ = nullptr;
    }
}

void SaveLinePart::propertyChanged(controls::Object&, const void*) {
    if (!waiting_) {
        waiting_ = true;
        binder_.marked(*this);
    }
}

void SaveLinePart::objectGone(const controls::Object&) {
    report_ = nullptr;
}

}  // namespace korvane::views
