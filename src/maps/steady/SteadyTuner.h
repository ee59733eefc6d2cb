// The steady agent, as the map windows use it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "maps/grid/MapGeometry.h"
#include "maps/steady/ErrorTrend.h"
#include "maps/steady/SteadyChoices.h"

namespace korvane::maps {

// The key that puts back.
inline constexpr int kPutBackKey = 119;  // F8

// One for the program. `window` only says which window it is.
class SteadyTuner {
public:
    virtual ~SteadyTuner() = default;

    // Works on the fuel map of that window from now on, or refuses: false, and whyStopped() says why. If it works for
    // another window, it changes over.
    virtual bool start(const MapGeometry& geometry, const void* window) = 0;
    // The map stays as it is.
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isOn(const void* window) const = 0;
    // A window closes. If it works for that one it stops.
    virtual void closes(const void* window) = 0;

    // All cells back to the baseline, whether or not it works. Each says in words what it has done.
    virtual std::string putBack(const MapGeometry& geometry) = 0;
    // The map as it is becomes the baseline; not while it works.
    virtual std::string newBaseline(const MapGeometry& geometry) = 0;

    [[nodiscard]] virtual std::string state() const = 0;
    [[nodiscard]] virtual std::string whyStopped() const = 0;

    // What it knows of a cell and does with it, in one sentence; empty before the first start.
    [[nodiscard]] virtual std::string cellWords(int cell) const = 0;
    // Why samples were rejected while the engine ran in the cell, the most frequent reason first: "12 fuel cut, 3 link
    // late"; empty for none.
    [[nodiscard]] virtual std::string cellReasons(int cell) const = 0;
    // Of the run of either agent that began last.
    [[nodiscard]] virtual const ErrorTrend& errors() const = 0;
    // The delay of lambda in a zone of load: "20 to 40 %: 312 ms, give or take 24".
    [[nodiscard]] virtual std::string zoneWords(std::size_t zone) const = 0;
    // How many samples were used, then how many were rejected for each reason that there was.
    [[nodiscard]] virtual std::vector<std::string> sampleWords() const = 0;

    [[nodiscard]] virtual SteadyChoices& choices() = 0;

    // Opens the window that shows all this; set by who owns it.
    std::function<void()> openWindow;
};

}  // namespace korvane::maps
