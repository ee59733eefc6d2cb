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
        changed(&box);
    }
}

void BoxMarks::sent(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end()) {
        found->second.sent = box.Text;
        found->second.wasSaved = true;
        changed(&box);
    }
}

void BoxMarks::confirmed(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end() && found->second.sent) {
        found->second.heard = *found->second.sent;
        found->second.wasHeard = true;
        found->second.sent.reset();
        changed(&box);
    }
}

Mark BoxMarks::of(const controls::TextBox& box) const {
    const Known* const known = find(box);
    if (known == nullptr || !known->isOfEcu) {
        return Mark::None;
    }
    const std::string& inEcu = known->sent ? *known->sent : known->heard;
    if (box.Text.get() != inEcu) {
        return Mark::Changed;
    }
    if (known->wasSaved && !isPlainNumber(inEcu)) {
        return Mark::Misread;
    }
    return inEcu == known->heard ? Mark::None : Mark::Sent;
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

std::string BoxMarks::standing(const controls::TextBox& box) const {
    const Mark mark = of(box);
    if (mark == Mark::None) {
        return {};
    }
    const Known& known = *find(box);
    if (mark == Mark::Misread && !known.sent) {
        return "Saved and read back";
    }
    const std::string heard = known.wasHeard ? "the ECU last sent " + known.heard : "the ECU has sent no value";
    if (mark != Mark::Changed) {
        return "Saved, not read back: " + heard;
    }
    return "Not saved: " + (known.sent ? "the last save sent " + *known.sent : heard);
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
