// The cells of the EEPROM behind a box.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/tables/SharedTables.h"
#include "fields/Field.h"
#include "link/EcuEeprom.h"

namespace korvane::fields {

// What the ECU has in them; never Known::No.
struct InEcu {
    std::int32_t count = 0;
    link::Known known = link::Known::No;

    friend bool operator==(const InEcu&, const InEcu&) = default;
};

class BoxCells {
public:
    // Of the box that stores cell `cell` of a row. The tables outlive it; their addresses may change.
    BoxCells(const core::SharedTables& tables, const Field& field, int cell)
        : tables_(&tables), first_(field.first), codec_(field.codec), cell_(cell) {}

    // Nothing if the line has not told of them all.
    [[nodiscard]] std::optional<InEcu> in(const link::EcuEeprom& ecu) const;
    // A count as the box shows it.
    [[nodiscard]] std::string text(std::int32_t count) const;

private:
    const core::SharedTables* tables_;
    Address first_;
    Codec codec_;
    int cell_;
};

}  // namespace korvane::fields
