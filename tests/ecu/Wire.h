// A wire to a virtual ECU with verbs for tests.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ecu/VirtualEcu.h"

namespace korvane::ecu::test {

using Bytes = std::vector<std::uint8_t>;

inline EcuSettings keys(std::string_view list) {
    EcuSettings settings;
    const std::string error = parseKeyList(settings, list);
    if (!error.empty()) {
        throw std::runtime_error(error);
    }
    return settings;
}

class Wire {
public:
    explicit Wire(std::string_view list = "") : ecu(keys(list)) {}

    void send(const Bytes& bytes) {
        for (const std::uint8_t byte : bytes) {
            ecu.receive(byte, now);
            now += 200;
        }
    }
    // All that arrives within `time` from now.
    Bytes arrives(Micros time = 1'000'000) {
        Bytes bytes;
        now += time;
        ecu.take(now, bytes);
        return bytes;
    }
    Bytes ask(const Bytes& bytes) {
        send(bytes);
        return arrives();
    }
    // The payload of the live frame that a poll gets; empty when there is no such frame.
    Bytes poll() {
        const Bytes frame = ask({'x'});
        return frame.size() < 3 ? Bytes{} : Bytes(frame.begin() + 2, frame.end() - 1);
    }
    void pass(double seconds) { now += static_cast<Micros>(seconds * 1e6); }

    VirtualEcu ecu;
    Micros now = 0;
};

// 160 bytes: first, first + 1, ... modulo 256.
inline Bytes countingFrom(int first) {
    Bytes bytes;
    for (int i = 0; i < 160; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(first + i));
    }
    return bytes;
}

// Frame of fixed body: `begin`, `body`, `end`.
inline Bytes joined(Bytes begin, const Bytes& body, const Bytes& end) {
    begin.insert(begin.end(), body.begin(), body.end());
    begin.insert(begin.end(), end.begin(), end.end());
    return begin;
}

}  // namespace korvane::ecu::test
