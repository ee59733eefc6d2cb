#include "controls/WindowPlace.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace korvane::controls {

namespace {

constexpr int kStep = 32;  // about the height of a title bar

int overlap(int first, int firstEnd, int second, int secondEnd) {
    return std::max(std::min(firstEnd, secondEnd) - std::max(first, second), 0);
}

std::int64_t common(const Area& one, const Area& other) {
    return std::int64_t{overlap(one.left, one.right(), other.left, other.right())} *
           overlap(one.top, one.bottom(), other.top, other.bottom());
}

// The one that has most of the window; the first if none has any of it.
const Area& screenOf(const Area& window, const std::vector<Area>& screens) {
    return *std::max_element(screens.begin(), screens.end(), [&](const Area& one, const Area& other) {
        return common(window, one) < common(window, other);
    });
}

Area inside(Area window, const Area& screen) {
    window.width = std::min(window.width, screen.width);
    window.height = std::min(window.height, screen.height);
    window.left = std::clamp(window.left, screen.left, screen.right() - window.width);
    window.top = std::clamp(window.top, screen.top, screen.bottom() - window.height);
    return window;
}

Area inTheMiddle(const Opening& opening, const Area& screen) {
    return inside({screen.left + (screen.width - opening.width) / 2, screen.top + (screen.height - opening.height) / 2,
                   opening.width, opening.height},
                  screen);
}

Area beside(const Opening& opening, const Area& parent, const Area& screen) {
    const int width = opening.width;
    const int height = opening.height;
    std::array sides{
        inside({parent.right(), parent.top, width, height}, screen),
        inside({parent.left - width, parent.top, width, height}, screen),
        inside({parent.left, parent.bottom(), width, height}, screen),
        inside({parent.left, parent.top - height, width, height}, screen),
    };
    return *std::min_element(sides.begin(), sides.end(), [&](const Area& one, const Area& other) {
        return common(one, parent) < common(other, parent);
    });
}

bool coversCorner(const Area& place, const std::vector<Area>& others) {
    return std::any_of(others.begin(), others.end(), [&](const Area& other) {
        return std::abs(other.left - place.left) < kStep && std::abs(other.top - place.top) < kStep;
    });
}

// Down and to the right until no corner is covered.
Area awayFromCorners(const Area& place, const std::vector<Area>& others, const Area& screen) {
    Area moved = place;
    while (coversCorner(moved, others)) {
        const Area next = inside({moved.left + kStep, moved.top + kStep, moved.width, moved.height}, screen);
        if (next == moved) {
            return place;
        }
        moved = next;
    }
    return moved;
}

}  // namespace

Area placeOf(const Opening& opening) {
    if (opening.screens.empty()) {
        return {0, 0, opening.width, opening.height};
    }
    if (opening.remembered) {
        const Area& screen = screenOf(*opening.remembered, opening.screens);
        return awayFromCorners(inside(*opening.remembered, screen), opening.others, screen);
    }
    if (!opening.parent) {
        return inTheMiddle(opening, opening.screens.front());
    }
    const Area& screen = screenOf(*opening.parent, opening.screens);
    return awayFromCorners(beside(opening, *opening.parent, screen), opening.others, screen);
}

std::string signatureOf(std::span<const Area> screens) {
    std::string text;
    for (const auto& screen : screens) {
        text += (text.empty() ? "" : " ") + std::to_string(screen.width) + 'x' + std::to_string(screen.height) + '@' +
                std::to_string(screen.left) + ',' + std::to_string(screen.top);
    }
    return text;
}

}  // namespace korvane::controls
