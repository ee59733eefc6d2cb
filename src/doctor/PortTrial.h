// Listens on a port, and asks at each speed who is there.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "doctor/Fate.h"
#include "link/Speeds.h"
#include "platform/EventPump.h"
#include "platform/SerialLine.h"

namespace korvane::doctor {

// The line must be closed when a run begins, and is closed when one ends. Both runs take seconds; `changed` is called
// after each step of them and at the end. A line that can't be opened, or that goes away, ends a run with a failure.
class PortTrial : private platform::LineListener {
public:
    static constexpr platform::Micros kListening = platform::kMicrosPerSecond;
    static constexpr platform::Micros kIdle = 100 * platform::kMicrosPerMilli;    // before a request
    static constexpr platform::Micros kAnswer = 400 * platform::kMicrosPerMilli;  // after it

    PortTrial(platform::EventPump& pump, platform::SerialLine& line);
    PortTrial(const PortTrial&) = delete;
    PortTrial& operator=(const PortTrial&) = delete;
    ~PortTrial() override;

    // Sends nothing.
    void listen(int port, int baud);
    // One identity request at each speed, the slowest first.
    void ask(int port);
    void stop();
    // The same, but the line is in other hands by now and stays as it is.
    void giveUpLine();

    std::function<void()> changed;

    struct Heard {
        std::size_t bytes = 0;
        std::size_t frames = 0;
    };
    struct Asked {
        int baud = 0;
        Fate fate = Fate::Nothing;
        std::optional<Identity> identity;
    };

    [[nodiscard]] bool runs() const { return runs_; }
    // Of the last run of each kind, as far as it went; nothing before it has ended.
    [[nodiscard]] const std::optional<Heard>& heard() const { return heard_; }
    [[nodiscard]] const std::vector<Asked>& asked() const { return asked_; }
    // Why the last run ended early, a sentence; empty if it did not.
    [[nodiscard]] const std::string& failure() const { return failure_; }
    // Of the RuntimeError behind it; 0 if it was none.
    [[nodiscard]] int failureNumber() const { return failureNumber_; }

private:
    using Step = void (PortTrial::*)();

    void lineReceived(std::span<const std::uint8_t> bytes) override;
    void lineLost(const std::string& reason) override;

    void begin(int port);
    [[nodiscard]] int nextSpeed() const { return link::kSpeeds.at(asked_.size()); }
    void after(platform::Micros time, Step step);
    void endListening();
    void askAtNextSpeed();
    void send();
    void takeAnswer();
    void goOn();
    void end(const std::string& why = {}, int number = 0);
    void tell();

    platform::EventPump& pump_;
    platform::SerialLine& line_;
    std::unique_ptr<platform::Alarm> alarm_;
    Step step_ = nullptr;
    bool runs_ = false;
    int port_ = 0;
    std::vector<std::uint8_t> idle_;
    std::vector<std::uint8_t> received_;
    std::optional<Heard> heard_;
    std::vector<Asked> asked_;
    std::string failure_;
    int failureNumber_ = 0;
};

}  // namespace korvane::doctor
