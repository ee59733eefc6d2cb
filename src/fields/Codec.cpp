#include "fields/Codec.h"

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::fields {

namespace {

constexpr double kByteMax = 255;
constexpr std::int32_t kWordMax = 65535;

double numberOf(const Factor& factor, const core::SharedTables& tables) {
    const auto* const unit = std::get_if<double core::SharedTables::*>(&factor);
    return unit != nullptr ? tables.*(*unit) : std::get<double>(factor);
}

std::int32_t toUnsignedWord(double count) {
    const std::int32_t whole = core::toInt32(count);
    if (whole < 0 || whole > kWordMax) {
        platform::raiseOverflow();
    }
    return whole;
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
    switch (width) {
        case Width::Byte:
            return core::toByte(count);
        case Width::UnsignedWord:
            return toUnsignedWord(count);
        default:
            return core::toInt16(count);
    }
}

std::string Codec::range(const core::SharedTables& tables) const {
    if (width == Width::Word || width == Width::TwoBytes) {
        return "from -32768 to 32767";
    }
    return "from 0 to " + core::textOf(shown(width == Width::Byte ? kByteMax : kWordMax, tables)) + unit;
}

}  // namespace korvane::fields
