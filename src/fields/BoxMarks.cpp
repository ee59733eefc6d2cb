#include "fields/BoxMarks.h"

#include "core/Numbers.h"

namespace korvane::fields {

namespace {

constexpr std::string_view kOfAZero = "0.+- \t";

}  // namespace

bool countsAsZero(std::string_view text) {
    const bool isZero =
        text.find_first_not_of(kOfAZero) == std::string_view::npos && text.find('0') != std::string_view::npos;
    return !isZero && core::val(text) == 0;
}

const BoxMarks::Known* BoxMarks::find(const controls::TextBox& box) const {
    const auto found = boxes_.find(&box);
    return found != boxes_.end() ? &found->second : nullptr;
}

void BoxMarks::heard(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end()) {
        found->second.heard = box.Text;
        found->second.wasHeard = true;
        found->second.sent.reset();
        changed(&box);
    }
}

void BoxMarks::sent(const controls::TextBox& box) {
    if (const auto found = boxes_.find(&box); found != boxes_.end()) {
        found->second.sent = box.Text;
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
    return inEcu == known->heard ? Mark::None : Mark::Sent;
}

bool BoxMarks::wasHeard(const controls::TextBox& box) const {
    const Known* const known = find(box);
    return known != nullptr && known->wasHeard;
}

bool BoxMarks::isTypedZero(const controls::TextBox& box) const {
    const Known* const known = find(box);
    return known != nullptr && box.Text.get() != known->heard && countsAsZero(box.Text.get());
}

std::string BoxMarks::standing(const controls::TextBox& box) const {
    const Mark mark = of(box);
    if (mark == Mark::None) {
        return {};
    }
    const Known& known = *find(box);
    const std::string heard = known.wasHeard ? "the ECU last sent " + known.heard : "the ECU has sent no value";
    if (mark == Mark::Sent) {
        return "Saved, not read back: " + heard;
    }
    return "Not saved: " + (known.sent ? "the last save sent " + *known.sent : heard);
}

std::string BoxMarks::note(const controls::TextBox& box) const {
    std::string text = standing(box);
    if (isTypedZero(box)) {
        text += text.empty() ? "Counts as 0" : ". Counts as 0";
    }
    return text;
}

}  // namespace korvane::fields
