#include "keep/restore/RestoreWork.h"

#include <stdexcept>
#include <utility>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "keep/restore/SettingCells.h"
#include "platform/EventPump.h"

namespace korvane::keep {

namespace {

// Ends the work from within; says why.
struct Stopped : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void require(link::ReadEnd end) {
    if (end != link::ReadEnd::Answered) {
        throw Stopped(std::string(link::wordsOf(end)));
    }
}

std::string settings(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " setting" : " settings");
}

}  // namespace

RestoreWork::Outcome RestoreWork::run(RestoreJournal journal, bool isNew) {
    journal_ = std::move(journal);
    std::erase_if(journal_.cells,
                  [&](const JournalCell& cell) { return !isSetting(in_.tables.addresses, cell.address); });
    try {
        write(isNew);
        compare();
    } catch (const Stopped& end) {
        return {false, stoppedText(end.what())};
    }
    if (differing_ > 0) {
        return {false, settings(static_cast<std::size_t>(differing_)) + (differing_ == 1 ? " does" : " do") +
                           " not agree: " + differences_};
    }
    file_.remove(journal_.ecu);
    return {true, journal_.cells.empty() ? "Nothing to restore: the ECU has these settings."
                                         : "Restored: " + settings(journal_.cells.size()) + " read back, all agree."};
}

void RestoreWork::write(bool isNew) {
    const auto cells = remaining(isNew);
    if (journal_.cells.empty()) {
        return;
    }
    if (const auto failure = file_.save(journal_); !failure.empty()) {
        throw Stopped(failure);
    }
    for (const auto& cell : cells) {
        writeCell(cell);
        show("written", static_cast<std::size_t>(journal_.written), journal_.cells.size());
    }
}

RestoreWork::Cells RestoreWork::remaining(bool isNew) {
    Cells cells;
    std::size_t done = 0;
    for (auto cell : journal_.cells) {
        const auto byte = read(cell.address);
        cell.before = isNew ? byte : cell.before;
        if (byte != journal_.wanted(cell)) {
            cells.push_back(cell);
        }
        show("looked up", ++done, journal_.cells.size());
    }
    if (isNew) {
        journal_.cells = cells;
    }
    journal_.written = static_cast<int>(journal_.cells.size() - cells.size());
    return cells;
}

// A cell counts when the pause behind it is over. Where the journal can't be written any more, it still has every cell.
void RestoreWork::writeCell(const JournalCell& cell) {
    requireLine();
    begun_ = true;
    in_.eeprom.writeCell(core::toInt16(cell.address), journal_.wanted(cell));
    in_.machine.pump.wait(kPause);
    requireLine();
    ++journal_.written;
    static_cast<void>(file_.save(journal_));
}

void RestoreWork::compare() {
    std::size_t done = 0;
    for (const auto& cell : journal_.cells) {
        const auto wanted = journal_.wanted(cell);
        std::uint8_t byte = 0;
        require(line_.cell(in_.eeprom, cell.address, wanted, byte));
        if (byte != wanted) {
            ++differing_;
            differences_ += (differences_.empty() ? "" : "; ") + nameOf(cell.address) + " is " + std::to_string(byte) +
                            ", not " + std::to_string(wanted);
        }
        show("read back", ++done, journal_.cells.size());
    }
}

std::uint8_t RestoreWork::read(int address) {
    std::uint8_t byte = 0;
    require(line_.cell(in_.eeprom, address, byte));
    return byte;
}

void RestoreWork::requireLine() const {
    require(line_.interruption().value_or(link::ReadEnd::Answered));
}

void RestoreWork::show(const char* what, std::size_t done, std::size_t total) {
    if (progress) {
        progress("Restoring: " + std::to_string(done) + " of " + settings(total) + " " + what, journal_.written,
                 static_cast<int>(total));
    }
}

std::string RestoreWork::stoppedText(const std::string& why) const {
    if (!begun_ && journal_.written == 0) {
        return "Nothing was written: " + why + ".";
    }
    return "Stopped: " + why + ". " + std::to_string(journal_.written) + " of " + settings(journal_.cells.size()) +
           " written.";
}

std::string RestoreWork::nameOf(int address) const {
    const auto& name = core::checked(in_.tables.EEParams, address).name;
    return name.empty() ? "address " + std::to_string(address) : name + " (" + std::to_string(address) + ")";
}

}  // namespace korvane::keep
