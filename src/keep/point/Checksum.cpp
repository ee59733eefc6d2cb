#include "keep/point/Checksum.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace korvane::keep {

namespace {

constexpr std::size_t kWord = 8;
constexpr std::uint64_t kStart = 0xCBF29CE484222325U;
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;

std::uint64_t wordOf(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        word = (word << 8U) | static_cast<std::uint8_t>(bytes[i - 1]);
    }
    return word;
}

std::uint64_t fullWordOf(const char* bytes) {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, kWord);
        return word;
    }
    return wordOf({bytes, kWord});
}

std::uint64_t with(std::uint64_t sum, std::uint64_t word) {
    const std::uint64_t product = (sum ^ word) * kFactor;
    return product ^ (product >> 32U);
}

}  // namespace

std::uint64_t checksumOf(std::string_view bytes) {
    std::uint64_t sum = kStart;
    std::size_t at = 0;
    for (; bytes.size() - at >= kWord; at += kWord) {
        sum = with(sum, fullWordOf(bytes.data() + at));
    }
    return at < bytes.size() ? with(sum, wordOf(bytes.substr(at))) : sum;
}

}  // namespace korvane::keep
