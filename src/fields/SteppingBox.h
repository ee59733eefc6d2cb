// A box that shows a raw count of the ECU times a factor, and the keys by which alone it changes.
#pragma once

#include "fields/Field.h"

namespace korvane::fields {

// Locked but for the moment in which its text is set. + and - step the count; in a row of boxes the arrows up and down
// do so too, and left and right move the focus around. Holds nothing itself: it may be made for each use.
class SteppingBox {
public:
    // `field` has boxes and a stepping. RuntimeError 9 for a cell that does not exist.
    SteppingBox(const Field& field, int cell, const core::SharedTables& tables);

    void lock();
    // Keeps `count` and shows it scaled.
    void show(double count);
    // Where the count is kept, a key that steps nothing shows the text anew.
    void key(int keyCode);

private:
    [[nodiscard]] double count() const;
    [[nodiscard]] int navigated(int keyCode) const;
    void keep(double count);
    void showText(double count);

    const core::SharedTables& tables_;
    const Codec& codec_;
    const Stepping& stepping_;
    BoxRow* row_;
    controls::TextBox& box_;
};

}  // namespace korvane::fields
