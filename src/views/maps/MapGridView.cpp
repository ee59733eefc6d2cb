#include "views/maps/MapGridView.h"

#include <QAccessible>
#include <QEvent>
#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

#include "maps/grid/HeatLevels.h"
#include "views/maps/GridMarks.h"
#include "views/widgets/HeatColors.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

static_assert(maps::kHeatLevels == kHeatColors);

constexpr double kTextOfHeight = 0.58;  // of a cell's height, for the text's pixel size
constexpr int kTextMargin = 5;
constexpr double kLargestText = 2.2;  // of the usual size
constexpr int kSmallestPixels = 7;
constexpr double kUsualCellHeight = 1.9;  // of the usual text size
constexpr double kSmallestCellHeight = 1.45;
constexpr double kUsualCellWidth = 4.0;
constexpr double kSmallestCellWidth = 2.2;
constexpr double kLineShare = 0.24;
constexpr int kManyChanges = 24;  // from here on the whole grid is painted at once

}  // namespace

MapGridView::MapGridView(maps::MapGeometry geometry, QWidget* parent)
    : QWidget(parent), layout_(geometry), labels_(geometry), cells_(static_cast<std::size_t>(geometry.cells())) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    layOut();
}

MapGridView::~MapGridView() {
    if (shared_) {
        shared_->leave(*this);
    }
}

void MapGridView::setCell(int cell, Cell look) {
    auto& kept = cells_.at(static_cast<std::size_t>(cell));
    if (kept == look) {
        return;
    }
    const bool newText = kept.text != look.text;
    if (newText) {
        const int before = texts_.characters(aligned_);
        texts_.replace(kept.text, look.text);
        textsChanged_ = true;
        if (texts_.characters(aligned_) != before) {
            tellRoom();
        }
    }
    kept = std::move(look);
    repaintCell(cell);
    if (newText && focusCell_ == cell) {
        announce(cell);
    }
}

void MapGridView::setColumnLabel(int column, Label label) {
    if (auto& kept = labels_.column(column); !(kept == label)) {
        kept = std::move(label);
        update(layout_.columnLabelRect(column));
    }
}

void MapGridView::setRowLabel(int row, Label label) {
    if (auto& kept = labels_.row(row); !(kept == label)) {
        kept = std::move(label);
        update(layout_.rowLabelRect(row));
    }
}

void MapGridView::setTextScale(double scale) {
    if (scale != textScale_) {
        textScale_ = scale;
        fitText();
    }
}

