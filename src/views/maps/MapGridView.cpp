#include "views/maps/MapGridView.h"

#include <QAccessible>
#include <QEvent>
#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kTextOfHeight = 0.58;  // of a cell's height, for the text's pixel size
constexpr int kTextMargin = 5;
constexpr double kLargestText = 2.2;  // of the usual size
constexpr int kSmallestPixels = 7;
constexpr double kNarrowest = 0.5;  // of its width, for a text that is too long
constexpr double kLabelScale = 0.92;
constexpr int kLabelGap = 6;
constexpr double kUsualCellHeight = 1.9;  // of the usual text size
constexpr double kSmallestCellHeight = 1.45;
constexpr double kUsualCellWidth = 4.0;
constexpr double kSmallestCellWidth = 2.2;
constexpr double kDimGround = 0.62;
constexpr double kDimText = 0.3;
constexpr double kLineShare = 0.24;
constexpr double kMarkedLabelShare = 0.22;
constexpr int kMark = 2;
constexpr int kManyChanges = 24;         // from here on the whole grid is painted at once
constexpr std::size_t kShortestFit = 4;  // characters
constexpr double kLowContrast = 3;
constexpr int kPlateMargin = 4;
constexpr const char* kWidestLabel = "150-160";

template <class Element>
void put(std::vector<Element>& elements, int index, Element value, QWidget& widget, const QRect& place) {
    auto& element = elements.at(static_cast<std::size_t>(index));
    if (!(element == value)) {
        element = std::move(value);
        widget.update(place);
    }
}

// `count` parts between `first` and `last`, as equal as whole pixels allow.
std::vector<int> edges(int first, int last, int count) {
    std::vector<int> result;
    for (int i = 0; i <= count; ++i) {
        result.push_back(first + (last - first) * i / count);
    }
    return result;
}

std::optional<int> partAt(const std::vector<int>& begins, int position) {
    const auto next = std::upper_bound(begins.begin(), begins.end(), position);
    if (next == begins.begin() || next == begins.end()) {
        return std::nullopt;
    }
    return static_cast<int>(next - begins.begin()) - 1;
}

}  // namespace

MapGridView::MapGridView(maps::MapGeometry geometry, QWidget* parent)
    : QWidget(parent),
      geometry_(geometry),
      cells_(static_cast<std::size_t>(geometry.cells())),
      columnLabels_(static_cast<std::size_t>(geometry.columns)),
      rowLabels_(static_cast<std::size_t>(geometry.rows)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    layOut();
}

void MapGridView::setCell(int cell, Cell look) {
    auto& kept = cells_.at(static_cast<std::size_t>(cell));
    if (kept == look) {
        return;
    }
    const bool newText = kept.text != look.text;
    if (newText) {
        countText(kept.text, -1);
        countText(look.text, 1);
    }
    kept = std::move(look);
    repaintCell(cell);
    if (newText && focusCell_ == cell) {
        announce(cell);
    }
}

void MapGridView::setColumnLabel(int column, Label label) {
    put(columnLabels_, column, std::move(label), *this, columnLabelRect(column));
}

void MapGridView::setRowLabel(int row, Label label) {
    put(rowLabels_, row, std::move(label), *this, rowLabelRect(row));
}

void MapGridView::setTextScale(double scale) {
    if (scale != textScale_) {
        textScale_ = scale;
        fitText();
        update();
    }
}

void MapGridView::setFocusCell(std::optional<int> cell) {
    if (cell == focusCell_) {
        return;
    }
    repaintMark();
    focusCell_ = cell;
    repaintMark();
    if (cell && hasFocus()) {
        QAccessibleEvent event(this, QAccessible::Focus);
        event.setChild(*cell);
        QAccessible::updateAccessibility(&event);
    }
}

std::optional<int> MapGridView::cellAt(QPoint point) const {
    const auto column = partAt(columns_, point.x());
    const auto row = partAt(rows_, point.y());
    return column && row ? std::optional(*row * geometry_.columns + *column) : std::nullopt;
}

QRect MapGridView::cellRect(int cell) const {
    const auto column = static_cast<std::size_t>(cell % geometry_.columns);
    const auto row = static_cast<std::size_t>(cell / geometry_.columns);
    const QPoint corner(columns_.at(column), rows_.at(row));
    return {corner, QPoint(columns_.at(column + 1) - 2, rows_.at(row + 1) - 2)};
}

QRect MapGridView::columnLabelRect(int column) const {
    const auto at = static_cast<std::size_t>(column);
    return {QPoint(columns_.at(at), 0), QPoint(columns_.at(at + 1) - 2, rows_.front() - 1)};
}

QRect MapGridView::rowLabelRect(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return {QPoint(0, rows_.at(at)), QPoint(columns_.front() - 1, rows_.at(at + 1) - 2)};
}

QString MapGridView::nameOf(int cell) const {
    const int row = cell / geometry_.columns;
    return QStringLiteral("%1 %2 rpm %3-%4")
        .arg(accessibleName())
        .arg(geometry_.rpmOf(cell))
        .arg(row * 10)
        .arg((row + 1) * 10);
}

