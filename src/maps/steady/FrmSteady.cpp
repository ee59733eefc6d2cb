#include "maps/steady/FrmSteady.h"

#include <algorithm>

#include "core/Numbers.h"
#include "maps/grid/MapConversions.h"

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
    btnNewBaseline.Caption = "New baseline";
}

void FrmSteady::connect() {
    auto& choices = steady_.choices();
    txtRich.Change = [&] { take(txtRich, choices.RichAuthority, SteadyChoices::kMostAuthority); };
    txtLean.Change = [&] { take(txtLean, choices.LeanAuthority, SteadyChoices::kMostAuthority); };
    chkCarry.Click = [&] { choices.Carry = chkCarry.Value == 1; };
    for (int zone = 0; zone < txtDelay.count(); ++zone) {
        txtDelay(zone).Change = [this, &choices, zone] {
            take(txtDelay(zone), choices.FixedDelayMs.at(static_cast<std::size_t>(zone)), SteadyChoices::kLongestDelay);
        };
    }
    btnPutBack.Click = [this] { lblNote.Caption = steady_.putBack(geometryOf(tables_.SWType)); };
    btnNewBaseline.Click = [this] { lblNote.Caption = steady_.newBaseline(geometryOf(tables_.SWType)); };
    Timer1.Tick = [this] {
        showTaken();
        showState();
    };
}

void FrmSteady::Form_Load() {
    showChoices();
    showState();
}

void FrmSteady::showChoices() {
    const auto& choices = steady_.choices();
    txtRich.Text = core::textOf(choices.RichAuthority.get());
    txtLean.Text = core::textOf(choices.LeanAuthority.get());
    chkCarry.Value = choices.Carry ? 1 : 0;
    for (int zone = 0; zone < txtDelay.count(); ++zone) {
        const double fixed = choices.FixedDelayMs.at(static_cast<std::size_t>(zone));
        txtDelay(zone).Text = fixed > 0.0 ? core::textOf(fixed) : std::string();
    }
}

// A box that the tuner has left shows what holds, not what was refused, or what it was before a script set it.
void FrmSteady::showTaken() {
    const auto show = [this](controls::TextBox& box, double number) {
        if (activeControl() != &box && core::val(box.Text.get()) != number) {
            box.Text = core::textOf(number);
        }
    };
    const auto& choices = steady_.choices();
    show(txtRich, choices.RichAuthority);
    show(txtLean, choices.LeanAuthority);
    for (int zone = 0; zone < txtDelay.count(); ++zone) {
        show(txtDelay(zone), choices.FixedDelayMs.at(static_cast<std::size_t>(zone)));
    }
    chkCarry.Value = choices.Carry ? 1 : 0;
}

// What is out of range is not taken. An empty box is 0.
void FrmSteady::take(const controls::TextBox& box, controls::Property<double>& number, double most) {
    const double given = core::val(box.Text.get());
    const bool good = given >= 0.0 && given <= most;
    lblNote.Caption = good ? std::string() : "0 to " + core::textOf(most);
    if (good) {
        number = given;
    }
}

void FrmSteady::showState() {
    lblState.Caption = steady_.state();
    lblReason.Caption = steady_.whyStopped();
    lblReason.Visible = !lblReason.Caption.get().empty();
    for (int zone = 0; zone < lblZone.count(); ++zone) {
        lblZone(zone).Caption = steady_.zoneWords(static_cast<std::size_t>(zone));
    }
    const int cell = tables_.MapPlace;
    const auto words = steady_.cellWords(cell);
    lblCell.Caption = words.empty() ? words : "Cell " + std::to_string(cell + 1) + ": " + words;
    showSamples();
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