void MapGridView::shareDigits(std::shared_ptr<SharedDigits> shared) {
    shared_ = std::move(shared);
    tellRoom();
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

void MapGridView::setEngineCell(std::optional<int> cell) {
    if (const auto before = std::exchange(engineCell_, cell); before != cell) {
        for (const auto& changed : {before, cell}) {
            if (changed) {
                update(engineRingRect(cellRect(*changed)));
            }
        }
    }
}

void MapGridView::setBlock(std::optional<maps::CellRange> block) {
    if (block != block_) {
        repaintBlock();
        block_ = block;
        repaintBlock();
    }
}

void MapGridView::setTinted(bool tinted) {
    if (tinted != !heat_.empty()) {
        heat_ = tinted ? levels() : std::vector<int>();
        update();
    }
}

void MapGridView::setAligned(bool aligned) {
    if (aligned != aligned_) {
        aligned_ = aligned;
        alignTexts();
        tellRoom();
        update();
    }
}

void MapGridView::fitLook() {
    if (!std::exchange(textsChanged_, false)) {
        return;
    }
    alignTexts();
    if (heat_.empty()) {
        return;
    }
    const auto before = std::exchange(heat_, levels());
    for (std::size_t cell = 0; cell < heat_.size(); ++cell) {
        if (heat_[cell] != before[cell]) {
            repaintCell(static_cast<int>(cell));
        }
    }
}

void MapGridView::alignTexts() {
    const int whole = aligned_ ? texts_.wholeDigits() : 0;
    if (painter_.align(whole, aligned_ ? texts_.decimals() : 0)) {
        update();
    }
}

std::vector<int> MapGridView::levels() const {
    std::vector<double> numbers;
    numbers.reserve(cells_.size());
    for (const auto& each : cells_) {
        numbers.push_back(each.text.toDouble());
    }
    return maps::heatLevels(numbers);
}

std::optional<int> MapGridView::heatOf(int cell) const {
    return heat_.empty() ? std::nullopt : std::optional(heat_.at(static_cast<std::size_t>(cell)));
}

QString MapGridView::nameOf(int cell) const {
    const int row = cell / geometry().columns;
    return QStringLiteral("%1 %2 rpm %3-%4")
        .arg(accessibleName())
        .arg(geometry().rpmOf(cell))
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
    if (block_ && block_->has(index)) {
        words << QStringLiteral("in the block");
    }
    if (engineCell_ == index) {
        words << QStringLiteral("engine runs here now");
    }
    return words.join(QStringLiteral(", "));
}

int MapGridView::usualPixels() const {
    return QFontInfo(font()).pixelSize();
}

// Of cells of so many text sizes.
QSize MapGridView::sizeFor(double cellWidth, double cellHeight) const {
    const auto cells = [this](int count, double size) { return count * static_cast<int>(usualPixels() * size) + 1; };
    return labels_.room() + QSize(cells(geometry().columns, cellWidth), cells(geometry().rows, cellHeight));
}

QSize MapGridView::sizeHint() const {
    return sizeFor(kUsualCellWidth, kUsualCellHeight);
}

QSize MapGridView::minimumSizeHint() const {
    return sizeFor(kSmallestCellWidth, kSmallestCellHeight);
}

void MapGridView::layOut() {
    labels_.setFont(font(), usualPixels());
    layout_.divide(size(), labels_.room());
    placeOverlay();
    tellRoom();
}

void MapGridView::setOverlay(QWidget& overlay) {
    overlay_ = &overlay;
    placeOverlay();
}

void MapGridView::placeOverlay() {
    if (overlay_ != nullptr) {
        QRect place(QPoint(), overlay_->sizeHint());
        place.moveCenter(layout_.rowsRect(0, geometry().cells() - 1).center());
        overlay_->setGeometry(place);
    }
}

DigitRoom MapGridView::ownRoom() const {
    return {cellRect(0).size(), texts_.characters(aligned_)};
}

// Others that share the size may get another one too.
void MapGridView::tellRoom() {
    if (shared_) {
        shared_->tell(*this, isVisible(), ownRoom());
    }
    fitText();
}

void MapGridView::sharedRoomChanged() {
    fitText();
}

// As large as the longest number and the height of a cell allow.
void MapGridView::fitText() {
    const auto [room, characters] = shared_ ? shared_->room() : ownRoom();
    QFont sized = font();
    sized.setPixelSize(usualPixels());
    sized.setBold(true);
    TabularText usual;
    usual.setFont(sized);
    const QString widest = QStringLiteral(".").leftJustified(characters, u'0');
    const double byWidth = usualPixels() * (room.width() - 2 * kTextMargin) / std::max(usual.width(widest), 1.0);
    const double byHeight = room.height() * kTextOfHeight;
    const double pixels = std::min({byWidth, byHeight, usualPixels() * kLargestText}) * textScale_;
    digitPixels_ = std::max(kSmallestPixels, static_cast<int>(pixels));
    painter_.setFont(font(), digitPixels_);
    update();
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
        update(layout_.columnLabelRect(*focusCell_ % geometry().columns));
        update(layout_.rowLabelRect(*focusCell_ / geometry().columns));
    }
}

void MapGridView::repaintBlock() {
    if (block_) {
        update(layout_.rowsRect(block_->first, block_->last));
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

void MapGridView::paintEvent(QPaintEvent* event) {
    changes_ = 0;
    QPainter painter(this);
    const QRegion& region = event->region();
    painter.fillRect(rect(), shades::surface(palette()));
    painter.fillRect(layout_.gridRect(),
                     mixed(shades::surface(palette()), palette().color(QPalette::WindowText), kLineShare));
    labels_.paint(painter, region, layout_, palette(), markedCell());
    paintCells(painter, region);
    if (block_) {
        paintOutline(painter, layout_, *block_);
    }
    if (const auto marked = markedCell()) {
        paintFocusMark(painter, cellRect(*marked), colorOf(controls::kBlack, palette()));
    }
}

void MapGridView::paintCells(QPainter& painter, const QRegion& region) const {
    for (int index = 0; index < geometry().cells(); ++index) {
        if (const QRect place = cellRect(index); region.intersects(place)) {
            painter_.paint(painter, place, cell(index), palette(), heatOf(index).value_or(-1), engineCell_ == index);
        }
    }
}

void MapGridView::resizeEvent(QResizeEvent*) {
    layOut();
}

void MapGridView::showEvent(QShowEvent*) {
    tellRoom();
}

void MapGridView::hideEvent(QHideEvent*) {
    tellRoom();
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
