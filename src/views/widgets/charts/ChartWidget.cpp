#include "views/widgets/charts/ChartWidget.h"

#include <QFontInfo>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

#include "core/Numbers.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kDegreesPerPixel = 0.5;
constexpr double kDegreesPerKey = 5;
constexpr double kZoomPerNotch = 1.15;
constexpr double kNotch = 120;  // of the wheel, as the toolkit counts
constexpr double kSmallestZoom = 0.5;
constexpr double kLargestZoom = 6;
constexpr double kFontShare = 0.88;
constexpr double kTextGap = 12;
constexpr double kTop = 14;
constexpr double kSlanted = 0.8;  // of a text's length: how far one that runs down a slope reaches
constexpr double kLargestByte = 255;
constexpr double kRadius = 6;
constexpr double kSign = 5;  // half the side of a mark
constexpr double kSignLine = 1.5;
constexpr double kSignGap = 3;

double byteOf(const QString& text) {
    return std::clamp(core::val(text.toStdString()), 0.0, kLargestByte);
}

}  // namespace

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartWidget::setContent(Content content) {
    scene_.rowLabels = std::move(content.rowLabels);
    scene_.columnLabels = std::move(content.columnLabels);
    data_ = std::move(content.data);
    std::vector<double> bytes(data_.size());
    std::transform(data_.begin(), data_.end(), bytes.begin(), byteOf);
    scene_.scale = heightScaleFor(bytes.empty() ? 0 : *std::max_element(bytes.begin(), bytes.end()));
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), [this](double byte) { return byte / scene_.scale.top; });
    scene_.heights = {static_cast<int>(scene_.rowLabels.size()), static_cast<int>(scene_.columnLabels.size()),
                      std::move(bytes), std::move(scene_.heights.missing)};
    scene_.marked.reset();
    arrange();
}

void ChartWidget::setMissing(const std::vector<bool>& missing) {
    if (missing != scene_.heights.missing) {
        scene_.heights.missing = missing;
        scene_.marked.reset();
        arrange();
    }
}

void ChartWidget::setPresentation(Presentation presentation) {
    presentation_ = presentation;
    arrange();
}

QString ChartWidget::cellName() const {
    if (!scene_.marked) {
        return {};
    }
    const auto cell = static_cast<std::size_t>(*scene_.marked);
    const std::size_t columns = scene_.columnLabels.size();
    return QStringLiteral("%1,  %2:  %3")
        .arg(scene_.columnLabels.at(cell % columns), scene_.rowLabels.at(cell / columns), data_.at(cell));
}

QFont ChartWidget::labelFont() const {
    QFont small = font();
    small.setPixelSize(std::max(8, static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * kFontShare))));
    return small;
}

// The texts are below the map more than above it.
QPointF ChartWidget::middle() const {
    return {width() / 2.0, (height() - margin_.height() + kTop) / 2.0};
}

Projection ChartWidget::projection() const {
    const QSizeF room(width() - 2 * margin_.width(), height() - margin_.height() - kTop);
    return {turn_, middle() + shift_, Projection::scaleFor(turn_.elevation, room) * zoom_};
}

void ChartWidget::arrange() {
    const double widest = std::max(ChartPainter::largestOf(scene_.rowLabels, labelFont()).width(),
                                   ChartPainter::largestOf(scene_.columnLabels, labelFont()).width());
    margin_ = {widest + kTextGap, widest * kSlanted + kTextGap};
    const bool sheet = presentation_ == Presentation::Surface && scene_.heights.rows > 1 && scene_.heights.columns > 1;
    scene_.faces = sheet ? sheetOf(scene_.heights, projection()) : barsOf(scene_.heights, projection());
    findMarked();
    repaintMap();
}

void ChartWidget::repaintMap() {
    painted_.reset();
    update();
}

void ChartWidget::setMarks(const Marks& marks) {
    if (marks != marks_) {
        marks_ = marks;
        update();
    }
}

void ChartWidget::findMarked() {
    mark(mouse_ && !dragged_ ? cellAt(scene_.faces, *mouse_) : std::nullopt);
}

void ChartWidget::mark(std::optional<int> cell) {
    scene_.marked = cell;
    setAccessibleDescription(cellName());
    repaintMap();
    if (named_) {
        named_();
    }
}

void ChartWidget::turnBy(double degreesRound, double degreesUp) {
    turn_ = turn_.by(degreesRound, degreesUp);
    arrange();
}

// What is under the point stays there; at its usual size or a smaller one the map is centred.
void ChartWidget::zoomAt(QPointF point, double factor) {
    const double zoom = std::clamp(zoom_ * factor, kSmallestZoom, kLargestZoom);
    const QPointF fromMiddle = point - middle();
    shift_ = zoom > 1 ? fromMiddle - (fromMiddle - shift_) * (zoom / zoom_) : QPointF();
    zoom_ = zoom;
    arrange();
}

