#include "fields/Answers.h"

namespace korvane::fields {

void Answers::begin() {
    if (running_++ == 0) {
        asked_.clear();
        heard_.clear();
        sent_ = false;
        closed_ = false;
        opened_ = false;
        show();
    }
}

void Answers::end() {
    --running_;
    show();
}

void Answers::asked(int address, bool isOpen) {
    asked_.insert(address);
    closed_ = closed_ || !isOpen;
    show();
}

void Answers::sent(bool isOpen) {
    sent_ = true;
    closed_ = closed_ || !isOpen;
    show();
}

void Answers::heard(int address) {
    if (asked_.contains(address)) {
        heard_.insert(address);
        show();
    }
}

void Answers::lineOpened() {
    opened_ = closed_;
    show();
}

void Answers::show() {
    const auto said = words();
    Text = said.empty() ? said : "Parameters: " + said;
    Failed = closed_ || (running_ == 0 && heard_.size() < asked_.size());
    if (tallied) {
        tallied();
    }
}

std::string Answers::tally() const {
    return asked_.empty() ? std::string()
                          : std::to_string(heard_.size()) + " of " + std::to_string(asked_.size()) +
                                (asked_.size() == 1 ? " cell answered" : " cells answered");
}

std::string Answers::words() const {
    if (closed_) {
        return opened_ ? "the port was closed" : "the port is closed";
    }
    if (!asked_.empty()) {
        if (heard_.empty()) {
            return running_ > 0 ? "waiting" : "no answer";
        }
        return std::to_string(heard_.size()) + " of " + std::to_string(asked_.size()) + " answered";
    }
    if (sent_) {
        return running_ > 0 ? "sending" : "sent, the ECU does not confirm it";
    }
    return {};
}

}  // namespace korvane::fields
