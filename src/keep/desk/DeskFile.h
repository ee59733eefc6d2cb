// What is on the desk of a program that runs, on the disk: a restore point that becomes one if the program does not
// end.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "keep/point/PointStore.h"
#include "platform/FileHold.h"

namespace korvane::keep {

// In the folder "desk" beside the points: hexadecimal digits and ".desk". Each program has a file of its own, and holds
// a second one beside it that ends with ".lock": while it does, no other program takes the first. The file "untold" has
// the names of points of which nobody has been told, one in a line. Nothing throws; a sentence is empty where all went
// well.
class DeskFile {
public:
    // `store` outlives it.
    DeskFile(PointStore& store, platform::DiskFlush toDisk, platform::FileHold hold);

    std::string write(const Snapshot& desk);
    [[nodiscard]] bool isThere() const;
    // At a proper end, or where nothing has to be kept.
    void remove();

    struct Left {
        std::vector<std::string> points;  // their names
        std::string failure;              // why one was left as it is
    };
    // The files of programs that have not ended properly become points, with kUnfinished as their reason. What can't be
    // read is listed among the points with what is wrong with it. Ahead of them are those of which nobody has been told
    // yet, for the program to which they were given was killed as well.
    [[nodiscard]] Left takeLeft();
    // Somebody has been told.
    void told() const;

    static constexpr std::string_view kUnfinished = "unfinished: the program ended without closing";

private:
    [[nodiscard]] std::shared_ptr<const void> holdOf(std::string_view name) const;
    [[nodiscard]] std::vector<std::string> names() const;
    [[nodiscard]] std::string begin();
    [[nodiscard]] PointStore::Added take(const std::string& name);
    [[nodiscard]] PointStore::Added takeUnread(const std::string& name);
    void drop(const std::string& name) const;
    [[nodiscard]] std::vector<std::string> untold() const;
    void noteUntold(const std::vector<std::string>& points) const;

    PointStore& store_;
    std::filesystem::path folder_;
    platform::DiskFlush toDisk_;
    platform::FileHold hold_;
    std::string name_;  // of this program's file; empty before the first write
    std::shared_ptr<const void> held_;
};

}  // namespace korvane::keep