void ChartWidget::resetSight() {
    turn_ = {};
    zoom_ = 1;
    shift_ = {};
    arrange();
}

void ChartWidget::paintEvent(QPaintEvent*) {
    if (painted_ != look()) {
        paintMap();
        painted_ = look();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, map_);
    painter.setRenderHint(QPainter::Antialiasing);
    paintMarks(painter);
}

void ChartWidget::paintMap() {
    map_ = QPixmap(size() * devicePixelRatioF());
    map_.setDevicePixelRatio(devicePixelRatioF());
    map_.fill(palette().color(QPalette::Window));
    QPainter painter(&map_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hasFocus() ? palette().color(QPalette::Highlight) : shades::border(palette()), 1));
    painter.setBrush(shades::face(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    if (scene_.heights.values.empty()) {
        return;
    }
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
    painter.setFont(labelFont());
    const Projection sight = projection();
    ChartPainter(painter, scene_, sight, palette()).paint();
}

// The engine's mark is over the other one: it moves.
void ChartWidget::paintMarks(QPainter& painter) const {
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
    painter.setFont(labelFont());
    const auto paint = [&](const std::optional<int>& cell, bool round) {
        if (cell && *cell >= 0 && static_cast<std::size_t>(*cell) < scene_.heights.values.size()) {
            paintMark(painter, *cell, round);
        }
    };
    paint(marks_.focus, false);
    paint(marks_.engine, true);
}

// With the cell: where a mark is hidden by the map in front of it, the eye would take it for another one.
QString ChartWidget::markName(int cell, bool engine) const {
    const auto place = static_cast<std::size_t>(cell);
    const std::size_t columns = scene_.columnLabels.size();
    return QStringLiteral("%1: %2, %3")
        .arg(engine ? QStringLiteral("engine") : QStringLiteral("focus"), scene_.columnLabels.at(place % columns),
             scene_.rowLabels.at(place / columns));
}

// A sign on a line from the floor, so that the place can be read, with its name.
void ChartWidget::paintMark(QPainter& painter, int cell, bool round) const {
    const Projection sight = projection();
    const Place top = scene_.heights.topOf(cell);
    const QPointF at = sight.at(top);
    const QRectF sign(at - QPointF(kSign, kSign), QSizeF(2 * kSign, 2 * kSign));
    const QColor ink = palette().color(QPalette::Text);
    painter.setPen(QPen(ink, 1, Qt::DashLine));
    painter.drawLine(sight.at({top.x, top.y, 0}), at);
    painter.setPen(QPen(shades::isDark(palette()) ? Qt::white : Qt::black, kSignLine));
    painter.setBrush(round ? hues::kRedLamp : QColor(Qt::yellow));
    round ? painter.drawEllipse(sign) : painter.drawRect(sign);
    const QString name = markName(cell, round);
    const QPointF right = round ? sign.topRight() : sign.bottomRight() + QPointF(0, kSign);
    const double wide = painter.fontMetrics().horizontalAdvance(name);
    const bool fits = right.x() + kSignGap + wide < width();
    painter.setPen(ink);
    painter.drawText(fits ? right + QPointF(kSignGap, 0) : right - QPointF(2 * kSign + kSignGap + wide, 0), name);
}

void ChartWidget::resizeEvent(QResizeEvent*) {
    arrange();
}

void ChartWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        arrange();
    }
    QWidget::changeEvent(event);
}

void ChartWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        dragged_ = event->position();
        setCursor(Qt::ClosedHandCursor);
    }
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event) {
    mouse_ = event->position();
    if (dragged_) {
        const QPointF way = event->position() - *dragged_;
        dragged_ = event->position();
        turnBy(way.x() * kDegreesPerPixel, way.y() * kDegreesPerPixel);
    } else if (const auto cell = cellAt(scene_.faces, *mouse_); cell != scene_.marked) {
        mark(cell);
    }
}

void ChartWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && dragged_) {
        dragged_.reset();
        unsetCursor();
        findMarked();
    }
}

void ChartWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        resetSight();
    }
}

void ChartWidget::wheelEvent(QWheelEvent* event) {
    zoomAt(event->position(), std::pow(kZoomPerNotch, event->angleDelta().y() / kNotch));
    event->accept();
}

void ChartWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            return turnBy(-kDegreesPerKey, 0);
        case Qt::Key_Right:
            return turnBy(kDegreesPerKey, 0);
        case Qt::Key_Up:
            return turnBy(0, -kDegreesPerKey);
        case Qt::Key_Down:
            return turnBy(0, kDegreesPerKey);
        case Qt::Key_Plus:
            return zoomAt(middle(), kZoomPerNotch);
        case Qt::Key_Minus:
            return zoomAt(middle(), 1 / kZoomPerNotch);
        case Qt::Key_Home:
            return resetSight();
        default:
            QWidget::keyPressEvent(event);
    }
}

void ChartWidget::leaveEvent(QEvent*) {
    mouse_.reset();
    mark({});
}

}  // namespace korvane::views
