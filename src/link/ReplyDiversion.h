// Replies that the program has asked for past its windows. They tell what the ECU has, and act nowhere else: no map on
// the desk and no box changes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace korvane::link {

// Which replies: the code, and of an EEPROM byte its address too.
struct ReplyKey {
    std::uint8_t code = 0;
    int address = 0;

    friend bool operator==(const ReplyKey&, const ReplyKey&) = default;
};
// Of a byte that was answered without its address, 0.
[[nodiscard]] ReplyKey keyOf(std::uint8_t code, std::span<const std::uint8_t> payload);

class ReplyTaker {
public:
    virtual ~ReplyTaker() = default;

    // A reply that was expected, whole or too short.
    virtual void replyTaken(std::uint8_t code, std::span<const std::uint8_t> payload) = 0;
};

// Replies come in the order of their requests.
class ReplyDiversion {
public:
    // So many replies of this kind have just been asked for.
    void expect(ReplyKey key, int replies, ReplyTaker& taker);
    // Nobody waits for them any more: one that still comes acts nowhere all the same.
    void giveUp(const ReplyTaker& taker);
    // The same has been asked for in the ordinary way: late replies count as answers to that.
    void askedOrdinarily(ReplyKey key);

    // Whether the frame is one of those replies; it has then been given to who waits for it.
    [[nodiscard]] bool take(std::uint8_t code, std::span<const std::uint8_t> payload);

private:
    struct Expected {
        ReplyKey key;
        int replies;
        ReplyTaker* taker;  // null: nobody waits
    };

    std::vector<Expected> expected_;
};

}  // namespace korvane::link
