#include "views/widgets/values/LinkBadge.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

const QString kLongestWord = QStringLiteral("Paused");
const QString kLongest = kLongestWord + QStringLiteral(" 59 min");
constexpr double kGroundShare = 0.20;  // of the hue in the badge's ground
constexpr double kShapeShare = 0.6;    // of the badge's height
constexpr double kInkShare = 0.35;     // of the text's colour in the shape
constexpr int kPadding = 1;            // logical pixels above and below the word

QPolygonF polygon(const QRectF& place, std::initializer_list<QPointF> corners) {
    QPolygonF out;
    for (const auto& corner : corners) {
        out << place.topLeft() + QPointF(corner.x() * place.width(), corner.y() * place.height());
    }
    return out;
}

}  // namespace

LinkBadge::LinkBadge(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("linkBadge"));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LinkBadge::setState(const Look& look, const QString& word, const QString& age) {
    const QString words = age.isEmpty() ? word : word + u' ' + age;
    if (words == text() && look.shape == look_.shape && look.hue == look_.hue) {
        return;
    }
    look_ = look;
    word_ = word;
    setText(words);
    setAccessibleName(QStringLiteral("Line: ") + words);
    update();
}

int LinkBadge::side() const {
    return fontMetrics().height() + 2 * kPadding;
}

int LinkBadge::widthOf(const QString& words) const {
    return words.isEmpty() ? side() : side() + fontMetrics().horizontalAdvance(words) + side() / 2;
}

QString LinkBadge::fitting() const {
    return width() >= widthOf(text()) ? text() : width() >= widthOf(word_) ? word_ : QString();
}

QSize LinkBadge::sizeHint() const {
    return {widthOf(kLongest), side()};
}

QSize LinkBadge::minimumSizeHint() const {
    return {widthOf(kLongestWord), side()};
}

bool LinkBadge::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && tip_) {
        setToolTip(tip_());
    }
    return QLabel::event(event);
}

void LinkBadge::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
    QLabel::changeEvent(event);
}

void LinkBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = palette().color(QPalette::Window);
    const QString words = fitting();
    const QRectF pill(0, 0, widthOf(words), height());
    if (alignment().testFlag(Qt::AlignRight)) {
        painter.translate(width() - pill.width(), 0);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(ground, look_.hue, kGroundShare));
    painter.drawRoundedRect(pill, height() / 2.0, height() / 2.0);
    const double size = height() * kShapeShare;
    paintShape(painter, {(height() - size) / 2, (height() - size) / 2, size, size});
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(side(), 0, 0, 0), Qt::AlignVCenter, words);
}

void LinkBadge::paintShape(QPainter& painter, const QRectF& place) const {
    const QColor ink = mixed(look_.hue, palette().color(QPalette::WindowText), kInkShare);
    const QPen pen(ink, place.width() / 5, Qt::SolidLine, Qt::RoundCap);
    const double inset = place.width() / 10;
    const QRectF inside = place.adjusted(inset, inset, -inset, -inset);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    switch (look_.shape) {
        case Shape::Disc:
            painter.drawEllipse(place);
            break;
        case Shape::Ring:
            painter.setPen(pen);
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(inside);
            break;
        case Shape::Triangle:
            painter.drawPolygon(polygon(place, {{0.5, 0}, {1, 0.95}, {0, 0.95}}));
            break;
        case Shape::Bars:
            painter.drawRect(QRectF(place.left() + inset, place.top(), place.width() * 0.28, place.height()));
            painter.drawRect(QRectF(place.right() - inset - place.width() * 0.28, place.top(), place.width() * 0.28,
                                    place.height()));
            break;
        case Shape::Hourglass:
            painter.drawPolygon(polygon(place, {{0.1, 0}, {0.9, 0}, {0.1, 1}, {0.9, 1}}));
            break;
        case Shape::Cross:
            painter.setPen(pen);
            painter.drawLine(inside.topLeft(), inside.bottomRight());
            painter.drawLine(inside.topRight(), inside.bottomLeft());
            break;
    }
}

}  // namespace korvane::views
