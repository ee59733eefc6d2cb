// One restore of settings from its first byte to its last.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "keep/restore/RestoreJournal.h"
#include "keep/restore/StrangeCells.h"
#include "link/ConnectionPanel.h"
#include "link/ReadBack.h"
#include "platform/Machine.h"

namespace korvane::keep {

// All of it outlives its users.
struct RestoreSurroundings {
    platform::Machine& machine;
    core::SharedTables& tables;
    link::ConnectionPanel& connection;
    core::EepromAccess& eeprom;
};

// What is to be done.
struct RestoreTask {
    RestoreJournal journal;
    bool isNew = true;  // its bytes of before are not known yet
    // A new one takes over what an older one has left: its cells, with their bytes of before.
    std::optional<RestoreJournal> earlier = {};
    link::EepromCells known{};    // what the point knows of the EEPROM
    std::set<int> stays = {};     // cells of `earlier` that the point does not know: they stay as they are
    Leftovers left = {};          // of what ran before in this connection
    FoundBytes overwritten = {};  // strange cells that the user was told of and writes over
};

// Reads what the ECU has, notes in the journal what will be written, writes cell by cell, and reads all cells back. The
// journal is gone when they agree.
class RestoreWork {
public:
    // `line` belongs to this work alone.
    RestoreWork(const RestoreSurroundings& surroundings, const JournalFile& file, link::ReadBack& line)
        : in_(surroundings), file_(file), line_(line) {}

    // Called as it goes on: "Restoring: 3 of 12 settings written", 3, 12.
    std::function<void(std::string text, int done, int total)> progress;

    struct Outcome {
        bool agrees = false;
        std::string text;
        FoundBytes strange = {};  // why nothing was written
        Leftovers left = {};
        bool wrote = false;
    };
    // Of a new restore the bytes of before are read into the journal first, and cells that are as they should be leave
    // it. Nothing is written while the ECU has a strange cell that the task does not write over.
    [[nodiscard]] Outcome run(RestoreTask task);

    static constexpr int kPause = 125;  // ms behind a cell: its write in the ECU has ended by then

private:
    using Cells = std::vector<JournalCell>;

    void write(const RestoreTask& task);
    [[nodiscard]] FoundBytes lookUp();
    void requireExplained(const RestoreTask& task, const FoundBytes& now);
    void begin(const RestoreTask& task, const FoundBytes& now);
    // Whether a cell has to be written, by what the ECU has.
    [[nodiscard]] bool isDue(const JournalCell& cell, const FoundBytes& now) const;
    [[nodiscard]] Cells remaining(const FoundBytes& now);
    void writeCell(const JournalCell& cell);
    void compare();
    void addDifference(int address, std::uint8_t byte, std::uint8_t wanted);
    void lookForStrays(const RestoreTask& task);
    [[nodiscard]] std::optional<std::uint8_t> before(const RestoreTask& task, int address) const;
    void readMisc();
    [[nodiscard]] bool isInJournal(int address) const;
    [[nodiscard]] std::uint8_t read(int address);
    // As read(); an answer other than `expected` is asked for once more.
    [[nodiscard]] std::uint8_t reads(int address, std::uint8_t expected);
    void requireLine() const;
    void show(const char* what, std::size_t done, std::size_t total);
    [[nodiscard]] std::string stoppedText(const std::string& why) const;
    [[nodiscard]] std::string strangeText(const RestoreJournal& journal) const;
    [[nodiscard]] std::string nameOf(int address) const;

    const RestoreSurroundings& in_;
    const JournalFile& file_;
    link::ReadBack& line_;
    RestoreJournal journal_;
    link::EepromCells told_{};  // before the first write
    bool begun_ = false;        // the first byte to be written may have gone out
    FoundBytes strange_;
    Leftovers left_;
    std::string differences_;
    int differing_ = 0;
};

}  // namespace korvane::keep
