// What several targets need: a claim, a folder of their own, and a program on a machine in memory.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/Files.h"
#include "platform/Machine.h"
#include "platform/QueuedDialogs.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "platform/virtual/VirtualPump.h"
#include "program/Program.h"

namespace korvane::fuzz {

using Bytes = std::span<const std::uint8_t>;

inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// An empty folder for this run alone; gone with its owner.
class Folder {
public:
    Folder() : path_(platform::unusedName(std::filesystem::temp_directory_path(), "korvane-fuzz.")) {
        require(std::filesystem::create_directory(path_));
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    std::filesystem::path write(std::string_view name, Bytes content) const {
        const auto file = path_ / name;
        std::ofstream stream(file, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
        return file;
    }
    // An input must not see the files of the one before it.
    void empty() const {
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            std::filesystem::remove_all(entry.path());
        }
    }

private:
    std::filesystem::path path_;
};

// One for the whole run of a target, and empty for each input that asks for it.
inline const Folder& emptyFolder() {
    static const Folder folder;
    folder.empty();
    return folder;
}

// An input as a row of decisions; behind its end all bytes are zero.
class Script {
public:
    explicit Script(Bytes bytes) : rest_(bytes) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    std::uint8_t next() {
        const auto taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : taken.front();
    }
    // Fewer at the end.
    Bytes bytes(std::size_t count) {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }

private:
    Bytes rest_;
};

// The program with a line in memory and `device` at its other end; what it says about a folder without files is past.
struct ProgramRun {
    explicit ProgramRun(platform::LineDevice* device = nullptr) : line(pump, device) {
        program.start();
        static_cast<void>(dialogs.takeMessages());
    }

    const Folder& folder = emptyFolder();
    platform::VirtualPump pump;
    platform::MemoryLine line;
    platform::QueuedDialogs dialogs;
    platform::MemoryPreferences preferences;
    platform::MemoryLog log;
    controls::WindowList windows;
    platform::Machine machine{pump, line, dialogs, preferences, log, windows, folder.path(), '.', {}};
    program::Program program{machine};
};

}  // namespace korvane::fuzz
