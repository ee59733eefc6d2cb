// The line below the pages: what the last save has sent, and what the ECU has told of it since.
#pragma once

#include "fields/SaveReport.h"
#include "views/frame/Binder.h"
#include "views/frame/BoundPart.h"

namespace korvane::views {

class LongLine;

class SaveLinePart : public BoundPart, private controls::Observer {
public:
    SaveLinePart(fields::SaveReport& report, LongLine& line, Binder& binder);
    SaveLinePart(const SaveLinePart&) = delete;
    SaveLinePart& operator=(const SaveLinePart&) = delete;
    ~SaveLinePart() override;

    void show() override;
    void showColorsAgain() override {}
    void detach(const ControlSet& alive) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;

    fields::SaveReport* report_;  // null when its window is destroyed
    LongLine& line_;
    Binder& binder_;
    bool waiting_ = false;
};

}  // namespace korvane::views
