// The boxes that show a raw byte of the ECU times a factor, and the keys by which alone they change.
#pragma once

#include <optional>
#include <vector>

#include "core/SharedTables.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// A box keeps its raw byte in its Tag; txtAccel keeps none and is turned back from its text. All of them are locked but
// for the moment in which their text is set. + and - step the raw byte; in a row of boxes the arrows up and down do so
// too, and left and right move the focus around.
class ScaledFields {
public:
    ScaledFields(MiscControls& window, const core::SharedTables& tables);
    ScaledFields(const ScaledFields&) = delete;
    ScaledFields& operator=(const ScaledFields&) = delete;
    ~ScaledFields() = default;

    // Keeps `raw` in the Tag of a box and shows it scaled.
    void show(controls::TextBox& box, double raw);
    // Shows `raw` in txtAccel(cell); RuntimeError 9 for a cell that does not exist.
    void showAccel(int cell, double raw);

private:
    using Row = controls::ControlArray<controls::TextBox>;
    struct Field {
        controls::TextBox* box;
        int limit;                          // the highest raw byte that the keys reach
        std::optional<double> factor = {};  // none: the milliseconds of a count
        Row* row = nullptr;                 // the row that the box stands in
    };

    void key(const Field& field, int keyCode);
    void accelKey(int cell, int keyCode);
    // The handler of a box with a Tag: a key that steps nothing shows the text anew.
    void step(const Field& field, int keyCode);
    void showText(controls::TextBox& box, double value);

    MiscControls& window_;
    const core::SharedTables& tables_;
    std::vector<Field> fields_;
};

}  // namespace korvane::settings
