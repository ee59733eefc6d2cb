// The upright line by which a plot marks a row.
#pragma once

#include "controls/Control.h"

namespace korvane::trend {

// Stands at Left on the surface of its picture, in twips, while it is visible.
class PlotMark : public controls::Control {
public:
    using Control::Control;
    controls::Property<int> Row{*this};  // 0 for none

    [[nodiscard]] std::string_view kind() const override { return "mark"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Row"; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;
};

}  // namespace korvane::trend
