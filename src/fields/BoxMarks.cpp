#include "fields/BoxMarks.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::fields {

namespace {

constexpr std::string_view kOfAZero = "0.+- \t";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kOfANumber = "0123456789.";

}  // namespace

bool countsAsZero(std::string_view text) {
    const bool isZero =
        text.find_first_not_of(kOfAZero) == std::string_view::npos && text.find('0') != std::string_view::npos;
    return !isZero && core::val(text) == 0;
}

bool isPlainNumber(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return false;
    }
    text = text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
    text.remove_prefix(text.front() == '+' || text.front() == '-' ? 1 : 0);
    return text.find_first_not_of(kOfANumber) == std::string_view::npos &&
           text.find_first_of(kDigits) != std::string_view::npos && std::count(text.begin(), text.end(), '.') <= 1;
}

BoxMarks::~BoxMarks() {
    if (ecu_ != nullptr) {
        ecu_->removeObserver(*this);
    }
}

void BoxMarks::compareWith(link::EcuEeprom& ecu) {
    ecu_ = &ecu;
    ecu_->addObserver(*this);
}

void BoxMarks::propertyChanged(controls::Object&, const void*) {
    for (auto& [box, known] : boxes_) {
        look(*box, known);
    }
}

void BoxMarks::objectGone(const controls::Object&) {
    ecu_ = nullptr;
}

void BoxMarks::look(const controls::TextBox& box, Known& known) {
    const auto now = inEcu(known);
    if (now == known.seen) {
        return;
    }
    known.seen = now;
    if (now && now->known == link::Known::Told) {
        known.toldPast = known.cells->text(now->count);
        if (now->count == known.countOfBox) {
            confirmed(box);
        }
    }
    changed(&box);
}

std::optional<InEcu> BoxMarks::inEcu(const Known& known) const {
    return ecu_ != nullptr && known.cells ? known.cells->in(*ecu_) : std::nullopt;
}

std::optional<std::int32_t> BoxMarks::countIn(const Known& known) const {
    const auto now = inEcu(known);
    return now ? std::optional(now->count) : std::nullopt;
}

// A box that is empty because nothing has filled it yet shows no value that could be another.
std::optional<InEcu> BoxMarks::otherInEcu(const controls::TextBox& box, const Known& known) const {
    const bool isUnused = !known.wasHeard && !known.wasSaved && box.Text.get().empty();
    const auto now = inEcu(known);
    return now && now->count != known.countOfBox && !isUnused ? now : std::nullopt;
}

const BoxMarks::Known* BoxMarks::find(const controls::TextBox& box) const {
    const auto found = boxes_.find(&box);
    return found != boxes_.end() ? &found->second : nullptr;
}

void BoxMarks::heard(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end()) {
        found->second.heard = box.Text;
        found->second.wasHeard = true;
        found->second.wasSaved = false;
        found->second.sent.reset();
        found->second.toldPast.reset();
        found->second.countOfBox = countIn(found->second);
        changed(&box);
    }
}

void BoxMarks::sent(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end()) {
        found->second.sent = box.Text;
        found->second.wasSaved = true;
        found->second.countOfBox = countIn(found->second);
        changed(&box);
    }
}

void BoxMarks::confirmed(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end() && found->second.sent) {
        found->second.heard = *found->second.sent;
        found->second.wasHeard = true;
        found->second.sent.reset();
        found->second.countOfBox = countIn(found->second);
        changed(&box);
    }
}

Mark BoxMarks::of(const controls::TextBox& box) const {
    const Known* const known = find(box);
    if (known == nullptr || !known->isOfEcu) {
        return Mark::None;
    }
    if (const auto other = otherInEcu(box, *known)) {
        const Mark same = other->known == link::Known::Told ? Mark::None : Mark::Sent;
        return box.Text.get() == known->cells->text(other->count) ? same : Mark::Changed;
    }
    const std::string& ofBox = known->sent ? *known->sent : known->heard;
    if (box.Text.get() != ofBox) {
        return Mark::Changed;
    }
    if (known->wasSaved && !isPlainNumber(ofBox)) {
        return Mark::Misread;
    }
    return ofBox == known->heard ? Mark::None : Mark::Sent;
}

int BoxMarks::unsaved() const {
    return static_cast<int>(std::count_if(boxes_.begin(), boxes_.end(),
                                          [this](const auto& each) { return of(*each.first) == Mark::Changed; }));
}

bool BoxMarks::wasHeard(const controls::TextBox& box) const {
    const Known* const known = find(box);
    return known != nullptr && known->wasHeard;
}

bool BoxMarks::isTyped(const controls::TextBox& box, const Known& known) {
    return known.wasSaved || box.Text.get() != known.heard;
}

bool BoxMarks::isTypedZero(const controls::TextBox& box) const {
    const Known* const known = find(box);
    return known != nullptr && isTyped(box, *known) && countsAsZero(box.Text.get());
}

std::string BoxMarks::heardWords(const Known& known) {
    if (known.toldPast || known.wasHeard) {
        return "the ECU last sent " + known.toldPast.value_or(known.heard);
    }
    return "the ECU has sent no value";
}

std::string BoxMarks::standing(const controls::TextBox& box) const {
    const Mark mark = of(box);
    if (mark == Mark::None) {
        return {};
    }
    const Known& known = *find(box);
    if (mark == Mark::Misread && !known.sent) {
        return "Saved and read back";
    }
    if (mark != Mark::Changed) {
        return "Saved, not read back: " + heardWords(known);
    }
    if (const auto other = otherInEcu(box, known)) {
        return (other->known == link::Known::Told ? "The ECU has another value: " : "Another value was sent: ") +
               known.cells->text(other->count);
    }
    return "Not saved: " + (known.sent ? "the last save sent " + *known.sent : heardWords(known));
}

std::string BoxMarks::note(const controls::TextBox& box) const {
    std::string text = standing(box);
    const Known* const known = find(box);
    if (known != nullptr && isTyped(box, *known) && !isPlainNumber(box.Text.get())) {
        text += (text.empty() ? "Counts as " : ". Counts as ") + core::textOf(core::val(box.Text.get()));
    }
    return text;
}

}  // namespace korvane::fields
