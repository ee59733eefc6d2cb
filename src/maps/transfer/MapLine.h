// What the transfers of a map window share: the line to the ECU, the poll timer, the caption and the catch of failures.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "controls/Controls.h"
#include "maps/transfer/MapContext.h"
#include "maps/transfer/TransferWatch.h"

namespace korvane::maps {

class MapLine {
public:
    MapLine(controls::Window& window, const MapContext& context);

    [[nodiscard]] bool isOpen() const { return context_.connection.MSComm1.PortOpen(); }
    // Whether all that was sent has left the machine.
    [[nodiscard]] bool isDrained() const { return context_.connection.MSComm1.OutBufferCount() < 1; }
    // RuntimeError 8018 when the port is closed.
    void send(std::span<const std::uint8_t> bytes);
    void send(std::initializer_list<std::uint8_t> bytes) { send(std::span(bytes.begin(), bytes.size())); }
    void sendIfOpen(std::span<const std::uint8_t> bytes);
    void sendIfOpen(std::initializer_list<std::uint8_t> bytes) { sendIfOpen(std::span(bytes.begin(), bytes.size())); }

    // Only the difference of two values has a meaning: how many bytes others have sent in between.
    [[nodiscard]] std::uint64_t bytesOfOthers() const;

    // The live poll, which would mix its frames with those of a transfer.
    void stopPoll() { context_.connection.TimerRequestData.Enabled = false; }
    void startPoll() { context_.connection.TimerRequestData.Enabled = true; }

    // Events run in both: the port may be closed, the window unloaded and another transfer begun and ended by then.
    void wait(int milliseconds);
    void pump();
    // Blocks. For handlers of replies: in a wait the next reply could begin, and the receiver would lose its command
    // when the handler ends.
    void block(int milliseconds);

    void show(std::string_view caption) { window_.Caption = caption; }
    // Shows `text` with the time of day behind it.
    void showWithTime(std::string_view caption);
    // Asks for a table and does not wait: the answer comes through the dispatcher, or never.
    void request(std::uint8_t command);
    // A read has been asked for: what is heard of it is watched.
    void expectAnswer(std::uint8_t command);
    [[nodiscard]] TransferWatch& watch() { return watch_; }
    [[nodiscard]] const TransferWatch& watch() const { return watch_; }
    // Among the first reads: events run behind it.
    void requestFirst(std::uint8_t command);

    // Runs a write handler. A failure ends it and shows its description as the caption; the poll timer stays as the
    // handler has left it.
    void trapped(const std::function<void()>& handler);

private:
    controls::Window& window_;
    const MapContext& context_;
    TransferWatch watch_;
    std::uint64_t ownBytes_ = 0;
};

}  // namespace korvane::maps
