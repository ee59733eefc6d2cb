#include "views/widgets/values/DialFace.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kRim = 0.985;
constexpr double kLineEnd = 0.95;
constexpr double kMajorStart = 0.865;
constexpr double kHalfStart = 0.89;
constexpr double kMinorStart = 0.915;
constexpr double kNumberRadius = 0.74;
constexpr double kZeroRadius = 0.775;  // clear of the dial's number
constexpr double kZoneRadius = 0.935;
constexpr double kBoss = 0.17;
constexpr double kNumberHeight = 0.068;  // of the side
constexpr double kNameHeight = 0.078;
constexpr double kUnitHeight = 0.055;
constexpr QPointF kNamePlace{0.735, 0.665};
constexpr QPointF kUnitPlace{0.735, 0.745};
constexpr double kEpsilon = 1e-9;
constexpr double kSixteenths = 16;

class FacePainter {
public:
    FacePainter(QPainter& painter, const DialScale& scale, int side, const QPalette& palette, const QFont& font)
        : painter_(painter), scale_(scale), side_(side), palette_(palette), font_(font) {}

    void paint() {
        paintDisc();
        paintRedZone();
        paintLines();
        paintNumbers();
        paintText(scale_.name, kNamePlace, kNameHeight, true, ink());
        paintText(scale_.unit, kUnitPlace, kUnitHeight, false, mixed(ink(), ground(), 0.35));
    }

private:
    [[nodiscard]] QColor ink() const { return palette_.color(QPalette::Text); }
    [[nodiscard]] QColor ground() const { return shades::face(palette_); }
    [[nodiscard]] QPointF at(double value, double radius) const {
        return dialPoint(scale_.degreesOf(value), radius, side_);
    }

    void paintDisc() {
        const QPointF centre(side_ / 2.0, side_ / 2.0);
        painter_.setPen(QPen(mixed(ground(), ink(), 0.35), std::max(1.0, side_ * 0.007)));
        painter_.setBrush(ground());
        painter_.drawEllipse(centre, side_ / 2.0 * kRim, side_ / 2.0 * kRim);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(mixed(ground(), ink(), 0.10));
        painter_.drawEllipse(centre, side_ / 2.0 * kBoss, side_ / 2.0 * kBoss);
    }

    // The toolkit counts sixteenths of a degree, against the clock, from three o'clock; straight down is at -90.
    void paintRedZone() {
        if (scale_.redFrom >= scale_.max) {
            return;
        }
        const double radius = side_ / 2.0 * kZoneRadius;
        const QRectF circle(side_ / 2.0 - radius, side_ / 2.0 - radius, 2 * radius, 2 * radius);
        const double from = scale_.degreesOf(scale_.redFrom);
        painter_.setPen(QPen(hues::kRedZone, side_ * 0.03, Qt::SolidLine, Qt::FlatCap));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawArc(circle, static_cast<int>(std::lround((-90 - from) * kSixteenths)),
                         static_cast<int>(std::lround(-(DialScale::kSweep - from) * kSixteenths)));
    }

    void paintLines() {
        const int count = static_cast<int>(std::lround(scale_.max / scale_.step)) * scale_.parts;
        for (int i = 0; i <= count; ++i) {
            const double value = scale_.max * i / count;
            const bool major = i % scale_.parts == 0;
            const bool half = scale_.parts % 2 == 0 && i % (scale_.parts / 2) == 0;
            const bool red = value >= scale_.redFrom - kEpsilon && scale_.redFrom < scale_.max;
            painter_.setPen(QPen(red     ? hues::kRedZone
                                 : major ? ink()
                                         : mixed(ink(), ground(), 0.35),
                                 side_ * (major ? 0.012 : 0.006), Qt::SolidLine, Qt::FlatCap));
            painter_.drawLine(at(value, major ? kMajorStart : half ? kHalfStart : kMinorStart), at(value, kLineEnd));
        }
    }

    void paintNumbers() {
        painter_.setFont(fontOf(kNumberHeight, true));
        const QFontMetricsF metrics(painter_.font());
        const int count = static_cast<int>(std::lround(scale_.max / scale_.step));
        for (int i = 0; i <= count; ++i) {
            const double value = scale_.step * i;
            const bool red = value >= scale_.redFrom - kEpsilon && scale_.redFrom < scale_.max;
            painter_.setPen(red ? hues::kRedZone : ink());
            const QString words = QString::number(value / scale_.numberUnit, 'f', scale_.decimals);
            const QPointF place = at(value, i == 0 ? kZeroRadius : kNumberRadius);
            painter_.drawText(place - QPointF(metrics.horizontalAdvance(words) / 2, -metrics.capHeight() / 2), words);
        }
    }

    void paintText(const QString& words, QPointF place, double height, bool bold, const QColor& color) {
        painter_.setFont(fontOf(height, bold));
        painter_.setPen(color);
        const QFontMetricsF metrics(painter_.font());
        painter_.drawText(place * side_ - QPointF(metrics.horizontalAdvance(words) / 2, -metrics.capHeight() / 2),
                          words);
    }

    [[nodiscard]] QFont fontOf(double height, bool bold) const {
        QFont font = font_;
        font.setPixelSize(std::max(7, static_cast<int>(std::lround(height * side_))));
        font.setBold(bold);
        return font;
    }

    QPainter& painter_;
    const DialScale& scale_;
    double side_;
    const QPalette& palette_;
    const QFont& font_;
};

}  // namespace

DialScale dialScaleOf(int meterType) {
    if (meterType == 1) {
        return {.name = QStringLiteral("RPM"),
                .unit = QStringLiteral("× 1000"),
                .max = 10000,
                .step = 1000,
                .parts = 4,
                .numberUnit = 1000,
                .redFrom = 8000};
    }
    return {.name = QStringLiteral("Boost"),
            .unit = QStringLiteral("bar"),
            .max = 3,
            .step = 0.5,
            .parts = 10,
            .decimals = 1,
            .redFrom = 3};
}

QPointF dialPoint(double degrees, double radius, double side) {
    const double angle = degrees * std::numbers::pi / 180;
    return {side / 2 * (1 - std::sin(angle) * radius), side / 2 * (1 + std::cos(angle) * radius)};
}

QPixmap paintDialFace(const DialScale& scale, int side, qreal pixelRatio, const QPalette& palette, const QFont& font) {
    const int pixels = static_cast<int>(std::ceil(side * pixelRatio));
    QPixmap face(pixels, pixels);
    face.setDevicePixelRatio(pixelRatio);
    face.fill(Qt::transparent);
    QPainter painter(&face);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    FacePainter(painter, scale, side, palette, font).paint();
    return face;
}

}  // namespace korvane::views
