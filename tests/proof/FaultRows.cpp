#include "FaultRows.h"

#include <algorithm>

#include "Verified.h"
#include "link/EcuMap.h"

namespace korvane::proof {

namespace {

// At each of `count` bytes.
std::vector<Try> atEachByte(Fault fault, long count) {
    std::vector<Try> tries;
    for (long byte = 1; byte <= count; ++byte) {
        tries.push_back({.fault = fault, .byte = byte});
    }
    return tries;
}

// A single cell is hit by the cut behind its last byte.
std::vector<Try> atEachStoredCell(const std::vector<Storing>& storings) {
    std::vector<Try> tries;
    for (const Storing& storing : storings) {
        for (int cell = 0; storing.cells > 1 && cell < storing.cells; ++cell) {
            tries.push_back({.fault = Fault::CutWhileStoring, .byte = storing.byte, .cell = cell});
        }
    }
    return tries;
}

std::vector<Try> atEachHalf(Fault fault, const std::vector<std::string_view>& halves) {
    std::vector<Try> tries;
    for (const auto half : halves) {
        tries.push_back({.fault = fault, .halves = half});
    }
    return tries;
}

std::string nameOf(const Operation& operation, const Try& what) {
    std::string name = operation.name + ", " + std::string(nameOf(what.fault));
    if (!what.halves.empty()) {
        return name + ", " + std::string(what.halves);
    }
    name += " at byte " + std::to_string(what.byte);
    return what.fault == Fault::CutWhileStoring ? name + ", cell " + std::to_string(what.cell) : name;
}

// Cells that keep a map: the ECU tells the map on which the engine runs until it restarts.
CellSet mapCells(Bench& bench) {
    CellSet cells;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = link::mapCellAt(bench.desk->program.tables().addresses, static_cast<int>(i)).has_value();
    }
    return cells;
}

// What a cell had that the ECU had never told, no program can know; that is the only excuse.
bool isExcused(const CellSet& blamed, const CellSet& unknown) {
    return blamed.any() && (blamed & ~unknown).none();
}

std::string addresses(const CellSet& cells) {
    std::string text;
    for (std::size_t i = 0; i < cells.size() && text.size() < 100; ++i) {
        text += cells[i] ? " " + std::to_string(i) : "";
    }
    return text;
}

std::string failureOf(const WayBack& way, Bench& bench, Outcome outcome) {
    const CellSet untold = ~bench.told();
    std::string failure;
    if (!way.says && !isExcused(way.changed, untold | mapCells(bench))) {
        failure += " the program does not say which values the ECU has, at" + addresses(way.changed) + ";";
    }
    if (!way.toOld && !isExcused(way.notOld, untold)) {
        failure += " no way to the old values, at" + addresses(way.notOld) + ";";
    }
    if (!way.toNew && !isExcused(way.notNew, untold)) {
        failure += " no way to the new values, at" + addresses(way.notNew) + ";";
    }
    return failure.empty() ? failure : failure + " (" + std::string(nameOf(outcome)) + ") " + way.words;
}

using MakeBench = std::function<std::unique_ptr<Bench>()>;

void ask(Bench& bench, const Operation& operation, const Reference& reference, const Try& what, Outcome outcome,
         FaultRow& row, const MakeBench& again) {
    const WayBack way = wayBackOf(bench, operation, reference, again);
    ++row.asked;
    row.unseen += way.says ? 0 : 1;
    row.stuck += way.toOld && way.toNew ? 0 : 1;
    if (const std::string failure = failureOf(way, bench, outcome); !failure.empty()) {
        row.failures.push_back(nameOf(operation, what) + ":" + failure);
    }
}

}  // namespace

Reference referenceOf(const Operation& operation) {
    Reference reference;
    Bench bench(operation.type, cellsBefore(operation.type));
    operation.edit(*bench.desk);
    reference.before = stateOf(bench.device.ecu());
    bench.arm({});
    operation.store(*bench.desk);
    bench.settle();
    reference.wanted = stateOf(bench.device.ecu());
    reference.written = bench.device.written();
    reference.bytes = bench.device.heard();
    reference.answers = bench.device.said();
    reference.storings = bench.device.storings();
    reference.words = bench.wordsAtEnd();
    return reference;
}

std::vector<std::vector<Try>> triesOf(const Operation& operation, const Reference& reference) {
    std::vector<std::vector<Try>> all;
    for (const Fault fault :
         {Fault::Pulled, Fault::Restarted, Fault::Killed, Fault::Cut, Fault::Lost, Fault::Flipped}) {
        all.push_back(atEachByte(fault, reference.bytes));
    }
    all.push_back(atEachStoredCell(reference.storings));
    if (!operation.halves.empty()) {
        all.push_back(atEachByte(Fault::AnswerLost, reference.answers));
        all.push_back(atEachByte(Fault::AnswerFlipped, reference.answers));
        all.push_back(atEachHalf(Fault::Refused, operation.halves));
        all.push_back(atEachHalf(Fault::NotAcknowledged, operation.halves));
    }
    for (auto& tries : all) {
        tries = chosen(tries, {.step = operation.step, .part = 0, .parts = 1});
    }
    std::erase_if(all, [](const auto& tries) { return tries.empty(); });
    return all;
}

std::vector<Try> chosen(const std::vector<Try>& tries, const Choice& choice) {
    std::vector<Try> some;
    const auto count = static_cast<long>(tries.size());
    for (long i = 0; i < count; ++i) {
        const bool stepped = (count - 1 - i) % choice.step == 0;
        if (stepped && i % choice.parts == choice.part) {
            some.push_back(tries[static_cast<std::size_t>(i)]);
        }
    }
    return some;
}

namespace {

std::unique_ptr<Bench> attempt(const Operation& operation, const Try& what) {
    auto bench = std::make_unique<Bench>(operation.type, cellsBefore(operation.type));
    operation.edit(*bench->desk);
    bench->arm(what);
    operation.store(*bench->desk);
    bench->settle();
    return bench;
}

}  // namespace

FaultRow rowOf(const Operation& operation, const Reference& reference, const std::vector<Try>& tries, int asking) {
    FaultRow row;
    for (const Try& what : tries) {
        const MakeBench again = [&] { return attempt(operation, what); };
        const auto made = again();
        Bench& bench = *made;
        const Outcome outcome =
            outcomeOf(reference.before, reference.wanted, reference.written, stateOf(bench.device.ecu()));
        row.fault = what.fault;
        ++row.outcomes.at(static_cast<std::size_t>(outcome));
        const bool told = what.fault == Fault::Killed || bench.wordsAtEnd() != reference.words;
        row.silent += outcome != Outcome::New && !told ? 1 : 0;
        if (const auto untruth = untruthOf(operation, reference, bench); !untruth.empty()) {
            row.failures.push_back(nameOf(operation, what) + ": " + untruth);
        }
        if (row.tried++ % asking == 0) {
            ask(bench, operation, reference, what, outcome, row, again);
        }
    }
    return row;
}

}  // namespace korvane::proof