QString MapGridView::stateOf(int index) const {
    const Cell& look = cell(index);
    QStringList words;
    if (look.back == controls::kGreen) {
        words << QStringLiteral("selected");
    } else if (look.back == controls::kRed) {
        words << QStringLiteral("engine is here");
    }
    if (look.fore == controls::kBlue) {
        words << QStringLiteral("changed");
    } else if (look.fore == controls::kRed) {
        words << QStringLiteral("longer than the time available");
    }
    return words.join(QStringLiteral(", "));
}

int MapGridView::usualPixels() const {
    return QFontInfo(font()).pixelSize();
}

QSize MapGridView::sizeFor(int cellWidth, int cellHeight) const {
    return {rowLabelWidth() + geometry_.columns * cellWidth + 1, headerHeight() + geometry_.rows * cellHeight + 1};
}

QSize MapGridView::sizeHint() const {
    const double pixels = usualPixels();
    return sizeFor(static_cast<int>(pixels * kUsualCellWidth), static_cast<int>(pixels * kUsualCellHeight));
}

QSize MapGridView::minimumSizeHint() const {
    const double pixels = usualPixels();
    return sizeFor(static_cast<int>(pixels * kSmallestCellWidth), static_cast<int>(pixels * kSmallestCellHeight));
}

int MapGridView::rowLabelWidth() const {
    return static_cast<int>(std::ceil(boldLabel_.width(QLatin1String(kWidestLabel)))) + kLabelGap;
}

int MapGridView::headerHeight() const {
    return static_cast<int>(std::ceil(boldLabel_.ascent() + boldLabel_.descent())) + 2;
}

void MapGridView::layOut() {
    QFont label = font();
    label.setPixelSize(std::max(kSmallestPixels, static_cast<int>(std::lround(usualPixels() * kLabelScale))));
    label.setBold(false);
    plainLabel_.setFont(label);
    label.setBold(true);
    boldLabel_.setFont(label);
    columns_ =
        edges(rowLabelWidth() + 1, std::max(width(), rowLabelWidth() + 1 + geometry_.columns), geometry_.columns);
    rows_ = edges(headerHeight() + 1, std::max(height(), headerHeight() + 1 + geometry_.rows), geometry_.rows);
    fitText();
}

void MapGridView::countText(const QString& text, int change) {
    const auto before = longestText();
    lengths_[std::min(static_cast<std::size_t>(text.size()), lengths_.size() - 1)] += change;
    if (longestText() != before) {
        fitText();
        update();
    }
}

// Characters, within the lengths that the size of the text follows; longer texts are drawn narrower.
int MapGridView::longestText() const {
    std::size_t longest = lengths_.size() - 1;
    while (longest > kShortestFit && lengths_[longest] == 0) {
        --longest;
    }
    return static_cast<int>(longest);
}

// As large as the longest number and the height of a cell allow.
void MapGridView::fitText() {
    const QSize room = cellRect(0).size();
    QFont sized = font();
    sized.setPixelSize(usualPixels());
    sized.setBold(true);
    TabularText usual;
    usual.setFont(sized);
    const QString widest = QStringLiteral(".").leftJustified(longestText(), u'0');
    const double byWidth = usualPixels() * (room.width() - 2 * kTextMargin) / std::max(usual.width(widest), 1.0);
    const double byHeight = room.height() * kTextOfHeight;
    const double pixels = std::min({byWidth, byHeight, usualPixels() * kLargestText}) * textScale_;
    sized.setPixelSize(std::max(kSmallestPixels, static_cast<int>(pixels)));
    bold_.setFont(sized);
    sized.setBold(false);
    plain_.setFont(sized);
}

void MapGridView::repaintCell(int cell) {
    if (++changes_ < kManyChanges) {
        update(cellRect(cell));
    } else if (changes_ == kManyChanges) {
        update();
    }
}

void MapGridView::repaintMark() {
    if (focusCell_) {
        update(cellRect(*focusCell_));
        update(columnLabelRect(*focusCell_ % geometry_.columns));
        update(rowLabelRect(*focusCell_ / geometry_.columns));
    }
}

// The value that a key has just changed.
void MapGridView::announce(int index) const {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(const_cast<MapGridView*>(this), cell(index).text);
        event.setChild(index);
        QAccessible::updateAccessibility(&event);
    }
}

MapGridView::Colors MapGridView::colorsOf(const Cell& cell) const {
    // The program sets black, blue and red texts on white: a cell without own colours is black on white too, in every
    // palette.
    const auto shown = [this](controls::Color color, controls::Color usual) {
        return controls::isSystemColor(color) ? colorOf(usual, palette()) : colorOf(color, palette());
    };
    Colors colors{shown(cell.back, controls::kWhite), shown(cell.fore, controls::kBlack)};
    if (!cell.enabled || !isEnabled()) {
        colors.back = mixed(colors.back, shades::tile(palette()), kDimGround);
        colors.fore = mixed(palette().color(QPalette::WindowText), colors.back, kDimText);
    }
    return colors;
}

