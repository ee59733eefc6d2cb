#include "doctor/FrmDoctor.h"

#include "core/Numbers.h"
#include "doctor/TrialFindings.h"
#include "platform/Machine.h"

namespace korvane::doctor {

namespace {
constexpr int kWidth = 720 * 15;  // twips
constexpr int kHeight = 520 * 15;
}  // namespace

FrmDoctor::FrmDoctor(platform::Machine& machine, link::ConnectionPanel& panel)
    : Window(machine, "frmDoctor"), panel_(panel), doctor_(machine.pump, machine.line) {
    Caption = "Test port";
    Width = kWidth;
    Height = kHeight;
    lblWarning.Caption = kBeforeAsking;
    btnAgain.Click = [this] { testAgain(); };
    btnAsk.Click = [this] { ask(); };
    doctor_.changed = [this] { showAll(); };
    panel_.MSComm1.addObserver(*this);
}

FrmDoctor::~FrmDoctor() {
    panel_.MSComm1.removeObserver(*this);
}

void FrmDoctor::Form_Load() {
    testAgain();
}

bool FrmDoctor::Form_Unload() {
    doctor_.stop();
    return true;
}

void FrmDoctor::propertyChanged(controls::Object&, const void* property) {
    if (property != panel_.MSComm1.portOpenProperty()) {
        return;
    }
    if (panel_.MSComm1.PortOpen()) {
        doctor_.giveUpLine();
    }
    showAll();
}

void FrmDoctor::testAgain() {
    const int port = panel_.ComboPort.ListIndex + 1;
    const int baud = core::toInt32(core::val(panel_.ComboBaud.Text()));
    lblPort.Caption = "COM" + std::to_string(port);
    if (panel_.MSComm1.PortOpen()) {
        doctor_.lookAlone(port);
    } else {
        doctor_.look(port, baud);
    }
    showAll();
}

void FrmDoctor::ask() {
    if (!panel_.MSComm1.PortOpen() && doctor_.mayAsk()) {
        doctor_.ask();
        showAll();
    }
}

std::string FrmDoctor::state() const {
    if (panel_.MSComm1.PortOpen()) {
        return "The program itself has the port open: press Disconnect in the main window, then test again.";
    }
    if (doctor_.runs()) {
        return "The test runs.";
    }
    if (doctor_.verdict()) {
        return rowOf(*doctor_.verdict());
    }
    return doctor_.mayAsk() ? "Nothing has been sent so far." : "As long as there is a fault, nothing can be asked.";
}

void FrmDoctor::showAll() {
    lstFindings.Clear();
    for (const auto& finding : doctor_.findings()) {
        lstFindings.AddItem(rowOf(finding));
    }
    lstSpeeds.Clear();
    for (const auto& asked : doctor_.asked()) {
        lstSpeeds.AddItem(lineOf(asked));
    }
    lblVerdict.Caption = state();
    btnAsk.Enabled = !panel_.MSComm1.PortOpen() && doctor_.mayAsk();
    btnAgain.Enabled = !doctor_.runs();
}

}  // namespace korvane::doctor
