// Files with lambda setpoints: any bytes leave numbers behind, and what is saved comes back.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Support.h"
#include "core/files/TableFile.h"
#include "maps/MapForm.h"
#include "platform/RuntimeError.h"

namespace {

using namespace korvane;
using fuzz::require;

constexpr int kSetpoints = 160;
constexpr std::size_t kLines = 181;  // index 0 is not used

void readLines(const std::filesystem::path& file) {
    std::array<std::string, kLines> lines;
    lines.front() = "kept";
    const auto load = core::LoadTextTable(file, lines);
    const auto last = static_cast<std::size_t>(load.lastIndex);
    require(load.error == 0 || load.error == platform::kErrorSubscript);
    require(load.lastIndex >= 0 && last < lines.size());
    require(load.error == 0 || last + 1 == lines.size());
    require(lines.front() == "kept");
    require(
        std::all_of(lines.begin() + load.lastIndex + 1, lines.end(), [](const auto& line) { return line.empty(); }));
}

std::vector<float> setpoints(program::Program& program) {
    std::vector<float> all;
    for (int cell = 0; cell < kSetpoints; ++cell) {
        all.push_back(program.analyser().Setpointget(cell));
    }
    return all;
}

void press(fuzz::ProgramRun& run, controls::CommandButton& button, const std::filesystem::path& file) {
    require(button.Enabled);
    run.dialogs.answerFile(file.string());
    button.press();
    require(run.dialogs.takeMessages().empty());
}

// A file has seven digits of a number.
bool same(float one, float other) {
    constexpr float kSmallest = 1e-37F;
    return std::abs(one - other) <= std::max(1e-6F * std::abs(one), kSmallest);
}

void loadAndSave(fuzz::ProgramRun& run, const std::filesystem::path& file) {
    auto& window = dynamic_cast<maps::MapForm&>(*run.program.windows().curMapWindow);
    window.chkInjAnal.press();
    press(run, window.btnloadLambdaSetpoint, file);
    const auto loaded = setpoints(run.program);
    require(std::all_of(loaded.begin(), loaded.end(), [](float number) { return std::isfinite(number); }));
    press(run, window.btnSaveLambdaSetpoint, run.folder / "saved.lam");
    press(run, window.btnloadLambdaSetpoint, run.folder / "saved.lam");
    const auto again = setpoints(run.program);
    require(std::equal(loaded.begin(), loaded.end(), again.begin(), same));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ProgramRun run;
    const auto file = run.folder.write("setpoints.lam", fuzz::textOf({data, size}));
    readLines(file);
    run.program.mapWindows().open();
    loadAndSave(run, file);
    run.program.quit();
    require(run.program.ended());
    return 0;
}
