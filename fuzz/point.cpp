// Restore points: any bytes are one, or say what is wrong; one that is whole comes back as it is, and none that was
// changed or cut anywhere is taken for whole.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Support.h"
#include "core/TextEncoding.h"
#include "keep/point/Checksum.h"
#include "keep/point/PointFile.h"

namespace {

using namespace korvane;
using fuzz::require;

void decode(std::string_view bytes) {
    const auto head = keep::decodeHead(bytes);
    const auto point = keep::decodePoint(bytes);
    require(head.content.has_value() == point.content.has_value());
    require(head.damage == point.damage);
    require(head.content.has_value() == head.damage.empty());
    if (!point.content) {
        return;
    }
    require(point.content->time == head.content->time && point.content->reason == head.content->reason);
    require(core::isUtf8(head.content->reason));
    const auto again = keep::decodePoint(keep::encodePoint(*point.content));
    require(again.content == point.content);
    require(!keep::decodeHead(bytes.substr(0, bytes.size() - 1)).content);
}

// The same bytes with the length and the checksum that belong to them: the content is what is tried then.
std::string closed(std::string_view bytes) {
    std::string whole(bytes.substr(0, bytes.size() - 8));
    const auto put = [&whole](std::size_t at, std::uint64_t number, unsigned size) {
        for (unsigned i = 0; i < size; ++i) {
            whole.at(at + i) = static_cast<char>(number >> (8 * i));
        }
    };
    put(12, bytes.size(), 4);
    const auto sum = keep::checksumOf(whole);
    whole.resize(bytes.size());
    put(bytes.size() - 8, sum, 8);
    return whole;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    decode(bytes);
    if (size >= 24) {
        decode(closed(bytes));
    }
    return 0;
}
