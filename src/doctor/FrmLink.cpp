#include "doctor/FrmLink.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "controls/Plot.h"
#include "core/Numbers.h"

namespace korvane::doctor {

namespace {

using controls::PlotFrame;
using link::LinkHistory;
using Second = LinkHistory::Second;

constexpr int kWidth = 560 * 15;  // twips
constexpr int kHeight = 560 * 15;
constexpr int kTextHeight = 210;
constexpr controls::Color kAxisColor = 0xC0C0C0;  // light grey
constexpr controls::Color kFaultColor = controls::kYellow;
constexpr controls::Color kLimitColor = controls::kYellow;
constexpr double kSpan = LinkHistory::kSeconds;

using Value = std::function<std::optional<double>(const Second&)>;

std::string tenths(double value) {
    return core::textOf(std::round(value * 10.0) / 10.0);
}

struct Plot {
    Value value;
    std::string unit;
    controls::Color color;
    std::optional<double> limit = {};  // a level line
};

double topOf(std::span<const Second> seconds, const Plot& plot) {
    double most = std::max(plot.limit.value_or(0.0), 1.0);
    for (const auto& second : seconds) {
        most = std::max(most, plot.value(second).value_or(0.0));
    }
    return controls::plotTop(most);
}

// Now is at the right edge. Seconds without a value leave the line out.
void drawLine(controls::Drawing& drawing, std::span<const Second> seconds, const Value& value, const PlotFrame& frame,
              controls::Color color) {
    std::optional<controls::Point> before;
    double at = kSpan - static_cast<double>(seconds.size());
    for (const auto& second : seconds) {
        at += 1.0;
        const auto number = value(second);
        const auto point = number ? std::optional(frame.at(at, *number)) : std::nullopt;
        if (point && before) {
            drawing.line(*before, *point, color);
        }
        before = point;
    }
}

void draw(controls::PictureBox& picture, std::span<const Second> seconds, const Plot& plot) {
    auto& drawing = picture.surface();
    drawing.clear();
    const PlotFrame frame{static_cast<double>(picture.Width), static_cast<double>(picture.Height - kTextHeight), kSpan,
                          topOf(seconds, plot)};
    drawing.line(frame.at(0.0, 0.0), frame.at(kSpan, 0.0), kAxisColor);
    drawing.line(frame.at(0.0, frame.top / 2.0), frame.at(kSpan, frame.top / 2.0), kAxisColor);
    if (plot.limit) {
        drawing.line(frame.at(0.0, *plot.limit), frame.at(kSpan, *plot.limit), kLimitColor);
    }
    drawLine(drawing, seconds, plot.value, frame, plot.color);
    drawing.text({60, 30}, core::textOf(frame.top) + plot.unit, kAxisColor);
    drawing.text({60, controls::plotTwips(frame.height)}, "10 min ago", kAxisColor);
    drawing.text({controls::plotTwips(frame.width - 500.0), controls::plotTwips(frame.height)}, "now", kAxisColor);
    picture.drawn();
}

}  // namespace

FrmLink::FrmLink(platform::Machine& machine, link::ConnectionPanel& panel) : Window(machine, "frmLink"), panel_(panel) {
    Caption = "Line";
    Width = kWidth;
    Height = kHeight;
    Timer1.Tick = [this] { showAll(); };
    for (auto* picture : {&picRoundTrip, &picFrames, &picFaults}) {
        picture->BackColor = controls::kBlack;
        picture->Resize = [this] { drawAll(); };
    }
}

void FrmLink::showAll() {
    lblState.Caption = stateText();
    lblRoundTrip.Caption = roundTripText();
    lblFrames.Caption = framesText();
    lblFaults.Caption = faultsText();
    drawAll();
}

void FrmLink::drawAll() {
    const auto seconds = panel_.linkHistory.seconds();
    const auto most = limits();
    const auto possible = most ? std::optional(std::min(most->asked, most->carried)) : std::nullopt;
    draw(picRoundTrip, seconds, {[](const Second& second) { return second.roundTrip; }, " ms", controls::kGreen});
    draw(
        picFrames, seconds,
        {[](const Second& second) { return std::optional<double>(second.frames); }, " /s", controls::kGreen, possible});
    draw(picFaults, seconds,
         {[](const Second& second) { return std::optional<double>(second.faults); }, " /s", kFaultColor});
}

std::string FrmLink::stateText() const {
    const auto age = static_cast<double>(panel_.linkState.age()) / platform::kMicrosPerSecond;
    return "The line is " + std::string(nameOf(panel_.linkState.state())) + " (" + tenths(age) + " s).";
}

std::string FrmLink::roundTripText() const {
    const auto trip = panel_.linkState.roundTrip();
    if (!trip) {
        return "From poll to answer: no answer in the last minute";
    }
    const auto text = [](platform::Micros time) {
        return tenths(static_cast<double>(time) / platform::kMicrosPerMilli) + " ms";
    };
    return "From poll to answer: median " + text(trip->median) + ", worst " + text(trip->worst) + " of the last minute";
}

// Nothing before the first live frame of an open line.
std::optional<link::PollLimits> FrmLink::limits() const {
    const int answer = panel_.linkState.liveFrameBytes();
    if (!panel_.MSComm1.PortOpen() || answer == 0) {
        return {};
    }
    return link::pollLimits(panel_.MSComm1.lineBaud(), panel_.TimerRequestData.Interval, answer);
}

std::string FrmLink::framesText() const {
    const auto seconds = panel_.linkHistory.seconds();
    const auto now = "Frames: " + std::to_string(seconds.empty() ? 0 : seconds.back().frames) + " a second, " +
                     std::to_string(panel_.linkState.counts().frames) + " since the connect";
    const auto most = limits();
    if (!most) {
        return now;
    }
    return now + "; the refresh asks for " + tenths(most->asked) + ", " + std::to_string(panel_.MSComm1.lineBaud()) +
           " baud carry at most " + tenths(most->carried) + " live frames (yellow: the lower of both)";
}

std::string FrmLink::faultsText() const {
    const auto counts = panel_.linkState.counts();
    return "Faults since the connect: " + std::to_string(counts.dropped) + " frames dropped, " +
           std::to_string(counts.resyncs) + " resynchronisations, " + std::to_string(counts.unanswered) +
           " polls not answered";
}

}  // namespace korvane::doctor
