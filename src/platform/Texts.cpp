#include "platform/Texts.h"

#include <cstddef>

namespace korvane::platform {

namespace {

constexpr std::string_view kBlanks = " \t";
// The bytes of U+00C0 to U+00DE, the accented capitals; their small letters are 32 higher.
constexpr char kLatinLead = '\xC3';
constexpr char kFirstCapital = '\x80';
constexpr char kLastCapital = '\x9E';
constexpr char kTimesSign = '\x97';
constexpr int kToSmall = 32;

char smallLetter(char character, char before) {
    const bool capital =
        (character >= 'A' && character <= 'Z') ||
        (before == kLatinLead && character >= kFirstCapital && character <= kLastCapital && character != kTimesSign);
    return capital ? static_cast<char>(character + kToSmall) : character;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool sameText(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) {
        return false;
    }
    char before = '\0';
    for (std::size_t i = 0; i < one.size(); ++i) {
        if (smallLetter(one[i], before) != smallLetter(other[i], before)) {
            return false;
        }
        before = one[i];
    }
    return true;
}

}  // namespace korvane::platform
