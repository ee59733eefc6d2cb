// The face behind a dial's needle: scale, numbers and name, drawn sharp at any size.
#pragma once

#include <QPalette>
#include <QPixmap>
#include <QString>

namespace korvane::views {

// Values run clockwise from straight down over three quarters of the circle.
struct DialScale {
    QString name;
    QString unit;
    double max = 1;
    double step = 1;        // between numbers
    int parts = 1;          // of a step, by small lines
    double numberUnit = 1;  // a number is the value divided by this
    int decimals = 0;
    double redFrom = 0;  // where the red zone begins; at `max` there is none

    static constexpr double kSweep = 270;  // degrees

    [[nodiscard]] double degreesOf(double value) const { return value / max * kSweep; }
};

// The preset scales: 1 is engine speed to 10000, any other boost to 3 bar.
[[nodiscard]] DialScale dialScaleOf(int meterType);

// A point on a circle inside a square of `side`, `degrees` clockwise from straight down, `radius` as a share of half
// the side.
[[nodiscard]] QPointF dialPoint(double degrees, double radius, double side);

// `side` in logical pixels.
[[nodiscard]] QPixmap paintDialFace(const DialScale& scale, int side, qreal pixelRatio, const QPalette& palette,
                                    const QFont& font);

}  // namespace korvane::views
