#include "maps/transfer/TransferWatch.h"

#include <algorithm>

#include "link/Frames.h"

namespace korvane::maps {

namespace {

constexpr platform::Micros kLook = 50 * platform::kMicrosPerMilli;
constexpr int kHead = 2;  // bytes of a frame before its payload

}  // namespace

TransferWatch::TransferWatch(platform::EventPump& pump, link::ConnectionPanel& connection)
    : pump_(pump), connection_(connection), alarm_(pump.makeAlarm([this] { look(); })) {
    connection_.witnesses.add(*this);
    connection_.MSComm1.addObserver(*this);
}

TransferWatch::~TransferWatch() {
    connection_.MSComm1.removeObserver(*this);
    connection_.witnesses.remove(*this);
}

void TransferWatch::begin(std::uint8_t command, int total) {
    result_.begin(command, total);
    connection_.witnesses.tellAsked(command, *this);
    if (!connection_.MSComm1.PortOpen()) {
        result_.lineClosed();
    }
    expectSign();
    showText();
}

void TransferWatch::mixedInto(std::uint8_t command) {
    result_.mixedInto(command);
    showText();
}

void TransferWatch::outgoing(std::uint8_t command) {
    if (std::ranges::count(sending_, command) > 0) {
        result_.mixedWithItself(command);
    }
    sending_.push_back(command);
}

void TransferWatch::expectSign() {
    lastSign_ = pump_.now();
    lookAgain();
}

void TransferWatch::lookAgain() {
    if (result_.isWaiting()) {
        alarm_->callAt(pump_.now() + kLook);
    } else {
        alarm_->callAt(lastSign_ + kTooLate);
    }
}

// Every frame passes here, a hundred a second: one that comes while nothing was asked for costs nothing.
void TransferWatch::frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (Text.get().empty() || code == link::kLiveDataFrame) {
        return;
    }
    if (result_.heard(code, payload)) {
        lastSign_ = pump_.now();
        showText();
    }
}

void TransferWatch::propertyChanged(controls::Object&, const void* property) {
    if (property == connection_.MSComm1.portOpenProperty()) {
        connection_.MSComm1.PortOpen() ? result_.lineOpened() : result_.lineClosed();
        showText();
    }
}

void TransferWatch::showText() {
    Text = result_.text();
    Failed = result_.hasFailed();
}

void TransferWatch::look() {
    const auto silence = pump_.now() - lastSign_;
    if (!result_.isWaiting() && silence >= kTooLate) {
        result_.tooLate();
        return;
    }
    noteOpenFrame();
    if (sending_.empty() && silence >= kPatience) {
        result_.silent();
    }
    lookAgain();
    showText();
}

// A frame that was cut off is ended by the bytes of the next ones and then dropped: what it had must be noted before.
void TransferWatch::noteOpenFrame() {
    const auto& receiver = connection_.receiver;
    if (receiver.rxPosition() > kHead) {
        result_.partlyHeard(receiver.rxCommand(), std::min<int>(receiver.rxPosition() - kHead, receiver.rxLength()));
    }
}

}  // namespace korvane::maps
