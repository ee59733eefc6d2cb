#include "maps/steady/FrmSteady.h"

#include <algorithm>
#include <utility>

#include "core/Numbers.h"
#include "maps/grid/MapConversions.h"
#include "maps/steady/ErrorPlot.h"

namespace korvane::maps {

namespace {
constexpr int kWidth = 520 * 15;  // twips
constexpr int kHeight = 560 * 15;
}  // namespace

FrmSteady::FrmSteady(platform::Machine& machine, SteadyTuner& steady, const core::SharedTables& tables)
    : Window(machine, "frmSteady"), steady_(steady), tables_(tables) {
    describe();
    connect();
}

void FrmSteady::describe() {
    Caption = "Steady agent";
    Width = kWidth;
    Height = kHeight;
    chkCarry.Caption = "Carry certain corrections to close neighbours";
    btnPutBack.Caption = "Put back to baseline";
    btnPutBack.ToolTipText = "F8";
    btnNewBaseline.Caption = "New baseline";
    picErrors.BackColor = controls::kBlack;
}

void FrmSteady::connect() {
    auto& choices = steady_.choices();
    connectBox(txtRich, choices.RichAuthority, SteadyChoices::kMostAuthority);
    connectBox(txtLean, choices.LeanAuthority, SteadyChoices::kMostAuthority);
    chkCarry.Click = [&] { choices.Carry = chkCarry.Value == 1; };
    for (int zone = 0; zone < txtDelay.count(); ++zone) {
        connectBox(txtDelay(zone), choices.FixedDelayMs.at(static_cast<std::size_t>(zone)),
                   SteadyChoices::kLongestDelay);
    }
    btnPutBack.Click = [this] { putBack(); };
    btnNewBaseline.Click = [this] { lblNote.Caption = steady_.newBaseline(geometryOf(tables_.SWType)); };
    picErrors.Resize = [this] { drawPlot(); };
    Timer1.Tick = [this] { showState(); };
}

void FrmSteady::putBack() {
    lblNote.Caption = steady_.putBack(geometryOf(tables_.SWType));
}

bool FrmSteady::takesKey(int keyCode, int shift) {
    if (keyCode != kPutBackKey || shift != 0) {
        return Window::takesKey(keyCode, shift);
    }
    putBack();
    return true;
}

void FrmSteady::Form_Load() {
    showState();
}

void FrmSteady::showChoices() {
    const auto& choices = steady_.choices();
    showNumber(txtRich, choices.RichAuthority, false);
    showNumber(txtLean, choices.LeanAuthority, false);
    chkCarry.Value = choices.Carry ? 1 : 0;
    for (int zone = 0; zone < txtDelay.count(); ++zone) {
        showNumber(txtDelay(zone), choices.FixedDelayMs.at(static_cast<std::size_t>(zone)), true);
    }
}

// Not while somebody types there.
void FrmSteady::showNumber(controls::TextBox& box, double number, bool emptyForZero) {
    if (activeControl() != &box) {
        box.Text = emptyForZero && number == 0.0 ? std::string() : core::textOf(number);
    }
}

void FrmSteady::connectBox(controls::TextBox& box, controls::Property<double>& number, double most) {
    const auto taking = [this, &box, &number, most] { take(box, number, most); };
    box.LostFocus = taking;
    box.KeyDown = [taking](int keyCode, int) {
        if (keyCode == controls::kKeyReturn) {
            taking();
        }
    };
    box.Change = [this, &box, taking] {
        if (activeControl() != &box) {
            taking();
        }
    };
}

void FrmSteady::leaveBox() {
    if (auto* const box = activeControl()) {
        enter(box->name(), [box] { box->LostFocus(); });
    }
}

// What is out of range is not taken: the box shows what holds. An empty box is 0.
void FrmSteady::take(controls::TextBox& box, controls::Property<double>& number, double most) {
    const double given = core::val(box.Text.get());
    if (given == number.get()) {
        return;
    }
    const bool good = given >= 0.0 && given <= most;
    lblNote.Caption = good ? std::string() : "0 to " + core::textOf(most);
    if (good) {
        number = given;
    } else {
        box.Text = core::textOf(number.get());
    }
}

void FrmSteady::showState() {
    showChoices();
    lblState.Caption = steady_.state();
    lblReason.Caption = steady_.whyStopped();
    lblReason.Visible = !lblReason.Caption.get().empty();
    for (int zone = 0; zone < lblZone.count(); ++zone) {
        lblZone(zone).Caption = steady_.zoneWords(static_cast<std::size_t>(zone));
    }
    const int cell = tables_.MapPlace;
    const auto words = steady_.cellWords(cell);
    lblCell.Caption = words.empty() ? words : "Cell " + std::to_string(cell + 1) + ": " + words;
    const auto reasons = steady_.cellReasons(cell);
    lblReasons.Caption = reasons.empty() ? reasons : "Rejected while the engine ran there: " + reasons;
    lblReasons.Visible = !reasons.empty();
    showSamples();
    showErrors();
}

void FrmSteady::showErrors() {
    const auto points = steady_.errors().points();
    const double last = points.empty() ? -1.0 : points.back().seconds;
    if (std::exchange(drawnTo_, last) != last) {
        lblErrors.Caption = wordsOf(steady_.errors());
        drawPlot();
    }
}

void FrmSteady::drawPlot() {
    drawErrors(picErrors.surface(), steady_.errors(), picErrors.Width, picErrors.Height);
    picErrors.drawn();
}

// Only what differs is exchanged, so that a list that is read does not jump.
void FrmSteady::showSamples() {
    const auto rows = steady_.sampleWords();
    bool same = lstSamples.ListCount() == static_cast<int>(rows.size());
    for (int row = 0; same && row < lstSamples.ListCount(); ++row) {
        same = lstSamples.List(row) == rows[static_cast<std::size_t>(row)];
    }
    if (same) {
        return;
    }
    lstSamples.Clear();
    for (const auto& row : rows) {
        lstSamples.AddItem(row);
    }
}

}  // namespace korvane::maps
