// Numbers, texts and runs of bytes one behind the other, low byte first.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace korvane::keep {

class ByteWriter {
public:
    template <class Number>
    void number(Number value) {
        auto rest = static_cast<std::make_unsigned_t<Number>>(value);
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            bytes_ += static_cast<char>(rest & 0xFFU);
            rest = static_cast<std::make_unsigned_t<Number>>(std::uint64_t{rest} >> 8U);
        }
    }
    void text(std::string_view text) { bytes_ += text; }
    // `bits` numbers of one or two bits in each byte, the first in its lowest bits.
    template <class Get>
    void packed(std::size_t count, unsigned bits, Get get) {
        std::string run((count * bits + 7) / 8, '\0');
        for (std::size_t i = 0; i < count; ++i) {
            auto& byte = run[i * bits / 8];
            byte = static_cast<char>(static_cast<unsigned char>(byte) | (get(i) << (i * bits % 8)));
        }
        bytes_ += run;
    }

    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// Past the end all numbers are 0, and texts end.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

    template <class Number>
    [[nodiscard]] Number number() {
        std::uint64_t value = 0;
        const std::string_view run = text(sizeof(Number));
        for (std::size_t i = 0; i < run.size(); ++i) {
            value |= std::uint64_t{static_cast<std::uint8_t>(run[i])} << (8 * i);
        }
        return static_cast<Number>(static_cast<std::make_unsigned_t<Number>>(value));
    }
    [[nodiscard]] std::string_view text(std::size_t size) {
        const std::string_view run = rest_.substr(0, size);
        rest_.remove_prefix(run.size());
        return run;
    }
    [[nodiscard]] std::size_t left() const { return rest_.size(); }

    // Numbers of one or two bits in each byte of a run that was read.
    [[nodiscard]] static unsigned packedAt(std::string_view run, std::size_t index, unsigned bits) {
        const std::size_t at = index * bits;
        const unsigned byte = at / 8 < run.size() ? static_cast<unsigned char>(run[at / 8]) : 0U;
        return (byte >> (at % 8)) & ((1U << bits) - 1U);
    }

private:
    std::string_view rest_;
};

}  // namespace korvane::keep
