#include "link/ReplyDiversion.h"

#include <algorithm>

#include "link/Frames.h"

namespace korvane::link {

ReplyKey keyOf(std::uint8_t code, std::span<const std::uint8_t> payload) {
    const bool hasAddress = code == kEepromByteFrame && payload.size() >= 3;
    return {code, hasAddress ? payload[1] + 256 * payload[2] : 0};
}

void ReplyDiversion::expect(ReplyKey key, int replies, ReplyTaker& taker) {
    expected_.push_back({key, replies, &taker});
}

void ReplyDiversion::giveUp(const ReplyTaker& taker) {
    for (auto& each : expected_) {
        if (each.taker == &taker) {
            each.taker = nullptr;
        }
    }
}

void ReplyDiversion::askedOrdinarily(ReplyKey key) {
    std::erase_if(expected_, [&](const Expected& each) { return each.taker == nullptr && each.key == key; });
}

bool ReplyDiversion::take(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (expected_.empty()) {
        return false;
    }
    const auto key = keyOf(code, payload);
    const auto found =
        std::find_if(expected_.begin(), expected_.end(), [&](const Expected& each) { return each.key == key; });
    if (found == expected_.end()) {
        return false;
    }
    auto* const taker = found->taker;
    if (--found->replies == 0) {
        expected_.erase(found);
    }
    if (taker != nullptr) {
        taker->replyTaken(code, payload);
    }
    return true;
}

}  // namespace korvane::link
