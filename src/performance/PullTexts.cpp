#include "performance/PullTexts.h"

#include "core/Numbers.h"

namespace korvane::performance {

using core::textOf;

std::string startedText(const Reading& reading) {
    return "Timer Started: " + textOf(reading.rpm) + "rpm  " + textOf(reading.speed) + " Km/h";
}

std::string stoppedText(const Pull& pull) {
    return "Stopped: " + textOf(pull.endRpm) + "rpm  " + textOf(pull.endSpeed) + " Km/h     " + textOf(pull.seconds) +
           " s";
}

std::string summaryText(const Pull& pull) {
    return "Speed: " + textOf(pull.startSpeed) + " - " + textOf(pull.endSpeed) + " km/h (" + textOf(pull.startRpm) +
           " - " + textOf(pull.endRpm) + ") Rpm:  Time: " + textOf(pull.seconds) + " s";
}

std::string elapsedText(platform::Micros elapsed) {
    return textOf(static_cast<double>(elapsed / platform::kMicrosPerMilli)) + " ms";
}

}  // namespace korvane::performance
