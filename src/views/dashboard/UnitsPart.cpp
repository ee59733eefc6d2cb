#include "views/dashboard/UnitsPart.h"

#include <utility>

#include "views/widgets/values/Readout.h"

namespace korvane::views {

UnitsPart::UnitsPart(live::ValueUnits& units, std::vector<Readout*> widgets, Binder& binder)
    : units_(&units), widgets_(std::move(widgets)), binder_(binder) {
    units.addObserver(*this);
}

UnitsPart::~UnitsPart() {
    if (units_ != nullptr) {
        units_->removeObserver(*this);
    }
}

void UnitsPart::show() {
    for (std::size_t i = 0; i < widgets_.size() && units_ != nullptr; ++i) {
        widgets_[i]->setText(QString::fromStdString(units_->of(i)));
    }
}

void UnitsPart::detach(const ControlSet&) {
    if (units_ != nullptr) {
        units_->removeObserver(*this);
        units_ = nullptr;
    }
}

void UnitsPart::propertyChanged(controls::Object&, const void*) {
    binder_.marked(*this);
}

void UnitsPart::objectGone(const controls::Object&) {
    units_ = nullptr;
}

}  // namespace korvane::views
