#include "views/widgets/Icons.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

#include "views/widgets/Palette.h"
#include "views/widgets/values/DialFace.h"

namespace korvane::views {

namespace {

constexpr std::array kSizes{16, 24, 32, 48, 64, 128, 256};
constexpr QColor kBody{24, 27, 32};
constexpr QColor kMarks{232, 234, 238};
constexpr double kNeedleDegrees = 205;
constexpr double kRedFromDegrees = 216;
constexpr int kMarkCount = 6;

QPixmap dialPicture(int side) {
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBody);
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * 0.22, side * 0.22);
    for (int mark = 0; mark <= kMarkCount; ++mark) {
        const double degrees = DialScale::kSweep * mark / kMarkCount;
        painter.setPen(
            QPen(degrees >= kRedFromDegrees ? hues::kRedZone : kMarks, side * 0.055, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(dialPoint(degrees, 0.64, side), dialPoint(degrees, 0.78, side));
    }
    painter.setPen(QPen(hues::kPeak, side * 0.085, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(side / 2.0, side / 2.0), dialPoint(kNeedleDegrees, 0.52, side));
    painter.setPen(Qt::NoPen);
    painter.setBrush(kMarks);
    painter.drawEllipse(QPointF(side / 2.0, side / 2.0), side * 0.09, side * 0.09);
    return picture;
}

// The segments of an 8, as a symbol of a number.
QPixmap numberPicture(int side, const QColor& ink) {
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = side / 16.0;
    painter.setPen(QPen(ink, unit * 1.3));
    painter.drawRoundedRect(QRectF(unit, 2 * unit, 14 * unit, 12 * unit), 2 * unit, 2 * unit);
    painter.setPen(QPen(ink, unit * 1.7, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    for (const double left : {4.2, 9.2}) {
        painter.drawRect(QRectF(left * unit, 4.9 * unit, 2.6 * unit, 6.2 * unit));
        painter.drawLine(QPointF(left * unit, 8 * unit), QPointF((left + 2.6) * unit, 8 * unit));
    }
    return picture;
}

}  // namespace

QIcon programIcon() {
    QIcon icon;
    for (const int side : kSizes) {
        icon.addPixmap(dialPicture(side));
    }
    return icon;
}

QIcon bigReadoutIcon(const QPalette& palette) {
    QIcon icon;
    for (const int side : kSizes) {
        icon.addPixmap(numberPicture(side, palette.color(QPalette::ButtonText)));
        icon.addPixmap(numberPicture(side, palette.color(QPalette::Disabled, QPalette::ButtonText)), QIcon::Disabled);
    }
    return icon;
}

}  // namespace korvane::views
