// The folder of the restore points: one file for each, never removed unless somebody asks for it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keep/point/PointFile.h"
#include "platform/DiskFlush.h"

namespace korvane::keep {

struct PointEntry {
    std::string name;  // of its file, without the folder
    platform::WallTime time;
    std::string reason;
    EcuIdentity ecu;
    std::string note;    // what the tuner typed
    std::string damage;  // in plain words what is wrong with the file; empty if it is whole
};

// Several programs may use one folder. Nothing throws; a sentence is empty where all went well.
class PointStore {
public:
    // With a `toDisk`, a point or note that was written outlasts a loss of power. The folder is made with the first
    // point.
    explicit PointStore(std::filesystem::path folder, platform::DiskFlush toDisk = {});

    // Newest first; those whose time can't be read are last. A name that ends with ".point" is one, whatever it is.
    [[nodiscard]] std::vector<PointEntry> list() const;
    [[nodiscard]] Decoded<Snapshot> load(std::string_view name) const;
    // Names that add() has given, in the order in which the points were made, the newest first, whatever the clock was
    // set to: what a look for the newest point needs, with no file opened.
    [[nodiscard]] std::vector<std::string> names() const;
    // Whether the front of a file names this ECU. The rest of it is not read.
    [[nodiscard]] bool mayBeOf(std::string_view name, const EcuIdentity& ecu) const;

    struct Added {
        std::string name;     // empty if it was not written
        std::string failure;  // why not
    };
    // The file is there as a whole, or not at all.
    Added add(const Snapshot& point);
    // When points or notes were added or removed last; the same value while there is no folder.
    [[nodiscard]] std::filesystem::file_time_type lastChange() const;
    // With its note.
    std::string remove(std::string_view name);
    // The note is a file of its own beside the point, at most kLongestNote bytes; an empty text removes it.
    std::string setNote(std::string_view name, std::string_view text);

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    static constexpr std::size_t kLongestNote = 1000;

private:
    [[nodiscard]] std::string nameFor(const platform::WallTime& time);
    [[nodiscard]] std::optional<std::filesystem::file_time_type> markChange() const;
    void removeLeftovers();

    std::filesystem::path folder_;
    platform::DiskFlush toDisk_;
    bool cleaned_ = false;
    std::string newest_;  // the last name, when the folder had changed last at that time
    std::optional<std::filesystem::file_time_type> newestAt_;
};

}  // namespace korvane::keep
