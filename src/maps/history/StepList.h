// The steps of a history as rows that a user picks from.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "controls/Control.h"
#include "core/history/MapHistory.h"

namespace korvane::maps {

// Row N is what the maps were behind step N, row 0 what they were before the first. The list has no rows of its own: it
// asks the history for each one that is looked at, however many there are.
class StepList : public controls::Control {
public:
    StepList(controls::Window& window, std::string_view name, const core::MapHistory& history)
        : Control(window, name), history_(history) {}

    // A row was picked.
    std::function<void(std::size_t row)> Picked;

    [[nodiscard]] std::size_t rowCount() const { return history_.count() + 1; }
    // The row that the maps are at; those behind it are undone.
    [[nodiscard]] std::size_t here() const { return history_.place(); }
    // RuntimeError 9 for a row that does not exist.
    [[nodiscard]] std::string timeOf(std::size_t row) const;
    [[nodiscard]] std::string wordsOf(std::size_t row) const;

    // Observers are told with it when rows have changed.
    [[nodiscard]] const void* rowsProperty() const { return &history_; }

    void choose(int row) override;
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{0, static_cast<int>(rowCount())}; }
    // List(row): time and words.
    [[nodiscard]] std::optional<controls::Value> indexedProperty(std::string_view property,
                                                                 std::span<const int> indices) const override;
    [[nodiscard]] std::string_view kind() const override { return "list"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "ListCount, ListIndex, List"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

private:
    const core::MapHistory& history_;
};

}  // namespace korvane::maps
