#include "keep/restore/RestoreWork.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "keep/restore/SettingCells.h"
#include "link/Commands.h"
#include "platform/EventPump.h"

namespace korvane::keep {

namespace {

constexpr int kMiscPause = 500;  // ms, for the answer and for the windows that show it

// Ends the work from within; says why.
struct Stopped : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void require(link::ReadEnd end) {
    if (end != link::ReadEnd::Answered) {
        throw Stopped(std::string(link::wordsOf(end)));
    }
}

bool isBefore(const JournalCell& one, const JournalCell& other) {
    return one.address < other.address;
}

std::string settings(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " setting" : " settings");
}

}  // namespace

RestoreWork::Outcome RestoreWork::run(RestoreTask task) {
    journal_ = std::move(task.journal);
    left_.missed = task.left.missed;
    std::erase_if(journal_.cells,
                  [&](const JournalCell& cell) { return !isSetting(in_.tables.addresses, cell.address); });
    try {
        write(task);
        compare();
        if (left_.missed || differing_ > 0) {
            lookForStrays(task);
        }
        readMisc();
    } catch (const Stopped& end) {
        return {false, strange_.empty() ? stoppedText(end.what()) : end.what(), strange_, left_, begun_};
    }
    if (differing_ > 0) {
        return {false,
                settings(static_cast<std::size_t>(differing_)) + (differing_ == 1 ? " does" : " do") +
                    " not agree: " + differences_,
                {},
                left_,
                begun_};
    }
    file_.remove(journal_.ecu);
    return {true, journal_.cells.empty() ? "Nothing to restore: the ECU has these settings."
                                         : "Restored: " + settings(journal_.cells.size()) + " read back, all agree."};
}

void RestoreWork::write(const RestoreTask& task) {
    const auto now = lookUp();
    told_ = in_.connection.ecuEeprom.cells();
    requireExplained(task, now);
    if (task.isNew) {
        begin(task, now);
    }
    const auto cells = remaining(now);
    if (journal_.cells.empty()) {
        return;
    }
    // Behind the look-up: the restore point of this moment has what is about to be overwritten.
    in_.eeprom.announceStore("restore");
    if (const auto failure = file_.save(journal_, true); !failure.empty()) {
        throw Stopped(failure);
    }
    for (const auto& cell : cells) {
        writeCell(cell);
        show("written", static_cast<std::size_t>(journal_.written), journal_.cells.size());
    }
}

FoundBytes RestoreWork::lookUp() {
    FoundBytes now;
    for (const auto& cell : journal_.cells) {
        now[cell.address] = read(cell.address);
        show("looked up", now.size(), journal_.cells.size());
    }
    return now;
}

// What an older restore has left may be of another ECU, too.
void RestoreWork::requireExplained(const RestoreTask& task, const FoundBytes& now) {
    const bool resumes = !task.isNew;
    if (!resumes && !task.earlier) {
        return;
    }
    const auto& journal = resumes ? journal_ : *task.earlier;
    auto strange = strangeCells(journal, now, task.left);
    if (strange.empty() || (resumes && strange == task.overwritten)) {
        return;
    }
    strange_ = std::move(strange);
    throw Stopped(strangeText(journal));
}

void RestoreWork::begin(const RestoreTask& task, const FoundBytes& now) {
    FoundBytes before = now;
    for (const auto& cell : task.earlier ? task.earlier->cells : Cells()) {
        before[cell.address] = cell.before;
    }
    const auto isEarlier = [&](int address) {
        return task.earlier && std::any_of(task.earlier->cells.begin(), task.earlier->cells.end(),
                                           [address](const auto& cell) { return cell.address == address; });
    };
    for (auto& cell : journal_.cells) {
        cell.before = before.at(cell.address);
        cell.point = task.stays.contains(cell.address) ? now.at(cell.address) : cell.point;
    }
    std::erase_if(journal_.cells, [&](const auto& cell) { return !isEarlier(cell.address) && !isDue(cell, now); });
}

bool RestoreWork::isDue(const JournalCell& cell, const FoundBytes& now) const {
    const auto wanted = journal_.wanted(cell);
    return now.at(cell.address) != wanted ||
           runsOnAnother(in_.tables.addresses, in_.connection.ecuMisc.bytes(), cell.address, wanted);
}

RestoreWork::Cells RestoreWork::remaining(const FoundBytes& now) {
    Cells cells;
    std::copy_if(journal_.cells.begin(), journal_.cells.end(), std::back_inserter(cells),
                 [&](const auto& cell) { return isDue(cell, now); });
    journal_.written = static_cast<int>(journal_.cells.size() - cells.size());
    return cells;
}

