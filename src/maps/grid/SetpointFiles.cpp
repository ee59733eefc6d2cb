#include "maps/grid/SetpointFiles.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/TableFile.h"
#include "maps/panes/PaneWindow.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

using platform::FileDialog;

constexpr const char* kFilter = "All Files (*.lam)|*.lam";

constexpr int kSetpoints = 160;
constexpr std::size_t kWrittenEntries = kSetpoints + 1;  // the writer leaves out the last one
constexpr std::size_t kReadEntries = 181;                // the reader begins at entry 1

// A number as the settings and setpoint files have it.
std::string printed(float number) {
    std::string text = core::textOf(number) + ' ';
    return text.starts_with('-') ? text : ' ' + text;
}

float setpointOf(const std::string& line) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(core::val(line), -kLargest, kLargest));
}

}  // namespace

void SetpointFiles::save() {
    auto& dialogs = window_.machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Save, "Save Settings", kFilter, false});
    if (path.empty()) {
        return;
    }
    std::array<std::string, kWrittenEntries> lines;
    for (int cell = 0; cell < kSetpoints; ++cell) {
        core::checked(lines, cell) = printed(analyser_.Setpointget(cell));
    }
    core::SaveTextTable(path, lines, dialogs);
}

void SetpointFiles::load() {
    const std::string path = window_.machine().dialogs.choose({FileDialog::Kind::Open, "Load Settings", kFilter});
    if (!path.empty()) {
        load(path);
    }
}

// A file that can't be read at all changes no target; one that is too short sets the rest to 0.
void SetpointFiles::load(const std::string& path) {
    std::array<std::string, kReadEntries> lines;
    const auto load = core::LoadTextTable(path, lines);
    if (load.error != 0 && load.lastIndex == 0) {
        window_.tell("The lambda file can't be read:\r\n" + path);
        return;
    }
    for (int entry = 1; entry <= kSetpoints; ++entry) {
        analyser_.Setpoint(setpointOf(core::checked(lines, entry)), entry - 1);
    }
}

}  // namespace korvane::maps
