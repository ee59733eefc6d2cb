// Writes the settings of a restore point to the ECU, cell by cell, and reads them back.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "keep/point/PointStore.h"
#include "keep/point/Snapshot.h"
#include "keep/restore/RestoreWork.h"
#include "keep/restore/SettingCells.h"
#include "link/FrameWitness.h"

namespace korvane::keep {

// A setting is a cell of the EEPROM that keeps no map, at 0 to 2998. What the point does not know is left as it is.
// One restore at a time; it sends nothing unless it is called. For views and scripts: the properties, "text", "offer",
// "running", "done" and "total".
class RestoreRun : public controls::Object, private link::FrameWitness, private controls::Observer {
public:
    using Surroundings = RestoreSurroundings;

    // Journals are in `folder`, beside the points.
    RestoreRun(const Surroundings& surroundings, std::filesystem::path folder);
    ~RestoreRun() override;

    // What runs or ran last, in words: "Restoring: 3 of 12 settings written", "Restored: 12 settings written and read
    // back", "Stopped: the ECU restarted. 3 of 12 settings written". Each cell that does not agree is named, also one
    // that a damaged write has hit by mistake.
    controls::Property<std::string> Text{*this};
    // What a restore that was not completed has left, for the ECU that has just told its type; empty if nothing.
    controls::Property<std::string> Offer{*this};
    controls::Property<bool> Running{*this};
    controls::Property<int> Done{*this}, Total{*this};  // cells that were written, of those to be written

    // Why the point can't be restored now, in a sentence; empty if it can.
    [[nodiscard]] std::string refusal(const Snapshot& point) const;
    // What a restore would have to write, as far as is known without asking.
    [[nodiscard]] std::vector<SettingChange> changes(const Snapshot& point) const;

    // These return when all is over, and events run meanwhile; true if every cell was read back as it should be. A
    // refusal is the text then. `pointName` is the name of the point's file. What the ECU has is read first: of a cell
    // that is to be overwritten, the old byte is always known. They stop when the port is closed, the ECU restarts or
    // does not answer, the main window is closed, or stop() is called; what was written until then stays, and is
    // offered.
    bool restore(const Snapshot& point, const std::string& pointName);
    // A restore that was not completed is taken over by a new one: the way back leads to what the ECU had before the
    // first of them. One whose journal can't be used, or does not fit the ECU, has to be ended first.
    //
    // Go on with what a restore has left, or write the old bytes back. Nothing happens without an offer. Where the ECU
    // has cells that the journal can't explain, the first call names them and writes nothing; the next one in the same
    // connection writes over them.
    bool goOn();
    bool goBack();
    // Whether the next goOn() or goBack() writes over cells that have been named.
    [[nodiscard]] bool overwritesNext() const { return !strange_.empty(); }
    void stop();
    // The journal is removed, damaged or not: the ECU stays as it is.
    void forget();

    // What the offer is about; nothing if there is none, or if its journal is damaged.
    [[nodiscard]] const std::optional<RestoreJournal>& interrupted() const { return interrupted_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

private:
    [[nodiscard]] std::string refusalNow() const;
    bool resume(RestoreJournal::Goal goal);
    void takeOver(const Snapshot& point, RestoreTask& task) const;
    bool run(RestoreTask task);
    // What the journal of this ECU offers.
    void look();
    void offer(const std::string& text);
    // Ends the offer when the ECU has told that it has the settings of one side; of an ECU that may be another one of
    // this kind the offer says so.
    void endWhenDone();

    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void propertyChanged(controls::Object& object, const void* property) override;

    Surroundings in_;
    JournalFile file_;
    PointStore store_;
    std::optional<EcuKind> ecu_;  // that has told its type in this connection
    std::optional<RestoreJournal> interrupted_;
    FoundBytes strange_;             // named to the user
    std::optional<Leftovers> left_;  // of this connection, if a restore has run in it
    bool isLeft_ = false;            // the ECU is the one on which the restore was not completed
    bool stopped_ = false;
};

}  // namespace korvane::keep
