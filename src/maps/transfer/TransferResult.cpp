#include "maps/transfer/TransferResult.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "link/Commands.h"
#include "link/EcuMap.h"
#include "link/Frames.h"

namespace korvane::maps {

struct TransferResult::Kind {
    std::uint8_t command;
    std::string_view name;
    Answer answer;
    std::uint8_t first, second;  // codes of the answers
};

const TransferResult::Kind TransferResult::kKinds[] = {
    {link::kAskMiscBlock, "Misc", Answer::Bytes, link::kAskMiscBlock, link::kAskMiscBlock},
    {link::kFuelMap.ask, "Fuel", Answer::Bytes, link::kFuelMap.ask, link::kFuelMap.askSecondHalf},
    {link::kIgnitionMap.ask, "Ignition", Answer::Bytes, link::kIgnitionMap.ask, link::kIgnitionMap.askSecondHalf},
    {link::kAskPwmTable, "PWM", Answer::Cell, link::kAskPwmTable, link::kAskPwmTable},
    {link::kSendMiscBlock, "Misc", Answer::None, 0, 0},
    {link::kFuelMap.send, "Fuel", Answer::Status, link::kFuelMap.send, link::kFuelMap.sendSecondHalf},
    {link::kIgnitionMap.send, "Ignition", Answer::Status, link::kIgnitionMap.send, link::kIgnitionMap.sendSecondHalf},
    {link::kSendPwmCell, "PWM", Answer::Restart, link::kDeviceStartedFrame, link::kDeviceStartedFrame},
};

const TransferResult::Kind* TransferResult::kindOf(std::uint8_t command) {
    const auto* const kind =
        std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& each) { return each.command == command; });
    return kind != std::end(kKinds) ? kind : nullptr;
}

void TransferResult::begin(std::uint8_t command, int total) {
    const auto* const kind = kindOf(command);
    if (kind == nullptr) {
        return;
    }
    if (!isWaiting()) {
        exchanges_.clear();
    }
    std::erase_if(exchanges_, [&](const Exchange& each) { return each.kind == kind; });
    exchanges_.push_back({kind, total});
}

bool TransferResult::heard(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (code == link::kUnknownCommandFrame) {
        return refuseOldest();
    }
    auto* const exchange = answeredBy(code);
    return exchange != nullptr && count(*exchange, payload);
}

// What comes after a refusal changes nothing.
bool TransferResult::count(Exchange& exchange, std::span<const std::uint8_t> payload) {
    if (exchange.state == State::Refused || exchange.isOver) {
        return false;
    }
    const auto answer = exchange.kind->answer;
    if (answer == Answer::Status && (payload.empty() || payload.front() == 0)) {
        exchange.state = State::Refused;
        return true;
    }
    exchange.partly = 0;
    exchange.heard += answer == Answer::Bytes ? static_cast<int>(std::min(payload.size(), link::EcuMap::kHalf)) : 1;
    if (exchange.heard >= exchange.total) {
        exchange.state = State::Whole;
    }
    return true;
}

void TransferResult::partlyHeard(std::uint8_t code, int bytes) {
    auto* const exchange = answeredBy(code);
    if (exchange != nullptr && exchange->kind->answer == Answer::Bytes && exchange->state == State::Waiting) {
        exchange->partly = std::max(exchange->partly, bytes);
    }
}

TransferResult::Exchange* TransferResult::answeredBy(std::uint8_t code) {
    const auto found = std::find_if(exchanges_.begin(), exchanges_.end(), [code](const Exchange& each) {
        return each.kind->answer != Answer::None && (each.kind->first == code || each.kind->second == code);
    });
    return found != exchanges_.end() ? &*found : nullptr;
}

// The frame does not say which command it is about; the ECU takes them in order.
bool TransferResult::refuseOldest() {
    const auto oldest = std::find_if(exchanges_.begin(), exchanges_.end(),
                                     [](const Exchange& each) { return each.state == State::Waiting; });
    if (oldest == exchanges_.end()) {
        return false;
    }
    oldest->state = State::Refused;
    return true;
}

void TransferResult::silent() {
    endWaiting(State::Silent);
}

void TransferResult::tooLate() {
    for (auto& exchange : exchanges_) {
        exchange.isOver = true;
    }
}

void TransferResult::begunElsewhere(std::uint8_t command) {
    for (auto& exchange : exchanges_) {
        exchange.isOver = exchange.isOver || (exchange.state != State::Waiting && exchange.kind == kindOf(command));
    }
}

