// Keeps the edits on the desk from being lost with the program, with a connection or without.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Object.h"
#include "core/history/MapHistory.h"
#include "keep/Keeper.h"
#include "keep/desk/DeskFile.h"
#include "keep/desk/UndoneDesks.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::keep {

// It sends nothing, and writes nothing before the first step of the history. From then on the desk is on the disk a few
// seconds behind each change, and when a window closes, unless the ECU has stored it or the last point has it. At the
// same times a point is made of what was undone or reverted. A file that can't be written stops nothing; the notice
// says so until it can.
class DeskKeeper : private controls::Observer {
public:
    // All of it outlives the object.
    DeskKeeper(platform::Machine& machine, Keeper& keeper, core::MapHistory& history);
    DeskKeeper(const DeskKeeper&) = delete;
    DeskKeeper& operator=(const DeskKeeper&) = delete;
    ~DeskKeeper() override;

    // What programs that did not end properly have left becomes points; the notice says so.
    void programBegins();
    // A proper end: a point has the edits then, and the file goes.
    void programEnds();
    // Before other maps take the place of those on the desk.
    void beforeReplacing(std::string_view what);

    static constexpr platform::Micros kDelay = 5 * platform::kMicrosPerSecond;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void edited();
    void save();
    void arm();
    void write(const Snapshot& known);
    void tell(const std::string& failure);
    void followUndone();
    void keepUndone(const Snapshot& known);
    [[nodiscard]] bool isUnstored(const Snapshot& desk) const;
    [[nodiscard]] bool isKept(const Snapshot& known) const;

    platform::Machine& machine_;
    Keeper& keeper_;
    core::MapHistory& history_;
    PointStore store_;
    DeskFile file_;
    UndoneDesks undone_;
    std::unique_ptr<platform::Alarm> alarm_;
    Snapshot written_;
    bool edited_ = false;
    bool usesLargeMaps_ = false;  // the tuner has changed cells that only large maps have
    bool waits_ = false;          // for the alarm
    bool failed_ = false;         // the last write
};

}  // namespace korvane::keep
