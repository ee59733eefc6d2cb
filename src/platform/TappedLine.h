// A serial line with a record of what crosses it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/EventPump.h"
#include "platform/SerialLine.h"
#include "platform/WriteRecord.h"

namespace korvane::platform {

// Passes everything on to another line, which must outlive it.
class TappedLine : public SerialLine, private LineListener {
public:
    using Inject = std::function<void(std::span<const std::uint8_t>)>;

    // `inject` puts bytes on the line as if they arrived; empty for a line that leads to a real device.
    TappedLine(SerialLine& line, const EventPump& pump, Inject inject = {});

    // From now on a line for every byte: "123 > 78", time in ms, direction (> to the ECU), two hex digits. False if the
    // file can't be written. A trace that can't go on later ends with one call of `failed`.
    [[nodiscard]] bool traceTo(const std::filesystem::path& file, std::function<void()> failed);

    // What was written since the last of these calls, oldest first. The record grows to 1 MiB; then the oldest writes
    // are dropped. A poll takes four bytes of it.
    [[nodiscard]] std::vector<WriteRecord::Write> takeSent() { return sent_.take(); }
    [[nodiscard]] std::vector<std::uint8_t> takeSentBytes();

    // Bytes arrive on the line. False if it leads to a real device.
    [[nodiscard]] bool inject(std::span<const std::uint8_t> bytes);

    void open(int port, int baud, LineListener& listener) override;
    void close() override;
    [[nodiscard]] std::string deviceOf(int port) override { return line_.deviceOf(port); }
    [[nodiscard]] PortFacts factsOf(int port) override { return line_.factsOf(port); }
    void write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t pendingOutput() override { return line_.pendingOutput(); }
    [[nodiscard]] bool mayFlood() const override { return line_.mayFlood(); }
    [[nodiscard]] int baud() const override { return line_.baud(); }
    [[nodiscard]] bool setBaud(int baud) override { return line_.setBaud(baud); }

private:
    void lineReceived(std::span<const std::uint8_t> bytes) override;
    void lineLost(const std::string& reason) override;
    void trace(char direction, std::span<const std::uint8_t> bytes);

    SerialLine& line_;
    const EventPump& pump_;
    Inject inject_;
    LineListener* listener_ = nullptr;
    WriteRecord sent_;
    std::ofstream trace_;
    std::function<void()> traceFailed_;
};

}  // namespace korvane::platform