// A cell counts when the ECU has told that it has it. Where the journal can't be written any more, it still has every
// cell.
void RestoreWork::writeCell(const JournalCell& cell) {
    requireLine();
    begun_ = true;
    left_.inFlight = cell.address;
    const auto wanted = journal_.wanted(cell);
    const bool shows = told_.at(static_cast<std::size_t>(cell.address)).byte != wanted;
    const bool missedBefore = std::exchange(left_.missed, true);
    in_.eeprom.writeCell(core::toInt16(cell.address), wanted);
    in_.machine.pump.wait(kPause);
    if (reads(cell.address, wanted) == wanted) {
        ++journal_.written;
        left_.missed = missedBefore || !shows;
        static_cast<void>(file_.save(journal_));
    }
    left_.inFlight.reset();
}

void RestoreWork::compare() {
    std::size_t done = 0;
    for (const auto& cell : journal_.cells) {
        const auto wanted = journal_.wanted(cell);
        if (const auto byte = reads(cell.address, wanted); byte != wanted) {
            addDifference(cell.address, byte, wanted);
        }
        show("read back", ++done, journal_.cells.size());
    }
}

void RestoreWork::addDifference(int address, std::uint8_t byte, std::uint8_t wanted) {
    ++differing_;
    left_.bytes[address] = byte;
    differences_ += (differences_.empty() ? "" : "; ") + nameOf(address) + " is " + std::to_string(byte) + ", not " +
                    std::to_string(wanted);
}

// A byte that was damaged on the line may have gone to another address. What was there before joins the journal, so
// that the next run writes it back, whichever way it goes.
void RestoreWork::lookForStrays(const RestoreTask& task) {
    auto cells = journal_.cells;
    for (int address = 0; address <= kLastSetting; ++address) {
        const auto byte = before(task, address);
        if (!byte) {
            continue;
        }
        if (const auto now = reads(address, *byte); now != *byte) {
            addDifference(address, now, *byte);
            cells.push_back({address, *byte, *byte});
        }
    }
    left_.missed = false;
    std::sort(cells.begin(), cells.end(), isBefore);
    journal_.cells = std::move(cells);
    if (const auto failure = file_.save(journal_, true); !failure.empty()) {
        throw Stopped(failure);
    }
}

// The boxes of the open map window, too, have what was before: their next send would write it over what was restored.
void RestoreWork::readMisc() {
    const int first = in_.tables.addresses.RPM_LIMIT_LOW_OFF;
    const auto isMisc = [first](const JournalCell& cell) {
        return cell.address >= first && cell.address < first + static_cast<int>(MiscBytes().size());
    };
    if (begun_ && !line_.interruption() && std::any_of(journal_.cells.begin(), journal_.cells.end(), isMisc)) {
        in_.connection.diversion.askedOrdinarily({link::kAskMiscBlock});
        in_.connection.MSComm1.Output(link::kAskMiscBlock);
        in_.machine.pump.wait(kMiscPause);
    }
}

// Of a setting that is not in the journal: what the ECU told before the first write. A cell of which it told nothing
// was as in the point, or it would be in the journal.
std::optional<std::uint8_t> RestoreWork::before(const RestoreTask& task, int address) const {
    const auto at = static_cast<std::size_t>(address);
    if (!isSetting(in_.tables.addresses, address) || isInJournal(address)) {
        return {};
    }
    if (told_.at(at).known == link::Known::Told) {
        return told_.at(at).byte;
    }
    return task.known.at(at).known == link::Known::No ? std::nullopt : std::optional(task.known.at(at).byte);
}

bool RestoreWork::isInJournal(int address) const {
    return std::any_of(journal_.cells.begin(), journal_.cells.end(),
                       [address](const JournalCell& cell) { return cell.address == address; });
}

std::uint8_t RestoreWork::reads(int address, std::uint8_t expected) {
    std::uint8_t byte = 0;
    require(line_.cell(in_.eeprom, address, expected, byte));
    return byte;
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

std::string RestoreWork::strangeText(const RestoreJournal& journal) const {
    constexpr std::size_t kMostNames = 12;
    const auto count = strange_.size();
    std::string text = "Nothing was written. " + settings(count) + (count == 1 ? " is" : " are") +
                       " neither as before the restore that was not completed nor as its point has " +
                       (count == 1 ? "it: " : "them: ");
    std::size_t named = 0;
    for (const auto& [address, before, point] : journal.cells) {
        if (const auto found = strange_.find(address); found != strange_.end() && ++named <= kMostNames) {
            text += (named == 1 ? "" : "; ") + nameOf(address) + " is " + std::to_string(found->second) + ", not " +
                    std::to_string(before) + " or " + std::to_string(point);
        }
    }
    return text + (count > kMostNames ? "; and " + std::to_string(count - kMostNames) + " more" : "") +
           ". This may be another ECU of this kind, or somebody has changed them.";
}

std::string RestoreWork::nameOf(int address) const {
    const auto& name = core::checked(in_.tables.EEParams, address).name;
    return name.empty() ? "address " + std::to_string(address) : name + " (" + std::to_string(address) + ")";
}

}  // namespace korvane::keep
