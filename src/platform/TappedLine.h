// A serial line with a record of what crosses it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/EventPump.h"
#include "platform/SerialLine.h"

namespace korvane::platform {

// Passes everything on to another line, which must outlive it.
class TappedLine : public SerialLine, private LineListener {
public:
    using Inject = std::function<void(std::span<const std::uint8_t>)>;

    struct Write {
        std::int64_t milliseconds;
        std::vector<std::uint8_t> bytes;
    };

    // `inject` puts bytes on the line as if they arrived; empty for a line that leads to a real device.
    TappedLine(SerialLine& line, const EventPump& pump, Inject inject = {});

    // From now on a line for every byte: "123 > 78", time in ms, direction (> to the ECU), two hex digits. False if the
    // file can't be written.
    [[nodiscard]] bool traceTo(const std::filesystem::path& file);

    // What was written since the last of these calls, oldest first. While nobody asks, the newest 1 MiB is kept, in
    // whole writes.
    [[nodiscard]] std::vector<Write> takeSent();
    [[nodiscard]] std::vector<std::uint8_t> takeSentBytes();

    // Bytes arrive on the line. False if it leads to a real device.
    [[nodiscard]] bool inject(std::span<const std::uint8_t> bytes);

    void open(int port, int baud, LineListener& listener) override;
    void close() override;
    [[nodiscard]] std::string deviceOf(int port) override { return line_.deviceOf(port); }
    void write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t pendingOutput() override { return line_.pendingOutput(); }
    [[nodiscard]] int baud() const override { return line_.baud(); }
    [[nodiscard]] bool setBaud(int baud) override { return line_.setBaud(baud); }

private:
    struct Mark {
        std::int64_t milliseconds;
        std::size_t count;
    };

    void lineReceived(std::span<const std::uint8_t> bytes) override;
    void lineLost(const std::string& reason) override;
    void record(std::span<const std::uint8_t> bytes);
    void trace(char direction, std::span<const std::uint8_t> bytes);

    SerialLine& line_;
    const EventPump& pump_;
    Inject inject_;
    LineListener* listener_ = nullptr;
    std::deque<std::uint8_t> sent_;
    std::deque<Mark> marks_;  // one for each write in sent_
    std::ofstream trace_;
};

}  // namespace korvane::platform
