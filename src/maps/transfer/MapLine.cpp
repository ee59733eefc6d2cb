#include "maps/transfer/MapLine.h"

#include <span>

#include "core/TimeText.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::maps {

void MapLine::send(std::initializer_list<std::uint8_t> bytes) {
    context_.connection.MSComm1.Output(std::span(bytes.begin(), bytes.size()));
}

void MapLine::sendIfOpen(std::initializer_list<std::uint8_t> bytes) {
    if (isOpen()) {
        send(bytes);
    }
}

void MapLine::wait(int milliseconds) {
    window_.machine().pump.wait(milliseconds);
}

void MapLine::block(int milliseconds) {
    window_.machine().pump.sleep(milliseconds);
}

void MapLine::pump() {
    window_.machine().pump.pump();
}

void MapLine::showWithTime(std::string_view caption) {
    show(std::string(caption) + core::timeText(window_.machine().pump.wallTime()));
}

void MapLine::request(std::uint8_t letter) {
    showWithTime("Receiving data from Device...");
    sendIfOpen({letter});
}

void MapLine::requestFirst(std::uint8_t letter) {
    request(letter);
    pump();
}

void MapLine::trapped(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const platform::RuntimeError& failure) {
        show(failure.what());
    }
}

}  // namespace korvane::maps
