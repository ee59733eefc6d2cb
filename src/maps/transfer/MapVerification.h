// Reads back what a map window has sent, into a buffer apart, and compares.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "link/Commands.h"
#include "link/EcuMap.h"
#include "link/ReadBack.h"
#include "maps/transfer/MapContext.h"

namespace korvane::maps {

class PaneWindow;

// Cells of a map as they were sent; nothing for one that was not.
using SentCells = std::vector<std::optional<std::uint8_t>>;

// Exists from before the first byte of a send to the end of its verification, so that it hears a restart. Each outcome
// goes to the window's report. Neither a map on the desk nor a box changes. Events run meanwhile.
class MapVerification {
public:
    // `again` sends the same once more.
    MapVerification(PaneWindow& window, std::string subject, std::function<void()> again);

    // Fuel or ignition; `stored`: the order to store it went out.
    void map(const link::MapCommands& commands, const SentCells& sent, bool stored);
    // The ECU restarts behind the order to store.
    void pwm(const SentCells& sent);
    // The nine bytes of the misc block, fewer if the send has failed.
    void misc(std::span<const std::uint8_t> sent);

private:
    // `holds` says whether `of`, which has told what the ECU has, still agrees with what was sent.
    template <class Read>
    void run(Read&& read, controls::Object& of, std::function<bool()> holds);
    template <class Read>
    void runMap(Read&& read, link::EcuMap& map, const SentCells& sent);
    [[nodiscard]] std::string mapWords(const link::MapCommands& commands, const SentCells& sent, bool stored);
    [[nodiscard]] std::string pwmWords(const SentCells& sent);
    [[nodiscard]] std::string miscWords(std::span<const std::uint8_t> sent);

    PaneWindow& window_;
    std::string subject_;
    std::function<void()> again_;
    link::ReadBack line_;
};

}  // namespace korvane::maps
