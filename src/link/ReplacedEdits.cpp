#include "link/ReplacedEdits.h"

#include <algorithm>

namespace korvane::link {

namespace {

constexpr std::array kReceived{&core::MapImages::FuelMapIn, &core::MapImages::IgnMapIn, &core::MapImages::PwmMapIn};
constexpr std::array kInEcu{&EcuMaps::fuel, &EcuMaps::ignition, &EcuMaps::pwm};

}  // namespace

void ReplacedEdits::arriving(core::EditedMap map, std::size_t first, std::span<const std::uint8_t> bytes) {
    if (announce && replaces(map, first, bytes) && announced_ != desk()) {
        announce();
        announced_ = desk();
    }
    if (announced_) {
        auto& image = announced_->at(static_cast<std::size_t>(map));
        for (std::size_t i = 0; i < bytes.size() && first + i < image.size(); ++i) {
            image.at(first + i) = bytes[i];
        }
    }
}

bool ReplacedEdits::replaces(core::EditedMap map, std::size_t first, std::span<const std::uint8_t> bytes) const {
    const auto index = static_cast<std::size_t>(map);
    const auto& edited = core::workingMap(tables_, map);
    const auto& received = tables_.*kReceived.at(index);
    const auto& inEcu = inEcu_.*kInEcu.at(index);
    for (std::size_t i = 0; i < bytes.size() && first + i < edited.size(); ++i) {
        const auto cell = first + i;
        const auto byte = edited.at(cell);
        if (byte != bytes[i] && byte != inEcu.working(cell).value_or(received.at(cell))) {
            return true;
        }
    }
    return false;
}

ReplacedEdits::Desk ReplacedEdits::desk() const {
    Desk all;
    for (std::size_t map = 0; map < all.size(); ++map) {
        all.at(map) = tables_.*core::kWorkingMaps.at(map);
    }
    return all;
}

}  // namespace korvane::link
