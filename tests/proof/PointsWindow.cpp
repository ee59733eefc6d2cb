#include "PointsWindow.h"

#include <algorithm>

namespace korvane::proof {

namespace {
constexpr int kAnswers = 2'500;  // ms
}

keep::FrmRestore& openPoints(Desk& desk) {
    desk.program.restorePoints().open();
    return dynamic_cast<keep::FrmRestore&>(desk.window("frmRestore"));
}

void restorePoint(Desk& desk, const std::string& point, bool settings, bool asEdited) {
    auto& window = openPoints(desk);
    for (int row = 0; row < window.lstPoints.rowCount(); ++row) {
        if (window.lstPoints.entry(row).name == point) {
            window.lstPoints.choose(row);
        }
    }
    window.chkSettings.Value = settings ? 1 : 0;
    window.chkDesk.Value = asEdited ? 1 : 0;
    window.btnRestore.press();
    desk.wait(kAnswers);
}

std::string pointOf(Desk& desk, std::string_view reason) {
    const auto& points = desk.program.keeper().points();
    const auto found = std::ranges::find(points, reason, &keep::PointEntry::reason);
    return found == points.end() ? std::string() : found->name;
}

}  // namespace korvane::proof
