#include "keep/point/PointFile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "core/OneLine.h"
#include "keep/point/ByteStream.h"
#include "keep/point/Checksum.h"

namespace korvane::keep {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kMagic = "KVPOINT\x1A"sv;
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kLengthAt = 12;
constexpr std::size_t kChecksum = 8;
constexpr std::size_t kShortest = 16 + kChecksum;  // of any version: magic, version, length, checksum
constexpr std::size_t kBitsOfMap = core::kMapSize / 8;
constexpr std::size_t kMap = 2 * kBitsOfMap + 3 * core::kMapSize;
constexpr std::size_t kKnownOfEeprom = (core::kEepromSize * 2 + 7) / 8;
constexpr std::size_t kBody = 1 + MiscBytes().size() + 3 * kMap + core::kEepromSize + kKnownOfEeprom;

constexpr auto kNoPoint = "no restore point";
constexpr auto kCutOff = "cut off";
constexpr auto kDamaged = "damaged";
constexpr auto kTooLong = "damaged: longer than it was written";
constexpr auto kLater = "of a later version of the program";
constexpr auto kLaterCutOff = "of a later version of the program, and cut off";
constexpr auto kStrange = "holds values that no restore point has";

std::string_view cut(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return text;
    }
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    return text.substr(0, size);
}

void write(ByteWriter& out, const platform::WallTime& time) {
    out.number(static_cast<std::uint16_t>(time.year));
    for (const int part : {time.month, time.day, time.hour, time.minute, time.second}) {
        out.number(static_cast<std::uint8_t>(part));
    }
}

void write(ByteWriter& out, const EcuIdentity& ecu) {
    out.number(ecu.swType);
    out.number(std::bit_cast<std::uint32_t>(ecu.hwVersion));
    out.number(ecu.features);
}

void write(ByteWriter& out, const MapSnapshot& map) {
    for (const auto* bytes : {&map.working, &map.kept}) {
        out.packed(core::kMapSize, 1, [&](std::size_t cell) { return bytes->at(cell) ? 1U : 0U; });
        for (const auto& byte : *bytes) {
            out.number(byte.value_or(0));
        }
    }
    for (const auto byte : map.edited) {
        out.number(byte);
    }
}

void write(ByteWriter& out, const std::optional<MiscBytes>& misc) {
    out.number(static_cast<std::uint8_t>(misc ? 1 : 0));
    for (const auto byte : misc.value_or(MiscBytes{})) {
        out.number(byte);
    }
}

void write(ByteWriter& out, const link::EepromCells& cells) {
    for (const auto& cell : cells) {
        out.number(cell.byte);
    }
    out.packed(cells.size(), 2, [&](std::size_t i) { return static_cast<unsigned>(cells.at(i).known); });
}

platform::WallTime readTime(ByteReader& in) {
    platform::WallTime time;
    time.year = in.number<std::uint16_t>();
    for (int* part : {&time.month, &time.day, &time.hour, &time.minute, &time.second}) {
        *part = in.number<std::uint8_t>();
    }
    return time;
}

EcuIdentity readIdentity(ByteReader& in) {
    EcuIdentity ecu;
    ecu.swType = in.number<std::int32_t>();
    ecu.hwVersion = std::bit_cast<float>(in.number<std::uint32_t>());
    ecu.features = in.number<std::int32_t>();
    return ecu;
}

MapSnapshot::Bytes readKnownBytes(ByteReader& in) {
    const auto known = in.text(kBitsOfMap);
    MapSnapshot::Bytes bytes;
    for (std::size_t cell = 0; cell < bytes.size(); ++cell) {
        const auto byte = in.number<std::uint8_t>();
        if (ByteReader::packedAt(known, cell, 1) != 0) {
            bytes.at(cell) = byte;
        }
    }
    return bytes;
}

MapSnapshot readMap(ByteReader& in) {
    MapSnapshot map;
    map.working = readKnownBytes(in);
    map.kept = readKnownBytes(in);
    for (auto& byte : map.edited) {
        byte = in.number<std::uint8_t>();
    }
    return map;
}

std::optional<MiscBytes> readMisc(ByteReader& in) {
    const bool known = in.number<std::uint8_t>() != 0;
    MiscBytes bytes{};
    for (auto& byte : bytes) {
        byte = in.number<std::uint8_t>();
    }
    return known ? std::optional(bytes) : std::nullopt;
}

link::EepromCells readEeprom(ByteReader& in) {
    link::EepromCells cells{};
    for (auto& cell : cells) {
        cell.byte = in.number<std::uint8_t>();
    }
    const auto known = in.text(kKnownOfEeprom);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells.at(i).known = static_cast<link::Known>(ByteReader::packedAt(known, i, 2));
    }
    return cells;
}

