// Beside the box that switches the log on: how many rows are on the disk and how many wait, and the file's path.
#pragma once

#include <QLabel>

#include "logs/LogCounts.h"
#include "views/frame/Binder.h"
#include "views/frame/BoundPart.h"

namespace korvane::views {

class LogCountsPart : public BoundPart, private controls::Observer {
public:
    LogCountsPart(logs::LogCounts& counts, QLabel& label, Binder& binder);
    LogCountsPart(const LogCountsPart&) = delete;
    LogCountsPart& operator=(const LogCountsPart&) = delete;
    ~LogCountsPart() override;

    void show() override;
    void showColorsAgain() override {}
    void detach(const ControlSet& alive) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;

    logs::LogCounts* counts_;  // null when its window is destroyed
    QLabel& label_;
    Binder& binder_;
    bool marked_ = false;
};

}  // namespace korvane::views
