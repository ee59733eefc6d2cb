#include "views/maps/GridDigits.h"

#include <algorithm>

namespace korvane::views {

namespace {
constexpr int kShortest = 4;  // characters
constexpr int kLongest = 7;
constexpr int kDecimals = 3;
}  // namespace

void TextLengths::count(qsizetype length, int change) {
    if (length > 0) {
        texts_[std::min(static_cast<std::size_t>(length), texts_.size() - 1)] += change;
    }
}

int TextLengths::longest() const {
    std::size_t longest = texts_.size() - 1;
    while (longest > 0 && texts_[longest] == 0) {
        --longest;
    }
    return static_cast<int>(longest);
}

qsizetype pointOf(const QString& text) {
    const auto point = text.indexOf(u'.');
    return point < 0 ? text.size() : point;
}

QString cellText(const QString& text) {
    const bool isLong = text.size() > kLongest && !text.contains(u'E');
    return isLong ? text.left(pointOf(text) + 1 + kDecimals) : text;
}

void GridTexts::replace(const QString& before, const QString& after) {
    count(before, -1);
    count(after, 1);
}

void GridTexts::count(const QString& text, int change) {
    all_.count(text.size(), change);
    whole_.count(pointOf(text), change);
    decimals_.count(text.size() - pointOf(text), change);
}

int GridTexts::characters(bool aligned) const {
    return std::max(aligned ? wholeDigits() + decimals() : all_.longest(), kShortest);
}

void SharedDigits::tell(Grid& grid, bool visible, const DigitRoom& room) {
    const auto known = std::find_if(grids_.begin(), grids_.end(), [&](const auto& each) { return each.grid == &grid; });
    auto& told = known != grids_.end() ? *known : grids_.emplace_back();
    told = {&grid, visible, room};
    compare();
}

void SharedDigits::leave(const Grid& grid) {
    std::erase_if(grids_, [&](const auto& each) { return each.grid == &grid; });
}

void SharedDigits::compare() {
    if (const auto all = least(); !(all == room_)) {
        room_ = all;
        for (const auto& told : grids_) {
            told.grid->sharedRoomChanged();
        }
    }
}

DigitRoom SharedDigits::least() const {
    const bool anySeen = std::any_of(grids_.begin(), grids_.end(), [](const auto& each) { return each.visible; });
    DigitRoom least;
    for (const auto& [grid, visible, room] : grids_) {
        least.characters = std::max(least.characters, room.characters);
        if (visible || !anySeen) {
            least.cell = least.cell.isValid() ? least.cell.boundedTo(room.cell) : room.cell;
        }
    }
    return least;
}

}  // namespace korvane::views
