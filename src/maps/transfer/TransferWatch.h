// Watches the transfers of a map window: what the ECU has answered, and when no answer comes any more.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "link/ConnectionPanel.h"
#include "link/FrameWitness.h"
#include "maps/transfer/TransferResult.h"
#include "platform/EventPump.h"

namespace korvane::maps {

// Only listens: it sends nothing, and no transfer waits for it.
class TransferWatch : public controls::Object, private link::FrameWitness, private controls::Observer {
public:
    TransferWatch(platform::EventPump& pump, link::ConnectionPanel& connection);
    TransferWatch(const TransferWatch&) = delete;
    TransferWatch& operator=(const TransferWatch&) = delete;
    ~TransferWatch() override;

    // As TransferResult::text().
    controls::Property<std::string> Text{*this};
    // As TransferResult::hasFailed().
    controls::Property<bool> Failed{*this};

    // A silence of this length ends the wait for an answer.
    static constexpr platform::Micros kPatience = 2000 * platform::kMicrosPerMilli;
    // A later answer still counts, but not behind a silence of this length.
    static constexpr platform::Micros kTooLate = 10'000 * platform::kMicrosPerMilli;

    // As TransferResult::begin(). With the port closed nothing can be heard.
    void begin(std::uint8_t command, int total);
    // As TransferResult::mixedInto().
    void mixedInto(std::uint8_t command);
    // While bytes go out the ECU's silence means nothing.
    class Sending {
    public:
        Sending(TransferWatch& watch, std::uint8_t command, int total) : watch_(watch) {
            watch_.begin(command, total);
            watch_.outgoing(command);
        }
        Sending(const Sending&) = delete;
        Sending& operator=(const Sending&) = delete;
        ~Sending() {
            watch_.sending_.pop_back();
            watch_.expectSign();
        }

    private:
        TransferWatch& watch_;
    };

private:
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void askedByAnother(std::uint8_t command) override { result_.begunElsewhere(command); }
    void propertyChanged(controls::Object& object, const void* property) override;
    void outgoing(std::uint8_t command);
    void expectSign();
    void lookAgain();
    void look();
    void noteOpenFrame();
    void showText();

    platform::EventPump& pump_;
    link::ConnectionPanel& connection_;
    TransferResult result_;
    std::unique_ptr<platform::Alarm> alarm_;
    platform::Micros lastSign_ = 0;
    std::vector<std::uint8_t> sending_;  // a send that begins within another one also ends within it
};

}  // namespace korvane::maps
