// Rows of text in full view.
#pragma once

#include <cstdint>

#include "controls/ListControl.h"

namespace korvane::controls {

// Keeps kMostRows rows: for each one more the oldest goes. The choice follows its row.
class ListBox : public ListControl {
public:
    static constexpr int kMostRows = 32767;

    using ListControl::ListControl;

    void AddItem(std::string text) override;
    void Clear() override;

    // How many rows have gone from the head of the list since the start: a row keeps its place counted from there.
    [[nodiscard]] std::int64_t rowsGone() const { return rowsGone_; }

    [[nodiscard]] std::string_view kind() const override { return "list box"; }

private:
    std::int64_t rowsGone_ = 0;
};

}  // namespace korvane::controls
