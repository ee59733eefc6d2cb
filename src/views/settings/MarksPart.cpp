#include "views/settings/MarksPart.h"

#include <QLabel>

namespace korvane::views {

namespace {

BoxMark shapeOf(fields::Mark mark) {
    switch (mark) {
        case fields::Mark::Changed:
        case fields::Mark::Misread:
            return BoxMark::Filled;
        case fields::Mark::Sent:
            return BoxMark::Hollow;
        default:
            return BoxMark::None;
    }
}

}  // namespace

MarksPart::MarksPart(settings::FrmMisc& window, QLabel& lambdaLine, Binder& binder)
    : window_(window), marks_(&window.boxMarks()), lambdaLine_(lambdaLine), binder_(binder) {
    addBoxes();
    marks_->addObserver(*this);
}

MarksPart::~MarksPart() {
    if (marks_ != nullptr) {
        marks_->removeObserver(*this);
    }
}

void MarksPart::addBoxes() {
    for (auto* control : window_.controls()) {
        auto* const box = dynamic_cast<controls::TextBox*>(control);
        auto* const widget = dynamic_cast<ValueBox*>(binder_.widgetOf(control));
        if (box != nullptr && widget != nullptr && marks_->knows(*box)) {
            boxes_[box] = {box, widget};
            changed_.insert(box);
            box->addObserver(*this);
        }
    }
}

void MarksPart::show() {
    waiting_ = false;
    if (marks_ == nullptr) {
        return;
    }
    for (const auto* const each : changed_) {
        const auto& [box, widget] = boxes_.at(each);
        widget->setMark(shapeOf(marks_->of(*box)), marks_->isTypedZero(*box),
                        QString::fromStdString(marks_->note(*box)));
    }
    changed_.clear();
    lambdaLine_.setVisible(window_.awaitsLambda());
}

void MarksPart::detach(const ControlSet& alive) {
    for (const auto& [address, shown] : boxes_) {
        if (alive.contains(shown.box)) {
            shown.box->removeObserver(*this);
        }
    }
    if (marks_ != nullptr) {
        marks_->removeObserver(*this);
        marks_ = nullptr;
    }
}

void MarksPart::propertyChanged(controls::Object& object, const void* property) {
    if (&object == marks_) {
        mark(property);
    } else if (const auto& box = dynamic_cast<const controls::TextBox&>(object); property == &box.Text) {
        mark(&box);
    }
}

void MarksPart::objectGone(const controls::Object& object) {
    if (&object == marks_) {
        marks_ = nullptr;
    }
}

void MarksPart::mark(const void* box) {
    if (!boxes_.contains(box)) {
        return;
    }
    changed_.insert(box);
    if (!waiting_) {
        waiting_ = true;
        binder_.marked(*this);
    }
}

}  // namespace korvane::views