void MapGridView::paintEvent(QPaintEvent* event) {
    changes_ = 0;
    QPainter painter(this);
    const QRegion& region = event->region();
    const QColor line = mixed(shades::surface(palette()), palette().color(QPalette::WindowText), kLineShare);
    painter.fillRect(rect(), shades::surface(palette()));
    const QRect grid(QPoint(columns_.front() - 1, rows_.front() - 1), QPoint(columns_.back() - 1, rows_.back() - 1));
    painter.fillRect(grid, line);
    paintLabels(painter, region);
    for (int cell = 0; cell < geometry_.cells(); ++cell) {
        if (region.intersects(cellRect(cell))) {
            paintCell(painter, cell);
        }
    }
    if (focusCell_ && hasFocus()) {
        paintMark(painter);
    }
}

void MapGridView::paintCell(QPainter& painter, int index) const {
    const Cell& look = cell(index);
    const QRect place = cellRect(index);
    const Colors colors = colorsOf(look);
    painter.fillRect(place, colors.back);
    if (look.text.isEmpty()) {
        return;
    }
    // Blue or red on the red of the running cell can't be read: the number gets a ground of its own then.
    if (look.enabled && contrast(colors.fore, colors.back) < kLowContrast) {
        painter.fillRect(place.adjusted(kPlateMargin, kPlateMargin, -kPlateMargin, -kPlateMargin),
                         colorOf(controls::kWhite, palette()));
    }
    paintText(painter, place, look, colors);
}

void MapGridView::paintText(QPainter& painter, const QRect& place, const Cell& look, const Colors& colors) const {
    const auto& text = look.bold ? bold_ : plain_;
    const qreal width = text.width(look.text);
    const qreal squeeze = std::clamp((place.width() - 2.0) / std::max(width, 1.0), kNarrowest, 1.0);
    const qreal baseline = place.y() + (place.height() + text.digitHeight()) / 2;
    const QPointF at(place.x() + (place.width() - width * squeeze) / 2, std::round(baseline));
    painter.setPen(colors.fore);
    if (squeeze < 1) {
        painter.save();
        painter.setClipRect(place);
        painter.translate(at);
        painter.scale(squeeze, 1);
        text.draw(painter, {}, look.text);
        painter.restore();
    } else {
        text.draw(painter, at, look.text);
    }
}

void MapGridView::paintMark(QPainter& painter) const {
    const QRect place = cellRect(*focusCell_);
    const QColor color = colorOf(controls::kBlack, palette());
    painter.fillRect(QRect(place.topLeft(), QSize(place.width(), kMark)), color);
    painter.fillRect(QRect(place.left(), place.bottom() - kMark + 1, place.width(), kMark), color);
    painter.fillRect(QRect(place.topLeft(), QSize(kMark, place.height())), color);
    painter.fillRect(QRect(place.right() - kMark + 1, place.top(), kMark, place.height()), color);
}

void MapGridView::paintLabels(QPainter& painter, const QRegion& region) const {
    const bool marks = focusCell_ && hasFocus();
    for (int column = 0; column < geometry_.columns; ++column) {
        if (const QRect place = columnLabelRect(column); region.intersects(place)) {
            const bool marked = marks && *focusCell_ % geometry_.columns == column;
            paintLabel(painter, place, columnLabels_[static_cast<std::size_t>(column)], Qt::AlignHCenter, marked);
        }
    }
    for (int row = 0; row < geometry_.rows; ++row) {
        if (const QRect place = rowLabelRect(row); region.intersects(place)) {
            const bool marked = marks && *focusCell_ / geometry_.columns == row;
            paintLabel(painter, place, rowLabels_[static_cast<std::size_t>(row)], Qt::AlignRight, marked);
        }
    }
}

void MapGridView::paintLabel(QPainter& painter, const QRect& place, const Label& label, Qt::Alignment alignment,
                             bool marked) const {
    const auto& text = label.bold || marked ? boldLabel_ : plainLabel_;
    const QColor ink = palette().color(QPalette::WindowText);
    if (marked) {
        painter.fillRect(place,
                         mixed(shades::surface(palette()), palette().color(QPalette::Highlight), kMarkedLabelShare));
    }
    const qreal width = text.width(label.text);
    const qreal squeeze = std::clamp(place.width() / std::max(width, 1.0), kNarrowest, 1.0);
    const qreal free = place.width() - width * squeeze;
    const qreal x = place.x() + (alignment == Qt::AlignRight ? free - std::min(free, kLabelGap - 1.0) : free / 2);
    const qreal baseline = place.y() + (place.height() + text.digitHeight()) / 2;
    painter.setPen(marked && isEnabled() ? ink : shades::muted(palette()));
    painter.save();
    painter.translate(x, std::round(baseline));
    painter.scale(squeeze, 1);
    text.draw(painter, {}, label.text);
    painter.restore();
}

void MapGridView::resizeEvent(QResizeEvent*) {
    layOut();
}

void MapGridView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        layOut();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

void MapGridView::focusInEvent(QFocusEvent*) {
    repaintMark();
}

void MapGridView::focusOutEvent(QFocusEvent*) {
    repaintMark();
}

}  // namespace korvane::views