// A cell can't be known in the fourth way that two bits have.
bool hasStrangeCell(std::string_view body) {
    const auto known = body.substr(body.size() - kKnownOfEeprom);
    return std::any_of(known.begin(), known.end(), [](char byte) {
        const auto bits = static_cast<unsigned char>(byte);
        return (bits & (bits >> 1U) & 0x55U) != 0;
    });
}

template <class Number>
Number numberAt(std::string_view bytes, std::size_t at) {
    return ByteReader(bytes.substr(at)).number<Number>();
}

// What the frame around the content says; holds for all versions. Empty if it is whole.
std::string damageOfFrame(std::string_view bytes) {
    if (!kMagic.starts_with(bytes.substr(0, kMagic.size()))) {
        return kNoPoint;
    }
    if (bytes.size() < kLengthAt) {
        return kCutOff;
    }
    const auto version = numberAt<std::uint32_t>(bytes, kMagic.size());
    if (bytes.size() < kShortest) {
        return version > kVersion ? kLaterCutOff : kCutOff;
    }
    const auto length = numberAt<std::uint32_t>(bytes, kLengthAt);
    if (bytes.size() > kLargestPoint) {
        return version > kVersion ? kLater : kTooLong;
    }
    if (length != bytes.size()) {
        return length < bytes.size() ? kTooLong : version > kVersion ? kLaterCutOff : kCutOff;
    }
    const auto content = bytes.substr(0, bytes.size() - kChecksum);
    if (checksumOf(content) != numberAt<std::uint64_t>(bytes, content.size())) {
        return kDamaged;
    }
    return version == kVersion ? std::string() : kLater;
}

struct Parts {
    PointHead head;
    std::string_view body;
};

Decoded<Parts> partsOf(std::string_view bytes) {
    if (auto damage = damageOfFrame(bytes); !damage.empty()) {
        return {{}, std::move(damage)};
    }
    ByteReader in(bytes.substr(0, bytes.size() - kChecksum));
    static_cast<void>(in.text(kLengthAt + sizeof(std::uint32_t)));
    Parts parts;
    parts.head.time = readTime(in);
    parts.head.ecu = readIdentity(in);
    parts.head.reason = core::onOneLine(in.text(in.number<std::uint8_t>()));
    parts.body = in.text(in.left());
    if (!platform::isMoment(parts.head.time) || !std::isfinite(parts.head.ecu.hwVersion) ||
        parts.body.size() != kBody || hasStrangeCell(parts.body)) {
        return {{}, kStrange};
    }
    return {std::move(parts), {}};
}

std::string contentOf(const Snapshot& point) {
    ByteWriter out;
    const auto reason = cut(point.reason, kLongestReason);
    write(out, point.time);
    write(out, point.ecu);
    out.number(static_cast<std::uint8_t>(reason.size()));
    out.text(reason);
    write(out, point.misc);
    for (const auto* map : {&point.fuel, &point.ignition, &point.pwm}) {
        write(out, *map);
    }
    write(out, point.eeprom);
    return out.bytes();
}

}  // namespace

std::string encodePoint(const Snapshot& point) {
    const auto content = contentOf(point);
    ByteWriter out;
    out.text(kMagic);
    out.number(kVersion);
    out.number(static_cast<std::uint32_t>(kShortest + content.size()));
    out.text(content);
    out.number(checksumOf(out.bytes()));
    return out.bytes();
}

std::optional<EcuIdentity> ecuAtFront(std::string_view bytes) {
    if (bytes.size() < kBytesToEcu || !bytes.starts_with(kMagic) ||
        numberAt<std::uint32_t>(bytes, kMagic.size()) != kVersion) {
        return std::nullopt;
    }
    ByteReader in(bytes.substr(kLengthAt + sizeof(std::uint32_t)));
    static_cast<void>(readTime(in));
    return readIdentity(in);
}

Decoded<PointHead> decodeHead(std::string_view bytes) {
    auto parts = partsOf(bytes);
    if (!parts.content) {
        return {{}, std::move(parts.damage)};
    }
    return {std::move(parts.content->head), {}};
}

Decoded<Snapshot> decodePoint(std::string_view bytes) {
    auto parts = partsOf(bytes);
    if (!parts.content) {
        return {{}, std::move(parts.damage)};
    }
    auto& head = parts.content->head;
    ByteReader in(parts.content->body);
    Snapshot point;
    point.time = head.time;
    point.reason = std::move(head.reason);
    point.ecu = head.ecu;
    point.misc = readMisc(in);
    for (auto* map : {&point.fuel, &point.ignition, &point.pwm}) {
        *map = readMap(in);
    }
    point.eeprom = readEeprom(in);
    return {std::move(point), {}};
}

}  // namespace korvane::keep
