#include "Verified.h"

#include <regex>

namespace korvane::proof {

namespace {

constexpr std::size_t kFirstCell = 1;  // as the words count

bool has(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

// The map that the operation sends; null if it sends none.
const ecu::MapCells* mapOf(const Operation& operation, const EcuState::Working& working) {
    return has(operation.name, "fuel map")       ? &working.fuel
           : has(operation.name, "ignition map") ? &working.ignition
           : has(operation.name, "PWM table")    ? &working.pwm
                                                 : nullptr;
}

bool hasWritten(const Reference& reference, const EcuState& state) {
    for (std::size_t i = 0; i < state.stored.size(); ++i) {
        if (reference.written[i] && state.stored[i] != reference.wanted.stored[i]) {
            return false;
        }
    }
    return true;
}

bool agrees(const Operation& operation, const Reference& reference, const EcuState& state) {
    if (const auto* const map = mapOf(operation, state.working)) {
        return *map == *mapOf(operation, reference.wanted.working);
    }
    return has(operation.name, "misc block") ? state.working.misc == reference.wanted.working.misc
                                             : hasWritten(reference, state);
}

std::string cellsUnlike(const ecu::MapCells& is, const ecu::MapCells& sent) {
    std::string text = ", but of the map's cells:";
    for (std::size_t i = 0; i < is.size() && text.size() < 200; ++i) {
        text += is.at(i) == sent.at(i) ? ""
                                       : " " + std::to_string(i) + " is " + std::to_string(is.at(i)) + ", not " +
                                             std::to_string(sent.at(i)) + ";";
    }
    return text;
}

// Of a map each cell that is named: "cell 17 is 90, sent 93".
std::string wrongCell(const std::string& says, const ecu::MapCells& is, const ecu::MapCells& sent) {
    static const std::regex kCell("cell ([0-9]+) is ([0-9]+), sent ([0-9]+)");
    for (auto found = std::sregex_iterator(says.begin(), says.end(), kCell); found != std::sregex_iterator(); ++found) {
        const auto cell = static_cast<std::size_t>(std::stoi((*found)[1])) - kFirstCell;
        if (is.at(cell) != std::stoi((*found)[2]) || sent.at(cell) != std::stoi((*found)[3])) {
            return "it says \"" + found->str() + "\"";
        }
    }
    return {};
}

}  // namespace

std::string untruthOf(const Operation& operation, const Reference& reference, const Bench& bench) {
    const std::string& says = bench.verification();
    if (says.empty() || has(says, "not verified")) {
        return {};
    }
    const bool claims = has(says, ": verified");
    const auto* const map = mapOf(operation, bench.atEnd().working);
    if (claims != agrees(operation, reference, bench.atEnd())) {
        return "it says \"" + says + "\"" +
               (map == nullptr ? "" : cellsUnlike(*map, *mapOf(operation, reference.wanted.working)));
    }
    return map == nullptr ? std::string() : wrongCell(says, *map, *mapOf(operation, reference.wanted.working));
}

}  // namespace korvane::proof
