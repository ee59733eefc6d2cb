// The restore points as rows that a user picks from.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "keep/Keeper.h"

namespace korvane::keep {

// Rows count from 0, the newest point first; those that the filter leaves out have none. What differs from the ECU now
// is worked out for a row when it is asked for, however many there are.
class PointList : public controls::Control {
public:
    PointList(controls::Window& window, std::string_view name, Keeper& keeper);

    // A row was picked.
    controls::Event<> Click;
    // The picked row; -1 for none. Stays on its point when the rows change.
    controls::Property<int> ListIndex{*this, -1};

    // Takes the points as they are in the folder now.
    void reload();
    // Shows the points that have all words of `words` in what is shown of them.
    void filter(std::string_view words);
    // The ECU may have changed: what differs is worked out anew.
    void compareAnew();

    [[nodiscard]] int rowCount() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] std::size_t pointCount() const { return points_.size(); }
    // RuntimeError 9 for a row that does not exist.
    [[nodiscard]] const PointEntry& entry(int row) const;
    // In a word or a number: "12"; empty for a point that is damaged.
    [[nodiscard]] std::string differsText(int row);
    // The picked point; null for none.
    [[nodiscard]] const PointEntry* chosen() const;

    void choose(int row) override;
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{0, rowCount()}; }
    // List(row): what is shown of it.
    [[nodiscard]] std::optional<controls::Value> indexedProperty(std::string_view property,
                                                                 std::span<const int> indices) const override;
    [[nodiscard]] std::string_view kind() const override { return "list"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "ListCount, ListIndex, List"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;
    // Observers are told with it when rows have changed.
    [[nodiscard]] const void* rowsProperty() const { return &rows_; }

private:
    void showRows();
    [[nodiscard]] bool passes(const PointEntry& entry) const;

    Keeper& keeper_;
    std::vector<PointEntry> points_;
    std::vector<std::size_t> rows_;  // places in points_
    std::vector<std::string> words_;
    std::map<std::string, std::string, std::less<>> differs_;  // by name
};

// "2026-05-06 17:08:59"; the name of a file whose time can't be read.
[[nodiscard]] std::string timeTextOf(const PointEntry& entry);
// "type 11, version 3.386"; empty for a file that is damaged.
[[nodiscard]] std::string ecuTextOf(const PointEntry& entry);

}  // namespace korvane::keep
