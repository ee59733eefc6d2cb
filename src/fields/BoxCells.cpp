#include "fields/BoxCells.h"

#include "core/Numbers.h"

namespace korvane::fields {

namespace {

using link::Known;

std::optional<InEcu> knownIn(const link::EepromCells& cells, std::int64_t address) {
    if (address < 0 || address >= static_cast<std::int64_t>(cells.size())) {
        return {};
    }
    const auto& cell = cells.at(static_cast<std::size_t>(address));
    return cell.known == Known::No ? std::nullopt : std::optional(InEcu{cell.byte, cell.known});
}

}  // namespace

std::optional<InEcu> BoxCells::in(const link::EcuEeprom& ecu) const {
    const int step = codec_.width == Width::TwoBytes ? 2 : 1;
    const auto address = std::int64_t{tables_->addresses.*first_} + cell_ * step;
    const auto low = knownIn(ecu.cells(), address);
    if (!low || codec_.width == Width::Byte) {
        return low;
    }
    const auto high = knownIn(ecu.cells(), address + 1);
    if (!high) {
        return {};
    }
    const std::int32_t count = low->count + kByteValues * high->count;
    const bool isTold = low->known == Known::Told && high->known == Known::Told;
    return InEcu{codec_.width == Width::Word ? static_cast<std::int16_t>(count) : count,
                 isTold ? Known::Told : Known::Sent};
}

std::string BoxCells::text(std::int32_t count) const {
    return std::string(core::numberText(codec_.shown(count, *tables_)).view());
}

}  // namespace korvane::fields
