// A serial line in memory, with or without a device at its other end.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "platform/EventPump.h"
#include "platform/SerialLine.h"

namespace korvane::platform {

// A device that speaks bytes. Times never decrease.
class LineDevice {
public:
    virtual ~LineDevice() = default;

    virtual void setBaud(int baud) = 0;
    // One byte from the PC, whose last bit arrived at `at`.
    virtual void receive(std::uint8_t byte, Micros at) = 0;
    // When the next byte towards the PC will have arrived there; nothing when none is under way.
    [[nodiscard]] virtual std::optional<Micros> nextDue() const = 0;
    // Appends the bytes that have arrived at the PC by `at`.
    virtual void take(Micros at, std::vector<std::uint8_t>& out) = 0;
};

// Bytes travel at the line's rate, ten bit times each, in both directions.
class MemoryLine : public SerialLine {
public:
    // `device` may be null: then there are no answers.
    MemoryLine(EventPump& pump, LineDevice* device);

    void open(int port, int baud, LineListener& listener) override;
    void close() override;
    [[nodiscard]] std::string deviceOf(int port) override;
    void write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t pendingOutput() override;
    [[nodiscard]] bool mayFlood() const override { return mayFlood_; }
    [[nodiscard]] int baud() const override { return baud_; }
    [[nodiscard]] bool setBaud(int baud) override;

    // Bytes arrive at the PC now, without a device that sends them. Lost while the line is closed.
    void inject(std::span<const std::uint8_t> bytes);
    // From now on mayFlood() is true, as for a real device.
    void setMayFlood(bool may) { mayFlood_ = may; }
    // The cable is pulled out.
    void pullOut();
    // The device has something new to send: ask for its next byte again.
    void deviceChanged() { schedule(); }

private:
    struct Travelling {
        std::uint8_t byte;
        Micros arrival;
    };

    [[nodiscard]] Micros byteTime() const { return 10 * kMicrosPerSecond / baud_; }
    [[nodiscard]] bool deviceFirst(Micros by) const;
    void advance();
    void schedule();

    EventPump& pump_;
    LineDevice* device_;
    LineListener* listener_ = nullptr;
    bool mayFlood_ = false;
    int baud_ = 9600;
    Micros busyUntil_ = 0;
    std::deque<Travelling> output_;
    std::vector<std::uint8_t> arrived_;
    std::unique_ptr<Alarm> alarm_;
};

}  // namespace korvane::platform
