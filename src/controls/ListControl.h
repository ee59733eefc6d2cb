// A control that has rows of text, of which at most one is chosen.
#pragma once

#include <deque>
#include <string>

#include "controls/Control.h"

namespace korvane::controls {

// Base of the drop-down list and the list box. Rows count from 0, ListIndex -1 is no row. Assigning another ListIndex
// raises Click.
class ListControl : public Control {
public:
    using Control::Control;
    Property<int> ListIndex{*this, -1};

    virtual void AddItem(std::string text);
    virtual void Clear();
    [[nodiscard]] int ListCount() const { return static_cast<int>(rows_.size()); }
    // Text of a row; RuntimeError 9 for a row that does not exist.
    [[nodiscard]] const std::string& List(int row) const;
    // The chosen row's text, empty when none is chosen.
    [[nodiscard]] std::string Text() const;
    // Picks a row as a user does: picking what is picked raises nothing. RuntimeError 380 for a row that does not
    // exist.
    void choose(int row) override;
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{0, ListCount()}; }
    [[nodiscard]] std::optional<Value> indexedProperty(std::string_view property,
                                                       std::span<const int> indices) const override;  // List(row)

    [[nodiscard]] std::string_view mainProperty() const override { return "ListIndex"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

    // Told to observers when rows or what belongs to them change.
    [[nodiscard]] const void* rowsProperty() const { return &rows_; }

protected:
    void afterChange(const void* property) override;
    void dropFirstRow() { rows_.pop_front(); }

private:
    std::deque<std::string> rows_;
};

}  // namespace korvane::controls
