// The save buttons of the groups.
#pragma once

#include <cstdint>

#include "settings/MiscContext.h"
#include "settings/SaveTable.h"

namespace korvane::settings {

// Sets the clicks of all save buttons. A save converts and writes cell by cell and never reads back; with the port
// closed it does all the same and nothing goes out. Another one may be started in its pauses.
class SaveGroups {
public:
    explicit SaveGroups(const MiscContext& context);

private:
    // What does not fit its target ends the save with one message; what went out before stays so, and the poll runs
    // again.
    void save(const SaveGroup& group);
    void write(const SaveRow& row);
    void wait(const Pause& pause, int cell, int cells);
    // RuntimeError 6, with a sentence for the user, for a number that does not fit.
    [[nodiscard]] std::int32_t valueOf(const controls::TextBox& box, Taken taken) const;
    [[nodiscard]] std::int32_t convert(const controls::TextBox& box, Taken taken) const;
    void writeValue(int address, std::int32_t value, Taken taken);

    const MiscContext& context_;
};

}  // namespace korvane::settings
