// The virtual ECU: any bytes at any times, with settings that change meanwhile. The same calls give the same answers.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Support.h"
#include "ecu/CommandParser.h"
#include "ecu/VirtualEcu.h"

namespace {

using namespace korvane;
using ecu::Micros;
using fuzz::require;

constexpr Micros kByteTime = 200;
constexpr Micros kMilli = 1000;
constexpr Micros kLongestRun = 660'000'000;  // the engine is simulated for ten minutes at most
constexpr std::size_t kLongestBody = 160;

// What a step begins with; those that are left are as good as the last one.
enum class Step : std::uint8_t { Bytes, Counted, FixedBody, ShortWait, Wait, LongWait, Set, Baud, Command };
constexpr int kSteps = 16;

// Takes the same bytes as the ECU, and checks what the parser makes of them.
class Listener : public ecu::CommandHandler {
public:
    void feed(std::uint8_t byte, Micros at) {
        now_ = at;
        parser_.feed(byte, at, *this);
        require(!parser_.shortFormEnd() || *parser_.shortFormEnd() > at);
    }
    void command(std::uint8_t, std::span<const std::uint8_t> body, Micros at) override {
        require(body.size() <= kLongestBody);
        passes(at);
    }
    void unknown(std::uint8_t, Micros at) override { passes(at); }

private:
    void passes(Micros at) {
        require(at >= last_ && at <= now_);
        last_ = at;
    }

    ecu::CommandParser parser_;
    Micros now_ = 0;
    Micros last_ = 0;
};

// The ECU at the other end of a wire, and all that came from it.
class Wire {
public:
    void send(std::uint8_t byte) {
        pass(kByteTime);
        listener_.feed(byte, now_);
        ecu_.receive(byte, now_);
    }
    void send(fuzz::Bytes bytes) {
        for (const auto byte : bytes) {
            send(byte);
        }
    }
    void pass(Micros time) {
        if (now_ + time > kLongestRun) {
            return;
        }
        const auto due = ecu_.nextDue();
        const auto before = answer_.size();
        now_ += time;
        ecu_.take(now_, answer_);
        require(answer_.size() == before || (due && *due <= now_));
        require(!ecu_.nextDue() || *ecu_.nextDue() > now_);
    }
    // "key=value"; the keys that name files are left alone.
    void set(std::string_view pair) {
        const auto key = pair.substr(0, pair.find('='));
        if (key != "save" && key != "wear" && key != "eeprom") {
            static_cast<void>(ecu_.set(key, pair.substr(std::min(key.size() + 1, pair.size())), now_));
        }
    }
    void setBaud(int baud) { ecu_.setBaud(baud); }
    [[nodiscard]] const std::vector<std::uint8_t>& answer() const { return answer_; }

private:
    ecu::VirtualEcu ecu_;
    Listener listener_;
    Micros now_ = 0;
    std::vector<std::uint8_t> answer_;
};

std::string_view textOf(fuzz::Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void sendFrame(Wire& wire, fuzz::Script& script, bool counted) {
    const auto code = script.next();
    const auto body = script.bytes(script.next());
    wire.send(code);
    if (counted) {
        wire.send(static_cast<std::uint8_t>(body.size()));
    }
    wire.send(body);
    wire.send(static_cast<std::uint8_t>(0xFF - code));
}

void take(Wire& wire, fuzz::Script& script) {
    switch (static_cast<Step>(script.next() % kSteps)) {
        case Step::Bytes:
            wire.send(script.bytes(script.next()));
            break;
        case Step::Counted:
            sendFrame(wire, script, true);
            break;
        case Step::FixedBody:
            sendFrame(wire, script, false);
            break;
        case Step::ShortWait:
            wire.pass(script.next());
            break;
        case Step::Wait:
            wire.pass(script.next() * kMilli);
            break;
        case Step::LongWait:
            wire.pass(script.next() * 100 * kMilli);
            break;
        case Step::Set:
            wire.set(textOf(script.bytes(script.next())));
            break;
        case Step::Baud:
            wire.setBaud(9600 * (1 + script.next() % 24));
            break;
        case Step::Command:
        default:
            wire.send(script.next());
            break;
    }
}

std::vector<std::uint8_t> answerTo(fuzz::Bytes input) {
    Wire wire;
    fuzz::Script script(input);
    wire.set("type=" + std::to_string(script.next()));
    while (!script.atEnd()) {
        take(wire, script);
    }
    wire.pass(10'000 * kMilli);
    return wire.answer();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    require(answerTo({data, size}) == answerTo({data, size}));
    return 0;
}
