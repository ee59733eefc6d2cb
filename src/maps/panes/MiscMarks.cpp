#include "maps/panes/MiscMarks.h"

#include "core/Numbers.h"
#include "maps/panes/MiscPane.h"

namespace korvane::maps {

namespace {

constexpr std::int32_t kIgnitionZero = 128;  // the offset's count at 0 degrees
constexpr double kIgnitionSteps = 10.0;

double shown(int box, std::int32_t number) {
    return box == kIgnitionOffset ? (number - kIgnitionZero) / kIgnitionSteps : number;
}

}  // namespace

MiscMarks::MiscMarks(MiscPane& pane, link::EcuMisc& ecu) : pane_(pane), ecu_(ecu) {
    ecu_.addObserver(*this);
    listen();
}

MiscMarks::~MiscMarks() {
    ecu_.removeObserver(*this);
}

void MiscMarks::propertyChanged(controls::Object&, const void*) {
    listen();
    changed(this);
}

// What is known stays when another connection has told nothing yet, as with the maps.
void MiscMarks::listen() {
    if (const auto& bytes = ecu_.bytes()) {
        known_ = valuesOf(*bytes);
    }
}

void MiscMarks::filled() {
    isFilled_ = true;
    changed(this);
}

void MiscMarks::heard(int box, std::int32_t number) {
    if (known_) {
        known_->numbers.at(static_cast<std::size_t>(box)) = number;
        changed(this);
    }
}

// The raw count of the ignition offset, which is what is sent, stands in the box's tool-tip; both have to agree.
bool MiscMarks::isNumberChanged(int box) const {
    auto& text = pane_.txtMisc(box);
    const std::int32_t number = known_->numbers.at(static_cast<std::size_t>(box));
    const bool sendsOther = box == kIgnitionOffset && core::val(text.ToolTipText.get()) != static_cast<double>(number);
    return sendsOther || core::val(text.Text.get()) != shown(box, number);
}

std::string MiscMarks::numberNote(int box) const {
    if (!isKnown() || !isNumberChanged(box)) {
        return {};
    }
    return "Not sent: the ECU has " + core::textOf(shown(box, known_->numbers.at(static_cast<std::size_t>(box))));
}

std::string MiscMarks::bitNote(int bit) const {
    if (!isKnown() || (pane_.CheckMisc(bit).Value == 1) == isTicked(known_->enabled, bit)) {
        return {};
    }
    return isTicked(known_->enabled, bit) ? "Not sent: ticked in the ECU" : "Not sent: not ticked in the ECU";
}

std::string MiscMarks::openingNote() const {
    const bool sendsLong = pane_.optINJMaxOpen(0).Value;
    if (!isKnown() || known_->opening == (sendsLong ? kOpen4ms4 : kOpen2ms2)) {
        return {};
    }
    const auto& code = known_->opening;
    const int option = code == kOpen4ms4 ? 0 : 1;
    return code == kOpen4ms4 || code == kOpen2ms2 ? "Not sent: the ECU has " + pane_.optINJMaxOpen(option).Caption.get()
                                                  : "Not sent: the ECU has code " + core::textOf(int{code});
}

int MiscMarks::count() const {
    int changed = openingNote().empty() ? 0 : 1;
    for (int box = 0; box < pane_.txtMisc.count(); ++box) {
        changed += numberNote(box).empty() ? 0 : 1;
    }
    for (int bit = 0; bit < pane_.CheckMisc.count(); ++bit) {
        changed += bitNote(bit).empty() ? 0 : 1;
    }
    return changed;
}

}  // namespace korvane::maps
