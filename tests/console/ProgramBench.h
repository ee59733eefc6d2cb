// The console in front of the whole program on a virtual machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "console/TestWindow.h"
#include "console/names/Registry.h"
#include "program/Program.h"

namespace korvane::console {

// Started; a connect does not read the settings, which would mix with what a test sends.
struct ProgramBench : ConsoleMachine {
    ProgramBench() {
        program.emplace(tapped);
        registerSharedTables(names, program->tables());
        registerMainWindow(names, program->frmSarn2());
        registerAnalyser(names, program->analyser());
        registerSteadyAgent(names, program->steadyAgent(), [this] { return program->mapGeometry(); });
        registerLog(names, program->clsTXTdata);
        registerMapTools(names, program->frm3Dmap(), program->tables());
        registerHistory(names, program->undo());
        registerRestorePoints(names, program->restorePoints().context(), [this] { program->restorePoints().open(); });
        registerSettings(names, program->frmMisc());
        registerRestore(names, program->restoreRun());
        registerComparison(names, [this](const keep::Source& left, const keep::Source& right) {
            program->comparisons().open(left, right);
        });
        registerProcedures(names, {program->eeprom(), folder.path(), [this](double value, int series, int trend) {
                                       program->trends().pushTrendSample(value, series, trend);
                                   }});
        console.emplace(ConsoleContext{tapped, dialogs, tap, names, nullptr, nullptr, errors,
                                       [this] { program->quit(); }, [this] { return program->ended(); }});
        program->connection().loadSettings = nullptr;
        program->start();
        static_cast<void>(run("messages"));
    }

    std::string run(std::string_view command) { return execute(*console, command); }

    std::optional<program::Program> program;
    std::optional<Console> console;
};

}  // namespace korvane::console
