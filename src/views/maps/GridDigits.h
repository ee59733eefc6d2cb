// How large the numbers of a map grid are written: as large as the longest one and the cells allow, and of one size in
// all grids of a window.
#pragma once

#include <QSize>
#include <QString>

#include <array>
#include <vector>

namespace korvane::views {

// How many texts have each length, in characters; longer ones count as the last.
class TextLengths {
public:
    void count(qsizetype length, int change);
    // 0 for no text.
    [[nodiscard]] int longest() const;

private:
    std::array<int, 7> texts_{};
};

// The texts of one grid.
class GridTexts {
public:
    // A cell's text has changed.
    void replace(const QString& before, const QString& after);
    // The characters that a cell has to hold, when all are written with their points below each other or not.
    [[nodiscard]] int characters(bool aligned) const;
    // The longest number before the point.
    [[nodiscard]] int wholeDigits() const { return whole_.longest(); }
    // The longest behind it, with the point.
    [[nodiscard]] int decimals() const { return decimals_.longest(); }

private:
    void count(const QString& text, int change);

    TextLengths all_, whole_, decimals_;
};

// Where the characters before the decimal point end.
[[nodiscard]] qsizetype pointOf(const QString& text);

// A number with more decimals than a cell can hold, as the PWM table has them from a file, is cut to three of them, as
// it is when the ECU sends it.
[[nodiscard]] QString cellText(const QString& text);

// What a number has to fit.
struct DigitRoom {
    QSize cell;
    int characters = 0;

    friend bool operator==(const DigitRoom&, const DigitRoom&) = default;
};

// The least room of the grids of a window. Grids that are hidden count with their texts alone.
class SharedDigits {
public:
    class Grid {
    public:
        virtual ~Grid() = default;
        virtual void sharedRoomChanged() = 0;
    };

    void tell(Grid& grid, bool visible, const DigitRoom& room);
    void leave(const Grid& grid);
    [[nodiscard]] const DigitRoom& room() const { return room_; }

private:
    struct Told {
        Grid* grid;
        bool visible;
        DigitRoom room;
    };
    void compare();
    [[nodiscard]] DigitRoom least() const;

    std::vector<Told> grids_;
    DigitRoom room_;
};

}  // namespace korvane::views
