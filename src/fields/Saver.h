// Writes what a window's controls hold.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fields/CellVerification.h"
#include "fields/Context.h"
#include "fields/Fields.h"
#include "fields/SavePlan.h"

namespace korvane::fields {

// A save converts and writes cell by cell, and reads back only where the tuner wants it verified; with the port closed
// it does the same, but nothing is sent. Another one may be started in its pauses.
class Saver {
public:
    // `fields` has a row for each step of the plans.
    Saver(const Context& context, const Fields& fields) : context_(context), fields_(fields), verification_(context) {}

    // `group` is what the report calls it. A value that does not fit its target ends the save with one message and
    // false; what was sent before stays sent, and the poll runs again.
    bool run(const SavePlan& plan, const std::string& group = {});

private:
    struct Save {
        int number = 0;  // of the report
        std::vector<SavedValue> values;
    };

    void write(const SavePlan& plan, const std::string& group, Save& save);
    void write(const SavePlan& plan, const SaveStep& step, Save& save);
    [[nodiscard]] std::vector<std::int32_t> addressesOf(const SavePlan& plan) const;
    [[nodiscard]] int planned(const SavePlan& plan) const;
    [[nodiscard]] std::int32_t stored(const Field& field, int cell, int save) const;
    void report(const Field& field, int cell, int address, std::int32_t value, Save& save);
    void writeValue(int address, std::int32_t value, Width width, int betweenBytes);
    void wait(int milliseconds);

    Context context_;
    const Fields& fields_;
    CellVerification verification_;
};

}  // namespace korvane::fields
