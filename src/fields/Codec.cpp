#include "fields/Codec.h"

#include "core/Numbers.h"

namespace korvane::fields {

namespace {

constexpr double kByteMax = 255;

double numberOf(const Factor& factor, const core::SharedTables& tables) {
    const auto* const unit = std::get_if<double core::SharedTables::*>(&factor);
    return unit != nullptr ? tables.*(*unit) : std::get<double>(factor);
}

}  // namespace

double Codec::shown(double count, const core::SharedTables& tables) const {
    return core::toCurrency(count * numberOf(factor, tables));
}

double Codec::counted(double shown, const core::SharedTables& tables) const {
    return shown / numberOf(factor, tables);
}

std::int32_t Codec::stored(double shown, const core::SharedTables& tables) const {
    const double count = counted(shown, tables);
    return width == Width::Byte ? core::toByte(count) : core::toInt16(count);
}

std::string Codec::range(const core::SharedTables& tables) const {
    if (width != Width::Byte) {
        return "from -32768 to 32767";
    }
    return "from 0 to " + core::textOf(shown(kByteMax, tables)) + unit;
}

}  // namespace korvane::fields
