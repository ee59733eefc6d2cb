#include "doctor/PortFindings.h"

#include <algorithm>
#include <string>

#include "core/OneLine.h"

namespace korvane::doctor {

namespace {

using platform::PortFacts;
using Weight = Finding::Weight;

constexpr int kBestLatency = 1;  // ms

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

std::string plugInOrTake(const PortFacts& facts) {
    if (facts.others.empty()) {
        return ": plug the adapter in and test again.";
    }
    const std::string choose = facts.others.size() == 1 ? "choose " : "choose one of ";
    return ": plug the adapter in, or " + choose + joined(facts.others) + ".";
}

Finding deviceOf(const PortFacts& facts) {
    switch (facts.kind) {
        case PortFacts::Kind::InMemory:
            return {"device", Weight::Good, "The port leads to " + facts.device + " and to no device."};
        case PortFacts::Kind::NoDevice:
            return {"device", Weight::Fault, "No serial device stands for this port" + plugInOrTake(facts)};
        case PortFacts::Kind::Missing:
            return {"device", Weight::Fault, "There is no device " + facts.device + plugInOrTake(facts)};
        case PortFacts::Kind::NotSerial:
            return {"device", Weight::Fault,
                    facts.device + " is no serial device: name one such as /dev/ttyUSB0 instead."};
        case PortFacts::Kind::Serial:
            break;
    }
    return {"device", Weight::Good,
            facts.device + " is there; it belongs to " + facts.owner + " and the group " + facts.group + "."};
}

std::string rightOf(const PortFacts& facts) {
    switch (facts.right) {
        case PortFacts::Right::Root:
            return "as root";
        case PortFacts::Right::Owner:
            return "as its owner";
        case PortFacts::Right::Group:
            return "as a member of its group " + facts.group;
        case PortFacts::Right::Everyone:
            return "as everybody may";
        case PortFacts::Right::List:
            break;
    }
    return facts.isForSeat ? "because you sit at the screen (uaccess)" : "because its access list names you";
}

std::string joinGroup(const PortFacts& facts) {
    return "join its group with \"sudo usermod -aG " + facts.group + " $USER\", then log out and in again";
}

Finding permissionOf(const PortFacts& facts) {
    const std::string denied = "You may not open " + facts.device + ": ";
    switch (facts.access) {
        case PortFacts::Access::AtNextLogin:
            return {
                "permission", Weight::Fault,
                denied + "you have joined the group " + facts.group + " since you logged in, so log out and in again."};
        case PortFacts::Access::ByGroup:
            return {"permission", Weight::Fault,
                    denied +
                        (facts.isForSeat ? "only who sits at the screen may (uaccess), so log in there, or " : "") +
                        joinGroup(facts) + "."};
        case PortFacts::Access::Nobody:
            return {"permission", Weight::Fault,
                    denied + "its group " + facts.group +
                        " may not either, so make it yours until it is plugged in again with \"sudo chown $USER " +
                        facts.device + "\"."};
        case PortFacts::Access::Allowed:
            break;
    }
    return {"permission", Weight::Good, "You may open " + facts.device + ", " + rightOf(facts) + "."};
}

std::string nameOf(const platform::RunningProgram& program) {
    return program.name + " (process " + std::to_string(program.process) + ")";
}

Finding usersOf(const PortFacts& facts) {
    if (facts.users.empty()) {
        return {"in-use", Weight::Good, "No other program that you can see has it open."};
    }
    std::vector<std::string> names;
    std::transform(facts.users.begin(), facts.users.end(), std::back_inserter(names), nameOf);
    std::string kill = "kill";
    for (const auto& user : facts.users) {
        kill += " " + std::to_string(user.process);
    }
    return {"in-use", Weight::Fault,
            "It is open in " + joined(names) + ": close " + (names.size() == 1 ? "that program" : "these programs") +
                ", or end " + (names.size() == 1 ? "it" : "them") + " with \"" + kill + "\"."};
}

Finding modemManagerOf(const PortFacts& facts) {
    if (!facts.modemManager) {
        return {"modem-manager", Weight::Good, "No modem manager will send anything to it."};
    }
    return {"modem-manager", Weight::Hint,
            nameOf(*facts.modemManager) +
                " runs and sends to adapters that are plugged in: wait half a minute before you connect, or stop it "
                "with \"sudo systemctl stop ModemManager\"."};
}

Finding adapterOf(const PortFacts& facts) {
    if (!facts.adapter) {
        return {"adapter", Weight::Good, "It is no USB adapter, but a port of the computer or of a program."};
    }
    const auto& adapter = *facts.adapter;
    const std::string driver = adapter.driver.empty() ? "" : ", driver " + adapter.driver;
    const std::string name = adapter.name.empty() ? "a USB adapter without a name" : adapter.name;
    return {"adapter", Weight::Good, "The adapter is " + name + " (" + adapter.numbers + driver + ")."};
}

Finding latencyOf(const platform::UsbAdapter& adapter) {
    const auto milliseconds = std::to_string(*adapter.latency) + " ms";
    if (*adapter.latency <= kBestLatency) {
        return {"latency", Weight::Good, "The adapter holds bytes back for " + milliseconds + " at most."};
    }
    return {"latency", Weight::Hint,
            "The adapter holds bytes back for up to " + milliseconds +
                ", which makes each poll slower: set 1 ms with \"echo 1 | sudo tee " + adapter.latencyFile + "\"."};
}

}  // namespace

std::vector<Finding> findingsOf(const PortFacts& facts) {
    std::vector<Finding> findings{deviceOf(facts)};
    if (facts.kind == PortFacts::Kind::Serial) {
        findings.push_back(permissionOf(facts));
        findings.push_back(usersOf(facts));
        findings.push_back(modemManagerOf(facts));
        findings.push_back(adapterOf(facts));
    }
    if (facts.kind == PortFacts::Kind::Serial && facts.adapter && facts.adapter->latency) {
        findings.push_back(latencyOf(*facts.adapter));
    }
    // Names of devices and programs are any bytes.
    for (auto& finding : findings) {
        finding.text = core::onOneLine(finding.text);
    }
    return findings;
}

bool mayWork(const std::vector<Finding>& findings) {
    return std::none_of(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.weight == Weight::Fault; });
}

}  // namespace korvane::doctor
