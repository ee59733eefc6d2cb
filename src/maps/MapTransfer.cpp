#include "maps/MapTransfer.h"

namespace korvane::maps {

namespace {

constexpr std::uint8_t kReadFuel = 'f';
constexpr std::uint8_t kReadIgnition = 'a';
constexpr std::uint8_t kReadMisc = 'm';

}  // namespace

MapTransfer::MapTransfer(MapControls& window, const MapContext& context, Halves halves)
    : line_(window, context), writer_(window, context, halves), misc_(window, context), pwm_(window, context) {
    window.btnReadFuel.Click = [this] { request(kReadFuel); };
    window.btnReadIgn.Click = [this] { request(kReadIgnition); };
    window.btnReadMisc.Click = [this] { request(kReadMisc); };
}

void MapTransfer::request(std::uint8_t letter) {
    line_.showWithTime("Receiving data from Device...");
    line_.sendIfOpen({letter});
}

void MapTransfer::initialReads() {
    if (!line_.isOpen()) {
        return;
    }
    for (const std::uint8_t letter : {kReadMisc, kReadFuel, kReadIgnition}) {
        request(letter);
        line_.pump();
    }
    pwm_.read();
    line_.pump();
}

}  // namespace korvane::maps
