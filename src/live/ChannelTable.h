// Where the main window shows each live channel.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "core/tables/LiveChannel.h"
#include "core/tables/LiveTable.h"

namespace korvane::live {

using core::LiveChannel;

enum class ChannelLabel {
    None,
    Value,     // lblValue, named by lblValueName; both have the channel's number
    NameOnly,  // lblValueName alone: the label keeps its design text, the value becomes a word of the shared tables
    Input,     // lblValueMux, counted from Input0
    Accel      // lblAccel
};

enum class ChannelDial { None, Rpm, Boost, Throttle };

struct ChannelRow {
    LiveChannel channel;
    ChannelLabel label = ChannelLabel::None;
    std::string_view caption = {};  // beside the label
    ChannelDial dial = ChannelDial::None;
    bool lamps = false;  // its bits light the lamps
};

// In the order of the channels' numbers.
inline constexpr std::array<ChannelRow, core::kChannelCount> kChannels{{
    {LiveChannel::Rpm, ChannelLabel::Value, "RPM:", ChannelDial::Rpm},
    {LiveChannel::WaterTemperature, ChannelLabel::Value, "TempW"},
    {LiveChannel::AirTemperature, ChannelLabel::Value, "TempA"},
    {LiveChannel::Voltage, ChannelLabel::Value, "Voltage"},
    {LiveChannel::Pressure, ChannelLabel::Value, "MAP:", ChannelDial::Boost},
    {LiveChannel::Throttle, ChannelLabel::Value, "Throttle", ChannelDial::Throttle},
    {LiveChannel::Lambda, ChannelLabel::Value, "Lambda"},
    {LiveChannel::InjectionDuty, ChannelLabel::Value, "Inj duty"},
    {LiveChannel::IdlePid, ChannelLabel::NameOnly, "PID 1"},
    {LiveChannel::BoostPid, ChannelLabel::NameOnly, "PID 2"},
    {LiveChannel::KType, ChannelLabel::Value, "K-type"},
    {LiveChannel::IgnitionAdvance, ChannelLabel::Value, "Ign adv."},
    {LiveChannel::Input0, ChannelLabel::Input},
    {LiveChannel::Input1, ChannelLabel::Input},
    {LiveChannel::Input2, ChannelLabel::Input},
    {LiveChannel::Input3, ChannelLabel::Input},
    {LiveChannel::Input4, ChannelLabel::Input},
    {LiveChannel::Input5, ChannelLabel::Input},
    {LiveChannel::Input6, ChannelLabel::Input},
    {LiveChannel::Input7, ChannelLabel::Input},
    {LiveChannel::Accel, ChannelLabel::Accel},
    {LiveChannel::MapPlace},
    {.channel = LiveChannel::Flags, .lamps = true},
    {LiveChannel::UpdateSpeed},
    {LiveChannel::Input12},
    {LiveChannel::Input13},
    {LiveChannel::Input14},
    {LiveChannel::Input15},
    {LiveChannel::Spare28},
    {LiveChannel::Spare29},
    {LiveChannel::Spare30},
}};

// A series of one of the two trends; trend 2 is picTrend2, trend 0 picTrend. What is drawn is derived from the channel.
struct TrendPlace {
    LiveChannel channel;
    int trend;
    int series;
    std::string_view name;
    std::string_view unit;
};

// In the order in which a frame's samples are pushed: the first before the last dial is set, the others behind it.
inline constexpr std::array<TrendPlace, 10> kTrendPlaces{{
    {LiveChannel::Throttle, 0, 1, "Throttle", " %"},
    {LiveChannel::Pressure, 0, 0, "Map", " s"},
    {LiveChannel::Lambda, 0, 2, "Lambda", " s"},
    {LiveChannel::InjectionDuty, 0, 3, "Inj Duty", " %"},
    {LiveChannel::Rpm, 0, 4, "RPM/10", " "},
    {LiveChannel::Voltage, 2, 0, "voltage", " s"},
    {LiveChannel::WaterTemperature, 2, 1, "Temp1", " %"},
    {LiveChannel::AirTemperature, 2, 2, "Temp2", " s"},
    {LiveChannel::IdlePid, 2, 3, "IdlePid", " %"},
    {LiveChannel::BoostPid, 2, 4, "BoostPid", " "},
}};

// The channel that a dial shows, and the one whose bits light the lamps.
[[nodiscard]] constexpr LiveChannel channelOf(ChannelDial dial) {
    return std::find_if(kChannels.begin(), kChannels.end(), [dial](const auto& row) { return row.dial == dial; })
        ->channel;
}
[[nodiscard]] constexpr LiveChannel channelOfLamps() {
    return std::find_if(kChannels.begin(), kChannels.end(), [](const auto& row) { return row.lamps; })->channel;
}

}  // namespace korvane::live
