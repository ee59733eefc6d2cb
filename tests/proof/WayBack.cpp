#include "WayBack.h"

#include "keep/restore/FrmRestore.h"

namespace korvane::proof {

namespace {

constexpr const char* kWindow = "frmRestore";
constexpr int kAnswers = 2'500;  // ms

Outcome outcomeNow(Bench& bench, const Reference& reference) {
    return outcomeOf(reference.before, reference.wanted, reference.written, stateOf(bench.device.ecu()));
}

// Ticks what is to come back of the point, and presses the button.
void restore(Desk& desk, const std::string& point, bool settings, bool asEdited) {
    desk.program.restorePoints().open();
    auto& window = dynamic_cast<keep::FrmRestore&>(desk.window(kWindow));
    for (int row = 0; row < window.lstPoints.rowCount(); ++row) {
        if (window.lstPoints.entry(row).name == point) {
            window.lstPoints.choose(row);
        }
    }
    window.chkSettings.Value = settings ? 1 : 0;
    window.chkDesk.Value = asEdited ? 1 : 0;
    window.btnRestore.press();
    desk.wait(kAnswers);
}

// Whether a map is what is stored: the working maps of the point are the new values then.
bool storesMap(const Operation& operation) {
    return operation.name.ends_with("map") || operation.name.ends_with("PWM table");
}

bool bringNew(Bench& bench, const Operation& operation, const Reference& reference) {
    if (storesMap(operation)) {
        restore(*bench.desk, bench.point(), false, true);
    } else {
        operation.edit(*bench.desk);
    }
    operation.store(*bench.desk);
    bench.desk->wait(kAnswers);
    return outcomeNow(bench, reference) == Outcome::New;
}

}  // namespace

WayBack wayBackOf(Bench& bench, const Operation& operation, const Reference& reference) {
    WayBack way;
    bench.reconnect();
    readAll(*bench.desk);
    if (operation.backsUp) {
        backUp(*bench.desk);
    }
    const bool isOld = outcomeNow(bench, reference) == Outcome::Old;
    way.says = (bench.desk->program.keeper().differsText(bench.point()) == "0") == isOld;
    restore(*bench.desk, bench.point(), true, false);
    way.words = bench.desk->control<controls::Label>(kWindow, "lblState").Caption;
    sendMaps(*bench.desk);
    bench.desk->wait(kAnswers);
    way.toOld = outcomeNow(bench, reference) == Outcome::Old;
    way.toNew = bringNew(bench, operation, reference);
    return way;
}

}  // namespace korvane::proof
