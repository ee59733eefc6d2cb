// Writes to the debug log how long after the start of the process the first window was painted.
#pragma once

#include <QObject>

#include "platform/DebugLog.h"

namespace korvane::app {

class FirstPaint : public QObject {
public:
    // Filters the application's events until the first paint.
    explicit FirstPaint(platform::DebugLog& log);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void painted();

    platform::DebugLog& log_;
};

}  // namespace korvane::app
