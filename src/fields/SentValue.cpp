#include "fields/SentValue.h"

#include "core/Bytes.h"
#include "core/Numbers.h"

namespace korvane::fields {

std::uint8_t SentValue::byte(std::size_t index) const {
    return index == 0 ? core::lowByte(value.value) : core::highByte(value.value);
}

bool SentValue::isSame() const {
    return back[0] == byte(0) && (value.bytes == 1 || back[1] == byte(1));
}

std::int32_t SentValue::told() const {
    const std::int32_t number = back[0].value_or(0) + kByteValues * back[1].value_or(0);
    const bool isSigned = value.codec.width == Width::Word || value.codec.width == Width::TwoBytes;
    return isSigned ? static_cast<std::int16_t>(number) : number;
}

std::string SentValue::shown(std::int32_t count, const core::SharedTables& tables) const {
    return core::textOf(value.codec.shown(count, tables));
}

}  // namespace korvane::fields
