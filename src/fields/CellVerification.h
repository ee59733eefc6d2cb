// Reads back the cells of the EEPROM that a save has written, and compares.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fields/Context.h"
#include "fields/Fields.h"
#include "fields/SentValue.h"

namespace korvane::fields {

class CellVerification {
public:
    explicit CellVerification(const Context& context) : context_(context) {}

    // Whether saves are to be read back.
    [[nodiscard]] bool isOn() const;

    // The outcome goes to the context's report under the name `group`. Where values share a cell, the later one counts.
    // No box is changed; the report and the marks of `fields`, which may be null, hear what the ECU has told. Events
    // run meanwhile.
    void verify(const std::string& group, const std::vector<SavedValue>& values, const Fields* fields,
                std::function<void()> again);

private:
    [[nodiscard]] std::string readBack(const std::vector<SavedValue>& values, const Fields* fields);

    Context context_;
};

}  // namespace korvane::fields
