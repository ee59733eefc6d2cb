// The console in front of the whole program on a virtual machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "console/TestWindow.h"
#include "console/names/Registry.h"
#include "program/Program.h"
#include "support/TempFolder.h"

namespace korvane::console {

// Started; a connect does not read the settings, which would mix with what a test sends.
struct ProgramBench : ConsoleMachine {
    ProgramBench() {
        machine.folder = folder.path();
        program.emplace(machine);
        registerSharedTables(names, program->tables());
        registerMainWindow(names, program->frmSarn2());
        registerAnalyser(names, program->analyser());
        registerLog(names, program->clsTXTdata);
        registerMapTools(names, program->frm3Dmap(), program->tables());
        registerSettings(names, program->frmMisc());
        registerProcedures(names, {program->eeprom(), folder.path(), [this](double value, int series, int trend) {
                                       program->trends().pushTrendSample(value, series, trend);
                                   }});
        console.emplace(ConsoleContext{machine, dialogs, tap, names, nullptr, nullptr, errors,
                                       [this] { program->quit(); }, [this] { return program->ended(); }});
        program->connection().loadSettings = nullptr;
        program->start();
        static_cast<void>(run("messages"));
    }

    std::string run(std::string_view line) { return execute(*console, line); }

    support::TempFolder folder;
    std::optional<program::Program> program;
    std::optional<Console> console;
};

}  // namespace korvane::console
