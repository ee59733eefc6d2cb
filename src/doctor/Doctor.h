// Finds out whether a port works, first without sending, then by asking the ECU.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "doctor/Finding.h"
#include "doctor/PortTrial.h"
#include "platform/EventPump.h"
#include "platform/SerialLine.h"

namespace korvane::doctor {

// What bytes at the wrong speed may do.
inline constexpr const char* kBeforeAsking =
    "One request of three bytes is sent at each of the seven speeds. At a wrong speed the ECU may read it as another "
    "command, so stop the engine first.";

class Doctor {
public:
    Doctor(platform::EventPump& pump, platform::SerialLine& line);

    // Looks at the device, and listens for a second at this speed if nothing speaks against it. The line must be
    // closed.
    void look(int port, int baud);
    // Only looks at the device.
    void lookAlone(int port);
    // Asks at each speed. The line must be closed.
    void ask();
    void stop() { trial_.stop(); }
    // The line is in other hands: what runs is given up.
    void giveUpLine();

    std::function<void()> changed;  // after each step, and at the end

    [[nodiscard]] bool runs() const { return trial_.runs(); }
    // Of the device and of listening.
    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }
    // Of the speeds asked so far, the slowest first.
    [[nodiscard]] const std::vector<PortTrial::Asked>& asked() const { return asked_; }
    // Nothing before the ECU has been asked at all speeds.
    [[nodiscard]] const std::optional<Finding>& verdict() const { return verdict_; }
    // Looking is over, and nothing that was found speaks against asking.
    [[nodiscard]] bool mayAsk() const;
    // The ECU has answered.
    [[nodiscard]] bool works() const { return verdict_ && verdict_->weight == Finding::Weight::Good; }

private:
    void trialChanged();
    void takeListening();
    void takeAnswers();

    platform::SerialLine& line_;
    PortTrial trial_;
    bool asks_ = false;
    bool hasLooked_ = false;
    int port_ = 0;
    std::string device_;
    std::vector<Finding> findings_;
    std::vector<PortTrial::Asked> asked_;
    std::optional<Finding> verdict_;
};

}  // namespace korvane::doctor
