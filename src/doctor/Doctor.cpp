#include "doctor/Doctor.h"

#include "doctor/PortFindings.h"
#include "doctor/TrialFindings.h"

namespace korvane::doctor {

Doctor::Doctor(platform::EventPump& pump, platform::SerialLine& line) : line_(line), trial_(pump, line) {
    trial_.changed = [this] { trialChanged(); };
}

void Doctor::lookAlone(int port) {
    trial_.stop();
    asks_ = false;
    port_ = port;
    asked_.clear();
    verdict_.reset();
    const auto facts = line_.factsOf(port);
    device_ = facts.device;
    findings_ = findingsOf(facts);
    hasLooked_ = true;
}

void Doctor::look(int port, int baud) {
    lookAlone(port);
    if (mayWork(findings_)) {
        trial_.listen(port, baud);
    }
}

bool Doctor::mayAsk() const {
    return !runs() && hasLooked_ && mayWork(findings_);
}

void Doctor::ask() {
    asks_ = true;
    asked_.clear();
    verdict_.reset();
    trial_.ask(port_);
}

void Doctor::giveUpLine() {
    trial_.giveUpLine();
    verdict_.reset();
}

void Doctor::trialChanged() {
    if (asks_) {
        takeAnswers();
    } else {
        takeListening();
    }
    if (changed) {
        changed();
    }
}

void Doctor::takeListening() {
    if (!trial_.failure().empty()) {
        findings_.push_back(findingOfFailure(trial_, device_));
    } else if (trial_.heard()) {
        findings_.push_back(findingOf(*trial_.heard()));
    }
}

void Doctor::takeAnswers() {
    asked_ = trial_.asked();
    if (!trial_.failure().empty()) {
        verdict_ = findingOfFailure(trial_, device_);
    } else if (!trial_.runs()) {
        verdict_ = verdictOf(asked_);
    }
}

}  // namespace korvane::doctor
