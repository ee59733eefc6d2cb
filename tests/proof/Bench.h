// A program on a virtual machine, connected to a virtual ECU on whose line things go wrong.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "EcuState.h"
#include "FaultyEcu.h"
#include "controls/Controls.h"
#include "program/Program.h"
#include "support/VirtualMachine.h"

namespace korvane::proof {

// The machine and the program of a tuner. Another one may take over its folder and preferences.
class Desk {
public:
    // Of the first program, or of the one that follows `killed`, with what the disk held at the kill.
    explicit Desk(FaultyEcu& device, const Desk* killed = nullptr);

    // What the disk holds now is what the next program finds: this one is killed.
    void noteDisk();

    // Opens the port and lets everything be read that a connect reads.
    void connect();
    void wait(int milliseconds) { machine.pump.wait(milliseconds); }

    // The newest loaded window of this name, and a control of it. They must exist.
    [[nodiscard]] controls::Window& window(std::string_view name);
    template <class Kind>
    [[nodiscard]] Kind& control(std::string_view windowName, std::string_view name, std::optional<int> index = {}) {
        for (auto* const control : window(windowName).controls()) {
            auto* const found = dynamic_cast<Kind*>(control);
            if (found != nullptr && control->name() == name && (!index || control->index() == index)) {
                return *found;
            }
        }
        throw std::logic_error(std::string(windowName) + " has no " + std::string(name));
    }
    void press(std::string_view windowName, std::string_view button) {
        control<controls::CommandButton>(windowName, button).press();
    }

    // All that the program tells the tuner now: captions without their digits (which are times), message boxes, what
    // the windows say of transfers, the state of the line.
    [[nodiscard]] std::string words();
    // What the windows say of sends that were read back.
    [[nodiscard]] std::string verification();

    support::VirtualMachine machine;
    program::Program program{machine.machine};

private:
    struct Disk {
        support::TempFolder folder;
        support::MemoryPreferences preferences;
    };
    std::optional<Disk> atKill_;
};

class Bench {
public:
    // `cells` are the first cells of the EEPROM; empty for one from the factory.
    Bench(int type, std::vector<std::uint8_t> cells);

    FaultyEcu device;
    std::unique_ptr<Desk> desk;

    // Something goes wrong from now on, until the operation has ended.
    void arm(const Try& what);
    // The operation has ended. All that is under way ends, and the cable, the power and the program come back.
    void settle();
    // The line is open again, and the windows are.
    void reconnect();

    // The newest restore point when the operation had begun: that of a disconnect comes behind it.
    [[nodiscard]] const std::string& point() const { return point_; }

    [[nodiscard]] const std::string& wordsAtEnd() const { return words_; }

    // The cells whose bytes the ECU had told the program, by reads of the EEPROM, of maps or of the misc block, when
    // arm() was called.
    [[nodiscard]] const CellSet& told() const { return told_; }
    // What the program said then of the sends that it had read back; empty if it has read none.
    [[nodiscard]] const std::string& verification() const { return verification_; }
    // What the ECU had when the operation had ended, before anything came back.
    [[nodiscard]] const EcuState& atEnd() const { return atEnd_; }

private:
    void struck(Fault fault);

    std::unique_ptr<platform::Alarm> unplug_;
    bool killed_ = false;
    std::string words_;
    std::string point_;
    std::string verification_;
    CellSet told_;
    EcuState atEnd_;
};

}  // namespace korvane::proof
