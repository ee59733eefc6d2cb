// Reads what the ECU has past the windows, and waits for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "controls/Object.h"
#include "core/EepromAccess.h"
#include "link/Commands.h"
#include "link/ConnectionPanel.h"
#include "platform/EventPump.h"

namespace korvane::link {

// Why a read has ended.
enum class ReadEnd {
    Answered,
    Silent,     // no answer, or not all of it
    Damaged,    // the last answer was too short
    Closed,     // the port is closed, or was in between
    Restarted,  // the ECU has
    Stopped,    // nobody wants it any more
};
// "no answer", "damaged answer", "the port is closed", "the ECU restarted", "on request"; empty for an answer.
[[nodiscard]] std::string_view wordsOf(ReadEnd end);

// What is read reaches the tables of what the ECU has, but no window and no map on the desk. Events run during a read;
// it ends when a silence has lasted too long, whatever happens. One that is not answered is asked for again. The caller
// sees to the live poll.
class ReadBack : private ReplyTaker, private FrameWitness, private controls::Observer {
public:
    using Bytes = std::vector<std::optional<std::uint8_t>>;

    ReadBack(platform::EventPump& pump, ConnectionPanel& connection);
    ReadBack(const ReadBack&) = delete;
    ReadBack& operator=(const ReadBack&) = delete;
    ~ReadBack() override;

    // Asked at each turn: true ends the read.
    std::function<bool()> unwanted;

    // Each gives what has come, also where the end says that this is not all. A large map has 320 cells.
    [[nodiscard]] ReadEnd map(const MapCommands& commands, std::size_t cells, Bytes& bytes);
    [[nodiscard]] ReadEnd pwmTable(Bytes& bytes);   // 160 cells
    [[nodiscard]] ReadEnd miscBlock(Bytes& bytes);  // 9 bytes
    [[nodiscard]] ReadEnd cell(core::EepromAccess& eeprom, int address, std::uint8_t& byte);
    // An answer has no checksum: one that differs from what was `sent` is asked for once more.
    [[nodiscard]] ReadEnd cell(core::EepromAccess& eeprom, int address, std::uint8_t sent, std::uint8_t& byte);

    // Waits for the ECU's restart, since the ReadBack was made: Answered if it has come. A restart ends no later read
    // then.
    [[nodiscard]] ReadEnd restart();

    // Why nothing more can be read: what has happened since the ReadBack was made.
    [[nodiscard]] std::optional<ReadEnd> interruption() const;

    static constexpr platform::Micros kPatience = 2000 * platform::kMicrosPerMilli;         // of a map, silence
    static constexpr platform::Micros kCellPatience = 500 * platform::kMicrosPerMilli;      // of a byte
    static constexpr platform::Micros kRestartPatience = 5000 * platform::kMicrosPerMilli;  // of a restart
    static constexpr int kTurn = 5;                                                         // ms
    static constexpr int kMapAttempts = 2;
    static constexpr int kCellAttempts = 3;

private:
    // One request and its answer: `first` and `count` of the bytes that it fills.
    struct Question {
        ReplyKey key;
        int replies;
        std::size_t first, count;
        platform::Micros patience;
        int attempts;
        std::function<void()> ask;
    };
    [[nodiscard]] ReadEnd read(const Question& question);
    [[nodiscard]] ReadEnd attempt(const Question& question);
    [[nodiscard]] ReadEnd half(std::uint8_t command, std::size_t first);
    [[nodiscard]] ReadEnd block(std::span<const std::uint8_t> request, int replies, std::size_t first,
                                std::size_t count);
    [[nodiscard]] bool isWhole(const Question& question) const;
    void ask(std::uint8_t code, std::span<const std::uint8_t> request);

    void replyTaken(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void propertyChanged(controls::Object& object, const void* property) override;

    platform::EventPump& pump_;
    ConnectionPanel& connection_;
    Bytes bytes_;
    std::optional<ReplyKey> key_;        // of the question that waits
    std::size_t first_ = 0, count_ = 0;  // what its answer fills
    platform::Micros lastSign_ = 0;
    bool damaged_ = false;
    bool closed_ = false;
    bool restarted_ = false;
};

// Keeps the line to itself: the live poll stands still meanwhile, and runs on behind it if it ran before.
class QuietLine {
public:
    explicit QuietLine(ConnectionPanel& connection)
        : poll_(connection.TimerRequestData), polled_(poll_.Enabled), transfer_(&connection.linkState) {
        poll_.Enabled = false;
    }
    QuietLine(const QuietLine&) = delete;
    QuietLine& operator=(const QuietLine&) = delete;
    ~QuietLine() { poll_.Enabled = polled_; }

private:
    controls::Timer& poll_;
    bool polled_;
    LinkState::Transfer transfer_;
};

}  // namespace korvane::link
