#include "app/Session.h"

#include <iostream>
#include <stdexcept>
#include <unistd.h>

#include "app/OneLine.h"
#include "app/ProgramFolder.h"
#include "console/names/Registry.h"
#include "platform/Files.h"
#include "platform/qt/FileHold.h"

namespace korvane::app {

namespace {

// A trial on the virtual ECU leaves the user's own choices alone, unless it names their file.
platform::FilePreferences::Writes writesOf(const Options& options) {
    using Writes = platform::FilePreferences::Writes;
    const bool own = !options.preferences && !options.folder;
    return own && options.ecu ? Writes::ForThisRun : Writes::IntoTheFile;
}

void tellOfPreferences(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        complain("the preferences are not kept: " + file.string() + " is no file");
    }
}

}  // namespace

std::filesystem::path preferencesOf(const Options& options) {
    if (options.preferences) {
        return *options.preferences;
    }
    return options.folder ? *options.folder / "preferences.ini" : defaultPreferences();
}

ecu::EcuSettings ecuSettings(const std::string& keys) {
    ecu::EcuSettings settings;
    if (const auto problem = ecu::parseKeyList(settings, keys); !problem.empty()) {
        throw std::runtime_error("--ecu: " + problem);
    }
    return settings;
}

Session::Session(const Options& options, Surroundings surroundings)
    : connect_(options.connect),
      shownFile_(options.file),
      folder_(options.folder ? *options.folder : defaultFolder()),
      preferences_(preferencesOf(options), writesOf(options)),
      ecu_(options.ecu && *options.ecu != "none"
               ? std::make_unique<EcuPort>(ecuSettings(*options.ecu), surroundings.pump)
               : nullptr),
      memoryLine_(options.ecu ? std::make_unique<platform::MemoryLine>(surroundings.pump, ecu_.get()) : nullptr),
      realLine_(memoryLine_ ? nullptr : surroundings.makeRealLine(preferences_)),
      line_(memoryLine_ ? static_cast<platform::SerialLine&>(*memoryLine_) : *realLine_, surroundings.pump,
            injection()),
      strict_(strictRun(options, surroundings.pump)),
      dialogs_(strict_ ? &*strict_ : surroundings.shownDialogs),
      machine_{surroundings.pump,
               line_,
               dialogs_,
               preferences_,
               log_,
               windows_,
               folder_,
               options.decimal ? *options.decimal : systemDecimal(),
               surroundings.screen.value_or(platform::Screen{}),
               surroundings.toDisk,
               platform::holdFile},
      program_(machine_),
      console_(makeContext(surroundings)),
      replies_(STDOUT_FILENO),
      commands_(console_, [this](std::string_view reply) { answer(reply); }) {
    if (ecu_) {
        ecu_->setLine(*memoryLine_);
    }
    if (options.trace) {
        startTrace(*options.trace);
    }
    tellOfPreferences(preferencesOf(options));
    registerNames();
}

// Only a line in memory without a device takes bytes from a script.
platform::TappedLine::Inject Session::injection() {
    if (memoryLine_ && !ecu_) {
        return [this](auto bytes) { memoryLine_->inject(bytes); };
    }
    return {};
}

std::optional<StrictRun> Session::strictRun(const Options& options, platform::EventPump& pump) {
    if (!options.strict) {
        return std::nullopt;
    }
    return std::optional<StrictRun>(
        std::in_place, pump, [this] { program_.quit(); }, complain);
}

void Session::answer(std::string_view reply) {
    replies_.write(reply);
    if (strict_) {
        strict_->hear(reply);
    }
}

void Session::startTrace(const std::filesystem::path& file) {
    if (!line_.traceTo(file, [] { complain("--trace: the file can't be written any more"); })) {
        throw std::runtime_error("--trace: " + file.string() + " can't be written");
    }
}

void Session::start() {
    program_.start();
    if (shownFile_) {
        program_.openFile(*shownFile_);
    }
    if (connect_) {
        program_.connectTo(*connect_);
    }
}

std::string Session::finish() {
    return ecu_ ? ecu_->finish() : std::string();
}

console::ConsoleContext Session::makeContext(const Surroundings& surroundings) {
    return {machine_,
            dialogs_,
            line_,
            names_,
            ecu_.get(),
            surroundings.screenshots,
            std::cerr,
            [this] { program_.quit(); },
            [this] { return program_.ended(); }};
}

void Session::registerNames() {
    console::registerSharedTables(names_, program_.tables());
    console::registerMainWindow(names_, program_.frmSarn2());
    console::registerAnalyser(names_, program_.analyser());
    console::registerSteadyAgent(names_, program_.steadyAgent(), [this] { return program_.mapGeometry(); });
    console::registerLog(names_, program_.clsTXTdata);
    console::registerMapTools(names_, program_.frm3Dmap(), program_.tables());
    console::registerHistory(names_, program_.undo());
    console::registerSettings(names_, program_.frmMisc());
    console::registerRestorePoints(names_, program_.restorePoints().context(),
                                   [this] { program_.restorePoints().open(); });
    console::registerComparison(names_, [this](const keep::Source& left, const keep::Source& right) {
        program_.comparisons().open(left, right);
    });
    console::registerRestore(names_, program_.restoreRun());
    console::registerProcedures(names_, {program_.eeprom(), folder_, [this](double value, int series, int trend) {
                                             program_.trends().pushTrendSample(value, series, trend);
                                         }});
}

std::string readScript(const std::filesystem::path& file) {
    auto commands = platform::readFile(file, kLargestScript);
    if (!commands) {
        throw std::runtime_error("--script: " + file.string() + " can't be read");
    }
    return *std::move(commands);
}

int reportEnd(Session& session) {
    const auto problem = session.finish();
    if (!problem.empty()) {
        complain(problem);
    }
    return problem.empty() && !session.failed() ? 0 : 1;
}

}  // namespace korvane::app
