// The running engine in a few numbers, for the header of a map window.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controls/Property.h"
#include "core/tables/LiveTable.h"

namespace korvane::maps {

// Texts without units; a dash for what is not known.
class LiveStrip : public controls::Object {
public:
    static constexpr std::string_view kNothing = "\u2013";

    controls::Property<std::string> Rpm{*this, std::string(kNothing)};
    controls::Property<std::string> Load{*this, std::string(kNothing)};      // bar, absolute
    controls::Property<std::string> MixtureName{*this, "AFR"};               // or "Lambda", by the size of the number
    controls::Property<std::string> Mixture{*this, std::string(kNothing)};   // and the target, "12.46/12.5"
    controls::Property<std::string> Throttle{*this, std::string(kNothing)};  // percent
    controls::Property<std::string> Pulse{*this, std::string(kNothing)};     // ms, of the fuel map's cell in use
    controls::Property<std::string> Duty{*this, std::string(kNothing)};      // percent

    // What belongs to the cell that the engine runs in.
    struct Cell {
        std::string_view pulse;       // empty without a fuel map
        std::optional<float> target;  // an air-fuel ratio
    };
    // Changes nothing before the first live data.
    void show(const core::LiveTable& live, const Cell& cell);

private:
    void showMixture(double value, std::optional<float> target);
};

}  // namespace korvane::maps
