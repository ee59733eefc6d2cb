// What tables of whole rows have in common.
#pragma once

class QTreeView;

namespace korvane::views {

// Rows of one height and of alternating grounds, without a tree, which nobody edits; the last column takes the rest.
void setUpRowTable(QTreeView& table);

}  // namespace korvane::views
