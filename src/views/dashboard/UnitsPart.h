// The units beside the live values.
#pragma once

#include <vector>

#include "live/ValueUnits.h"
#include "views/frame/Binder.h"
#include "views/frame/BoundPart.h"

namespace korvane::views {

class UnitsPart : public BoundPart, private controls::Observer {
public:
    UnitsPart(live::ValueUnits& units, std::vector<Readout*> widgets, Binder& binder);
    UnitsPart(const UnitsPart&) = delete;
    UnitsPart& operator=(const UnitsPart&) = delete;
    ~UnitsPart() override;

    void show() override;
    void showColorsAgain() override {}
    void detach(const ControlSet& alive) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;

    live::ValueUnits* units_;  // null when its window is destroyed
    std::vector<Readout*> widgets_;
    Binder& binder_;
};

}  // namespace korvane::views
