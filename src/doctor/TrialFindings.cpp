#include "doctor/TrialFindings.h"

#include <algorithm>

namespace korvane::doctor {

namespace {

using Asked = PortTrial::Asked;
using Weight = Finding::Weight;

constexpr const char* kTopic = "answer";

// "3.386" of 3386, as the main window shows it.
std::string versionText(int thousandths) {
    const std::string digits = std::to_string(1000 + thousandths % 1000).substr(1);
    return std::to_string(thousandths / 1000) + "." + digits;
}

std::string textOf(const Identity& identity) {
    const auto version = "firmware " + versionText(identity.version);
    return identity.type ? version + ", type " + std::to_string(*identity.type) : version;
}

bool has(const std::vector<Asked>& asked, Fate fate) {
    return std::any_of(asked.begin(), asked.end(), [&](const Asked& each) { return each.fate == fate; });
}

std::string speedsOf(const std::vector<Asked>& asked, Fate fate) {
    std::string text;
    for (const auto& each : asked) {
        if (each.fate == fate) {
            text += (text.empty() ? "" : ", ") + std::to_string(each.baud);
        }
    }
    return text + " baud";
}

Finding answered(const std::vector<Asked>& asked) {
    const auto first =
        std::find_if(asked.begin(), asked.end(), [](const Asked& each) { return each.fate == Fate::Answer; });
    return {kTopic, Weight::Good,
            "An ECU answers at " + speedsOf(asked, Fate::Answer) + " (" + textOf(*first->identity) +
                "): choose that speed and press Connect."};
}

}  // namespace

Finding findingOf(const PortTrial::Heard& heard) {
    if (heard.bytes == 0) {
        return {"arrives", Weight::Good, "Nothing arrives while nothing is asked, as it should be."};
    }
    const auto count = std::to_string(heard.bytes) + " bytes";
    if (heard.frames > 0) {
        return {"arrives", Weight::Hint,
                count + " with " + std::to_string(heard.frames) +
                    " frames arrive in a second and nobody asked: another program or display may ask the ECU, so take "
                    "it off the line."};
    }
    return {"arrives", Weight::Hint,
            count +
                " that are no frame arrive in a second and nobody asked: check the ground wire, and keep the "
                "cable away from the ignition."};
}

Finding findingOfFailure(const std::string& why) {
    return {"line", Weight::Fault, why};
}

std::string lineOf(const Asked& asked) {
    const auto line = std::to_string(asked.baud) + " baud: " + std::string(nameOf(asked.fate));
    return asked.identity ? line + ", " + textOf(*asked.identity) : line;
}

Finding verdictOf(const std::vector<Asked>& asked) {
    if (has(asked, Fate::Answer)) {
        return answered(asked);
    }
    if (has(asked, Fate::Echo)) {
        return {kTopic, Weight::Fault,
                "The request itself comes back: transmit and receive touch or are crossed, so check these two wires "
                "of the plug."};
    }
    if (has(asked, Fate::OtherFrame)) {
        return {kTopic, Weight::Fault,
                "A device answers at " + speedsOf(asked, Fate::OtherFrame) +
                    ", but does not say what it is: start it again and test once more."};
    }
    if (has(asked, Fate::Noise)) {
        return {kTopic, Weight::Fault,
                "Bytes arrive that nobody asked for, and no answer: check the ground wire, and that the cable leads "
                "to the ECU."};
    }
    if (has(asked, Fate::WrongSpeed)) {
        return {kTopic, Weight::Fault,
                "Something answers at " + speedsOf(asked, Fate::WrongSpeed) +
                    ", and no answer can be read: the ECU runs at another speed, or the levels of the adapter do not "
                    "fit it."};
    }
    return {kTopic, Weight::Fault,
            "Nothing answers at any speed: switch the ignition on, and check that transmit leads to receive and that "
            "the grounds are joined."};
}

}  // namespace korvane::doctor
