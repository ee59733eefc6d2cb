#include "WayBack.h"

#include "PointsWindow.h"

namespace korvane::proof {

namespace {

constexpr int kAnswers = 2'500;  // ms

Outcome outcomeNow(Bench& bench, const Reference& reference) {
    return outcomeOf(reference.before, reference.wanted, reference.written, stateOf(bench.device.ecu()));
}

CellSet unlike(Bench& bench, const EcuState& state) {
    CellSet cells;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = bench.device.ecu().eeprom()[i] != state.stored[i];
    }
    return cells;
}

void readAgain(Bench& bench, const Operation& operation) {
    bench.reconnect();
    readAll(*bench.desk);
    if (operation.backsUp) {
        backUp(*bench.desk);
    }
}

// Whether a map is what is stored: the working maps of the point are the new values then.
bool storesMap(const Operation& operation) {
    return operation.name.find("map") != std::string::npos || operation.name.find("PWM table") != std::string::npos;
}

void bringBack(Bench& bench, const std::string& point) {
    restorePoint(*bench.desk, point, true, false);
    sendMaps(*bench.desk);
    bench.desk->wait(kAnswers);
}

void bringNew(Bench& bench, const Operation& operation) {
    if (storesMap(operation)) {
        restorePoint(*bench.desk, bench.point(), false, true);
    } else {
        operation.edit(*bench.desk);
    }
    operation.store(*bench.desk);
    bench.desk->wait(kAnswers);
}

// By the journal, as long as it is offered; a restore that has ended has none.
void press(Bench& bench, controls::CommandButton keep::FrmRestore::*button, const std::string& point) {
    auto& desk = *bench.desk;
    if (desk.program.restoreRun().Offer.get().empty()) {
        restorePoint(desk, point, true, false);
        return;
    }
    (openPoints(desk).*button).press();
    // Of a cell that is neither old nor new, a half-written one, the program says so and wants a second press.
    if (desk.program.restoreRun().Text.get().find("Pressed again") != std::string::npos) {
        (openPoints(desk).*button).press();
    }
    desk.wait(kAnswers);
}

// A restore that is offered has not been completed. While it is, cells that were sent and not read back may count as
// other ones in the comparison; without it the comparison is right, and the ECU is wholly at one side.
bool saysOfRestore(Bench& bench, Outcome outcome, bool compared) {
    const bool isWhole = outcome == Outcome::Old || outcome == Outcome::New;
    return (compared && isWhole) || !bench.desk->program.restoreRun().Offer.get().empty();
}

void goForth(WayBack& way, Bench& bench, const Reference& reference) {
    bench.reconnect();
    const auto point = pointOf(*bench.desk, kRestoredPoint);
    press(bench, &keep::FrmRestore::btnGoOn, point);
    if (outcomeNow(bench, reference) != Outcome::New) {
        bringBack(bench, point);
    }
    way.toNew = outcomeNow(bench, reference) == Outcome::New;
    way.notNew = unlike(bench, reference.wanted);
}

}  // namespace

WayBack wayBackOf(Bench& bench, const Operation& operation, const Reference& reference,
                  const std::function<std::unique_ptr<Bench>()>& again) {
    WayBack way;
    readAgain(bench, operation);
    const Outcome outcome = outcomeNow(bench, reference);
    const bool isOld = outcome == Outcome::Old;
    way.says = (bench.desk->program.keeper().differsText(bench.point()) == "0") == isOld;
    way.changed = unlike(bench, reference.before);
    if (operation.restores) {
        way.says = saysOfRestore(bench, outcome, way.says);
        press(bench, &keep::FrmRestore::btnGoBack, bench.point());
        if (outcomeNow(bench, reference) == Outcome::Elsewhere) {
            bringBack(bench, bench.point());
        }
    } else {
        bringBack(bench, bench.point());
    }
    way.words = openPoints(*bench.desk).lblState.Caption;
    way.toOld = outcomeNow(bench, reference) == Outcome::Old;
    way.notOld = unlike(bench, reference.before);
    if (operation.restores) {
        goForth(way, *again(), reference);
        return way;
    }
    bringNew(bench, operation);
    way.toNew = outcomeNow(bench, reference) == Outcome::New;
    way.notNew = unlike(bench, reference.wanted);
    return way;
}

}  // namespace korvane::proof
