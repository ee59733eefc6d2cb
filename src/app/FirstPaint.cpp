#include "app/FirstPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace korvane::app {

namespace {

constexpr int kStartTimeField = 20;  // of /proc/self/stat, counted behind the program's name
constexpr double kMilli = 1000;

// Milliseconds since the system started this process.
double processAge() {
    std::ifstream file("/proc/self/stat");
    std::string text;
    std::getline(file, text);
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string field;
    for (int i = 0; i < kStartTimeField; ++i) {
        fields >> field;
    }
    const double started = std::strtod(field.c_str(), nullptr) / static_cast<double>(sysconf(_SC_CLK_TCK));
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return kMilli * (static_cast<double>(now.tv_sec) - started) + static_cast<double>(now.tv_nsec) / 1e6;
}

}  // namespace

FirstPaint::FirstPaint(platform::DebugLog& log) : log_(log) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        QCoreApplication::instance()->removeEventFilter(this);
        QTimer::singleShot(0, this, [this] { painted(); });
    }
    return false;
}

void FirstPaint::painted() {
    log_.write("first window painted " + std::to_string(static_cast<int>(processAge())) +
               " ms after the start of the process");
}

}  // namespace korvane::app
