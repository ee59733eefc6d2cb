#include "doctor/TrialFindings.h"

#include <algorithm>

#include "core/OneLine.h"
#include "platform/RuntimeError.h"

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
    const auto count =
        std::count_if(asked.begin(), asked.end(), [](const Asked& each) { return each.fate == Fate::Answer; });
    return {kTopic, Weight::Good,
            "An ECU answers at " + speedsOf(asked, Fate::Answer) + " (" + textOf(*first->identity) + "): choose " +
                (count == 1 ? "that speed" : "one of these speeds") + " and press Connect."};
}

// A speed at which the device does not run was not asked at.
Finding unanswered(const std::vector<Asked>& asked) {
    const auto refused = has(asked, Fate::Refused) ? speedsOf(asked, Fate::Refused) : std::string();
    if (!has(asked, Fate::Nothing)) {
        return {kTopic, Weight::Fault, "The device runs at none of the seven speeds: use another adapter."};
    }
    const auto where = refused.empty() ? "at any speed: " : "(the device itself does not run at " + refused + "): ";
    return {kTopic, Weight::Fault,
            "Nothing answers " + where +
                "switch the ignition on, and check that transmit leads to receive and that the grounds are joined."};
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

// Programs of other users show to root only. A refused speed leaves the others.
Finding findingOfFailure(const PortTrial& trial, const std::string& device) {
    if (trial.failureNumber() == platform::kErrorInUse) {
        return {"in-use", Weight::Fault,
                "A program that you cannot see has it open: find out which with \"sudo korvane-tuner --doctor " +
                    core::onOneLine(device) + "\", and close it."};
    }
    const bool isRefused = trial.failureNumber() == platform::kErrorSpeedRefused;
    return {"line", isRefused ? Weight::Hint : Weight::Fault, core::onOneLine(trial.failure())};
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
                    ", and no answer can be read: use an adapter with the levels of the ECU (TTL or RS-232), or give "
                    "the ECU one of the seven speeds."};
    }
    return unanswered(asked);
}

}  // namespace korvane::doctor
