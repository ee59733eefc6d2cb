// One parameter of the ECU as a window shows and stores it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "controls/Controls.h"
#include "core/ParameterAddresses.h"
#include "fields/Codec.h"

namespace korvane::fields {

using Address = int core::ParameterAddresses::*;
using BoxRow = controls::ControlArray<controls::TextBox>;

// A box for one parameter, or a row of boxes for as many that follow each other.
class Boxes {
public:
    Boxes(controls::TextBox& box) : box_(&box) {}
    Boxes(BoxRow& row) : row_(&row) {}

    [[nodiscard]] int count() const { return row_ != nullptr ? row_->count() : 1; }
    // RuntimeError 9 for a cell that does not exist.
    [[nodiscard]] controls::TextBox& operator()(int cell) const { return row_ != nullptr ? (*row_)(cell) : *box_; }
    // Null for a single box.
    [[nodiscard]] BoxRow* row() const { return row_; }

private:
    controls::TextBox* box_ = nullptr;
    BoxRow* row_ = nullptr;
};

// A list whose row is the value, or two for the low and the high byte of it.
struct Lists {
    Lists(controls::ComboBox& only) : low(&only) {}
    Lists(controls::ComboBox& lowByte, controls::ComboBox& highByte) : low(&lowByte), high(&highByte) {}

    controls::ComboBox* low;
    controls::ComboBox* high = nullptr;
    bool lowByteOnly = false;  // of one list: the row is the low byte of a word
};

[[nodiscard]] inline Lists lowByteOf(controls::ComboBox& list) {
    Lists lists(list);
    lists.lowByteOnly = true;
    return lists;
}

// Functions for a parameter that is shown or stored in a special way. If one is empty, it is not shown, or not stored.
struct Own {
    std::function<void(std::int32_t value)> show;
    std::function<std::int32_t()> stored;
    controls::TextBox* box = nullptr;  // that shows it, if it is a box
};

// Shown only.
using Caption = std::reference_wrapper<controls::Label>;

// The text property of a box that keeps the raw count.
using Keeper = controls::Property<std::string> controls::Control::*;

// A locked box that shows a count times its factor and changes by keys alone.
struct Stepping {
    int limit = 0;                            // the highest count that the keys reach
    Keeper keeper = &controls::Control::Tag;  // null: the count is not kept but computed from the text
};

// For Field::answers.
inline constexpr int kStoredOnly = 0;

struct Field {
    Address first;
    std::variant<Boxes, Lists, Caption, Own> control;
    Codec codec = kByte;
    std::optional<Stepping> stepping = {};
    // To how many addresses from the first one on a reply is shown; none given: to as many as the boxes hold.
    std::optional<int> answers = {};
};

}  // namespace korvane::fields
