#include "doctor/PortTrial.h"

#include <utility>

#include "link/Commands.h"
#include "platform/RuntimeError.h"

namespace korvane::doctor {

PortTrial::PortTrial(platform::EventPump& pump, platform::SerialLine& line)
    : pump_(pump), line_(line), alarm_(pump.makeAlarm([this] { (this->*std::exchange(step_, nullptr))(); })) {}

PortTrial::~PortTrial() {
    PortTrial::stop();
}

void PortTrial::listen(int port, int baud) {
    begin(port);
    heard_.reset();
    try {
        line_.open(port_, baud, *this);
    } catch (const platform::RuntimeError& error) {
        end(error.what(), error.number());
        return;
    }
    after(kListening, &PortTrial::endListening);
}

void PortTrial::ask(int port) {
    begin(port);
    asked_.clear();
    askAtNextSpeed();
}

void PortTrial::stop() {
    if (runs_) {
        line_.close();
        giveUpLine();
    }
}

void PortTrial::giveUpLine() {
    alarm_->cancel();
    runs_ = false;
}

void PortTrial::begin(int port) {
    stop();
    runs_ = true;
    port_ = port;
    received_.clear();
    failure_.clear();
    failureNumber_ = 0;
}

void PortTrial::after(platform::Micros time, Step step) {
    step_ = step;
    alarm_->callAt(pump_.now() + time);
}

void PortTrial::endListening() {
    heard_ = Heard{received_.size(), framesIn(received_)};
    end();
}

void PortTrial::askAtNextSpeed() {
    try {
        received_.clear();
        line_.open(port_, nextSpeed(), *this);
        after(kIdle, &PortTrial::send);
    } catch (const platform::RuntimeError& error) {
        if (error.number() != platform::kErrorSpeedRefused) {
            end(error.what(), error.number());
            return;
        }
        asked_.push_back({nextSpeed(), Fate::Refused, {}});
        after(0, &PortTrial::goOn);
    }
}

void PortTrial::send() {
    idle_ = std::exchange(received_, {});
    line_.write(link::kIdentityRequest);
    after(kAnswer, &PortTrial::takeAnswer);
}

void PortTrial::takeAnswer() {
    line_.close();
    const auto reception = receptionOf(idle_, received_);
    asked_.push_back({nextSpeed(), reception.fate, reception.identity});
    goOn();
}

void PortTrial::goOn() {
    if (asked_.size() == link::kSpeeds.size()) {
        end();
        return;
    }
    tell();
    if (runs_) {
        askAtNextSpeed();
    }
}

void PortTrial::lineReceived(std::span<const std::uint8_t> bytes) {
    received_.insert(received_.end(), bytes.begin(), bytes.end());
}

void PortTrial::lineLost(const std::string& reason) {
    end(reason);
}

void PortTrial::end(const std::string& why, int number) {
    failure_ = why;
    failureNumber_ = number;
    stop();
    tell();
}

void PortTrial::tell() {
    if (changed) {
        changed();
    }
}

}  // namespace korvane::doctor