void TransferResult::mixedWithItself(std::uint8_t command) {
    for (auto& exchange : exchanges_) {
        exchange.hasTwin = exchange.hasTwin || exchange.kind == kindOf(command);
    }
}

void TransferResult::mixedInto(std::uint8_t command) {
    for (auto& exchange : exchanges_) {
        exchange.hasOthers = exchange.hasOthers || exchange.kind == kindOf(command);
    }
}

void TransferResult::lineClosed() {
    endWaiting(State::Closed);
    tooLate();
}

void TransferResult::lineOpened() {
    for (auto& exchange : exchanges_) {
        if (exchange.state == State::Closed) {
            exchange.state = State::WasClosed;
        }
    }
}

void TransferResult::endWaiting(State state) {
    for (auto& exchange : exchanges_) {
        if (exchange.state == State::Waiting) {
            exchange.state = state;
        }
    }
}

bool TransferResult::isWaiting() const {
    return std::any_of(exchanges_.begin(), exchanges_.end(),
                       [](const Exchange& each) { return each.state == State::Waiting; });
}

bool TransferResult::hasFailed() const {
    return std::any_of(exchanges_.begin(), exchanges_.end(), [this](const Exchange& each) {
        const bool lacksAnswer = each.state == State::Silent && each.kind->answer != Answer::None;
        return lacksAnswer || !mixture(each).empty() || each.state == State::Refused || each.state == State::Closed ||
               each.state == State::WasClosed;
    });
}

std::string TransferResult::silence(const Exchange& exchange) {
    const int heard = exchange.heard + exchange.partly;
    switch (exchange.kind->answer) {
        case Answer::None:
            return "sent, the ECU does not confirm it";
        case Answer::Status:
            return heard == 0 ? "no answer" : "only the first half acknowledged";
        default:
            break;
    }
    if (heard == 0) {
        return "no answer";
    }
    return heard < exchange.total ? std::to_string(heard) + " of " + std::to_string(exchange.total) + " bytes"
                                  : "damaged answer";
}

std::string TransferResult::verdict(const Exchange& exchange, bool alone) {
    switch (exchange.state) {
        case State::Waiting:
            return "waiting";
        case State::Refused:
            return "refused";
        case State::Closed:
            return "the port is closed";
        case State::WasClosed:
            return "the port was closed";
        case State::Silent:
            return silence(exchange);
        case State::Whole:
            break;
    }
    if (exchange.kind->answer == Answer::Status) {
        return "acknowledged";
    }
    if (exchange.kind->answer == Answer::Restart) {
        return "the ECU has restarted";
    }
    const auto total = std::to_string(exchange.total);
    return alone ? total + " of " + total + " bytes" : "complete";
}

// A read and a send of one map at once are told apart.
std::string TransferResult::nameOf(const Exchange& exchange) const {
    const auto alike = std::count_if(exchanges_.begin(), exchanges_.end(),
                                     [&](const Exchange& each) { return each.kind->name == exchange.kind->name; });
    const auto answer = exchange.kind->answer;
    const bool isRead = answer == Answer::Bytes || answer == Answer::Cell;
    return std::string(exchange.kind->name) + (alike == 1 ? "" : isRead ? " read" : " send");
}

// Bytes of a transfer that begins before a send is answered go out among those of the send: what the ECU acknowledges
// or refuses may be another map then.
std::string_view TransferResult::mixture(const Exchange& exchange) const {
    const bool isTold = exchange.state == State::Whole || exchange.state == State::Refused;
    if (exchange.kind->answer != Answer::Status || !isTold) {
        return {};
    }
    return exchange.hasTwin || &exchange != &exchanges_.back() ? ", but mixed with another transfer"
           : exchange.hasOthers                                ? ", but mixed with other commands"
                                                               : "";
}

// Transfers of the same verdict share it.
std::string TransferResult::text() const {
    std::vector<std::pair<std::string, std::string>> groups;
    for (const auto& exchange : exchanges_) {
        const auto said = verdict(exchange, exchanges_.size() == 1).append(mixture(exchange));
        const auto same =
            std::find_if(groups.begin(), groups.end(), [&](const auto& each) { return each.second == said; });
        if (same == groups.end()) {
            groups.emplace_back(nameOf(exchange), said);
        } else {
            same->first += ", ";
            same->first += nameOf(exchange);
        }
    }
    std::string text;
    for (const auto& [names, said] : groups) {
        text += text.empty() ? "" : "; ";
        text += names;
        text += ": ";
        text += said;
    }
    return text;
}

}  // namespace korvane::maps
