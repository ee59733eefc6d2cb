#include "controls/ListBox.h"

#include <utility>

namespace korvane::controls {

void ListBox::AddItem(std::string text) {
    const bool full = ListCount() >= kMostRows;
    if (full) {
        dropFirstRow();
        ++rowsGone_;
    }
    ListControl::AddItem(std::move(text));
    if (full && ListIndex >= 0) {
        ListIndex = ListIndex - 1;
    }
}

void ListBox::Clear() {
    rowsGone_ += ListCount();
    ListControl::Clear();
}

}  // namespace korvane::controls
