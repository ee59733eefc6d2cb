// What a restore of settings was about to do and how far it came, for as long as it is not complete: a small text file
// in the folder of the restore points, one for each kind of ECU. docs/file-formats.md has the format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keep/point/Snapshot.h"
#include "platform/DiskFlush.h"

namespace korvane::keep {

// By which an ECU is recognised: all that it tells of itself. Two with the same answer can't be told apart.
struct EcuKind {
    static constexpr int kAllFeatures = 0xFFFF;  // says nothing of an ECU

    int type = 0;
    int version = 0;  // thousandths
    int features = kAllFeatures;

    friend bool operator==(const EcuKind&, const EcuKind&) = default;
};

struct JournalCell {
    int address = 0;
    std::uint8_t before = 0;  // what the ECU had
    std::uint8_t point = 0;   // what the restore point has

    friend bool operator==(const JournalCell&, const JournalCell&) = default;
};

struct RestoreJournal {
    enum class Goal { Point, Before };

    EcuKind ecu;
    std::string pointName;  // of its file; one line
    platform::WallTime pointTime;
    std::string pointReason;         // one line
    Goal goal = Goal::Point;         // whose bytes are being written
    int written = 0;                 // cells that have been written for certain, in the order of `cells`
    std::vector<JournalCell> cells;  // in rising order of address

    [[nodiscard]] std::uint8_t wanted(const JournalCell& cell) const {
        return goal == Goal::Point ? cell.point : cell.before;
    }

    friend bool operator==(const RestoreJournal&, const RestoreJournal&) = default;
};

[[nodiscard]] std::string encodeJournal(const RestoreJournal& journal);
// All lines of a journal but the last, with the last one, which has their checksum.
[[nodiscard]] std::string sealedJournal(std::string_view lines);

// Either the journal, or in plain words what is wrong with the bytes; both empty where there is no file. One that was
// cut or changed at any byte is never taken for whole.
struct JournalFound {
    std::optional<RestoreJournal> journal;
    std::string damage;
};
[[nodiscard]] JournalFound decodeJournal(std::string_view bytes);

// Beside the restore points. A write replaces the file in one step: a program that is killed leaves the old one or the
// new one.
class JournalFile {
public:
    explicit JournalFile(std::filesystem::path folder, platform::DiskFlush toDisk = {})
        : folder_(std::move(folder)), toDisk_(std::move(toDisk)) {}

    [[nodiscard]] JournalFound load(const EcuKind& ecu) const;
    // In plain words why it was not written; empty if it was. The folder is made if need be. Before the first cell is
    // written a loss of power must not take the journal; later an older one does as well.
    [[nodiscard]] std::string save(const RestoreJournal& journal, bool flush = false) const;
    void remove(const EcuKind& ecu) const;

    [[nodiscard]] std::filesystem::path path(const EcuKind& ecu) const;

private:
    std::filesystem::path folder_;
    platform::DiskFlush toDisk_;
};

}  // namespace korvane::keep
