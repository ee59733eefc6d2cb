#include "trend/PlotMark.h"

#include <array>

namespace korvane::trend {

namespace {
constexpr std::array kPlotMark{controls::property<&PlotMark::Row>("Row")};
}

std::vector<std::span<const controls::PropertyInfo>> PlotMark::propertyTables() const {
    return controls::withTable<Control>(*this, kPlotMark);
}

}  // namespace korvane::trend
