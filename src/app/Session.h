// One run of the program on a given clock: machine, program and console put together as the options ask.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/EcuPort.h"
#include "app/Options.h"
#include "app/ReplyWriter.h"
#include "app/StrictRun.h"
#include "console/Console.h"
#include "console/ConsoleSession.h"
#include "console/names/Names.h"
#include "platform/FilePreferences.h"
#include "platform/QueuedDialogs.h"
#include "platform/StderrLog.h"
#include "platform/TappedLine.h"
#include "platform/virtual/MemoryLine.h"
#include "program/Program.h"

namespace korvane::app {

// What differs between the kinds of runs.
struct Surroundings {
    platform::EventPump& pump;
    // Makes the line to real ports; null where every port is a line in memory.
    std::function<std::unique_ptr<platform::SerialLine>(platform::PreferencesStore&)> makeRealLine;
    platform::Dialogs* shownDialogs = nullptr;  // null without a display
    console::Screenshots* screenshots = nullptr;
    std::optional<platform::Screen> screen;
    platform::DiskFlush toDisk;
};

class Session {
public:
    // Throws std::runtime_error with one line for the user when an option can't be met.
    Session(const Options& options, Surroundings surroundings);

    // Opens the main window, opens a file and connects if the options ask for it: a map window would read from an open
    // port what it has just loaded.
    void start();
    // Writes the files that are due at the end of a run. Returns an empty text, or one line for the user.
    [[nodiscard]] std::string finish();
    // A reply could not be written, or a strict run met an error.
    [[nodiscard]] bool failed() const { return replies_.failed() || (strict_ && strict_->failed()); }

    [[nodiscard]] program::Program& program() { return program_; }
    [[nodiscard]] console::ConsoleSession& commands() { return commands_; }
    [[nodiscard]] controls::WindowList& windows() { return windows_; }
    [[nodiscard]] platform::PreferencesStore& preferences() { return preferences_; }
    [[nodiscard]] platform::DebugLog& log() { return log_; }

private:
    [[nodiscard]] console::ConsoleContext makeContext(const Surroundings& surroundings);
    [[nodiscard]] platform::TappedLine::Inject injection();
    [[nodiscard]] std::optional<StrictRun> strictRun(const Options& options, platform::EventPump& pump);
    void answer(std::string_view reply);
    void startTrace(const std::filesystem::path& file);
    void registerNames();

    std::optional<int> connect_;
    std::optional<std::filesystem::path> shownFile_;
    std::filesystem::path folder_;
    platform::FilePreferences preferences_;
    std::unique_ptr<EcuPort> ecu_;
    std::unique_ptr<platform::MemoryLine> memoryLine_;
    std::unique_ptr<platform::SerialLine> realLine_;
    platform::TappedLine line_;
    std::optional<StrictRun> strict_;
    platform::QueuedDialogs dialogs_;
    platform::StderrLog log_;
    controls::WindowList windows_;
    platform::Machine machine_;
    program::Program program_;
    console::Names names_;
    console::Console console_;
    ReplyWriter replies_;
    console::ConsoleSession commands_;
};

// The file that holds the preferences, which may be missing.
[[nodiscard]] std::filesystem::path preferencesOf(const Options& options);

// Of the value of --ecu. Throws std::runtime_error with one line for the user.
[[nodiscard]] ecu::EcuSettings ecuSettings(const std::string& keys);

// The commands of a script file. Throws std::runtime_error if it can't be read.
[[nodiscard]] std::string readScript(const std::filesystem::path& file);

// Finishes the run; the exit status, with a line on standard error if it is not 0.
[[nodiscard]] int reportEnd(Session& session);

}  // namespace korvane::app
