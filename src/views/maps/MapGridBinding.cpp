#include "views/maps/MapGridBinding.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "maps/grid/MapGrid.h"
#include "views/frame/Binder.h"
#include "views/frame/Keys.h"
#include "views/maps/GridDigits.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/PlainTip.h"
#include "views/widgets/Reveal.h"

namespace korvane::views {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr double kUsualFontSize = 8;  // points
constexpr int kFirstMove = 33;        // page up, page down, end, home, the arrows
constexpr int kLastMove = 40;

// One widget for all cells. Keys go to the cell that has the window's focus, the mouse to the cell below it.
class MapGridBinding : public QObject, public BoundPart, private controls::Observer {
public:
    MapGridBinding(Binder& binder, maps::MapGrid& grid, MapGridView& view)
        : binder_(binder), grid_(grid), view_(view), window_(grid(0).window()), name_(grid(0).name()) {
        view_.setObjectName(QString::fromUtf8(name_.data(), static_cast<qsizetype>(name_.size())));
        view_.installEventFilter(this);
        window_.addObserver(*this);
        watch(grid.cells);
        watch(grid.columnLabels);
        watch(grid.rowLabels);
        waiting_.assign(static_cast<std::size_t>(grid.cells.count()), false);
        for (int cell = 0; cell < grid.cells.count(); ++cell) {
            showCell(cell);
        }
        showLabels();
    }

    void show() override {
        marked_ = false;
        for (const int cell : changed_) {
            waiting_[static_cast<std::size_t>(cell)] = false;
            showCell(cell);
        }
        changed_.clear();
        view_.fitLook();
        if (labelsChanged_) {
            showLabels();
        }
        showFocus();
    }

    void showColorsAgain() override { view_.update(); }

    void detach(const ControlSet& alive) override {
        view_.removeEventFilter(this);
        window_.removeObserver(*this);
        for (auto* control : watched_) {
            if (alive.contains(control)) {
                control->removeObserver(*this);
            }
        }
        watched_.clear();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != &view_ || !binder_.isAttached()) {
            return false;
        }
        switch (event->type()) {
            case QEvent::FocusIn:
                takeFocus();
                return false;
            case QEvent::FocusOut:
                waitingShift_.reset();
                return false;
            case QEvent::KeyPress:
                return keyPressed(static_cast<const QKeyEvent&>(*event));
            case QEvent::KeyRelease:
                keyReleased(static_cast<const QKeyEvent&>(*event));
                return false;
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick:
                mousePressed(static_cast<const QMouseEvent&>(*event));
                return true;
            case QEvent::MouseButtonRelease:
                mouseReleased(static_cast<const QMouseEvent&>(*event));
                return true;
            case QEvent::ToolTip:
                showToolTip(static_cast<const QHelpEvent&>(*event));
                return true;
            default:
                return false;
        }
    }

private:
    template <class Controls>
    void watch(Controls& controls) {
        for (auto& control : controls) {
            control.addObserver(*this);
            watched_.push_back(&control);
        }
    }

    void propertyChanged(controls::Object& object, const void* property) override {
        if (&object == &window_) {
            if (property == window_.focusProperty()) {
                lastCell_ = focusCell().value_or(lastCell_);
                mark();
            }
            return;
        }
        const auto& control = dynamic_cast<const controls::Control&>(object);
        if (control.name() != name_) {
            labelsChanged_ = true;
        } else if (const auto cell = *control.index(); !waiting_[static_cast<std::size_t>(cell)]) {
            waiting_[static_cast<std::size_t>(cell)] = true;
            changed_.push_back(cell);
        }
        mark();
    }

    void mark() {
        if (!marked_) {
            marked_ = true;
            binder_.marked(*this);
        }
    }

    void showCell(int index) {
        const auto& cell = grid_(index);
        view_.setCell(index, {cellText(QString::fromStdString(cell.Text)), cell.BackColor, cell.ForeColor,
                              cell.FontBold, cell.Enabled});
        if (index == 0) {
            view_.setTextScale(cell.FontSize / kUsualFontSize);
        }
    }

    void showLabels() {
        labelsChanged_ = false;
        const auto look = [](const controls::Label& label) {
            return MapGridView::Label{QString::fromStdString(label.Caption), label.FontBold};
        };
        for (int column = 0; column < grid_.columnLabels.count(); ++column) {
            view_.setColumnLabel(column, look(grid_.columnLabels(column)));
        }
        for (int row = 0; row < grid_.rowLabels.count(); ++row) {
            view_.setRowLabel(row, look(grid_.rowLabels(row)));
        }
    }

    void showFocus() {
        const auto cell = focusCell();
        if (cell && cell != view_.focusCell()) {
            reveal(view_, view_.cellRect(*cell));
        }
        view_.setFocusCell(cell);
    }

    // The cell of this grid that has the window's focus.
    [[nodiscard]] std::optional<int> focusCell() const {
        const auto* const active = window_.activeControl();
        return active != nullptr && active->name() == name_ ? active->index() : std::nullopt;
    }

    // Tab moves the focus to the cell that had it last, or to the first that can be edited.
    [[nodiscard]] controls::Control* entrance() {
        if (grid_(lastCell_).usable()) {
            return &grid_(lastCell_);
        }
        const auto first =
            std::find_if(grid_.cells.begin(), grid_.cells.end(), [](auto& cell) { return cell.usable(); });
        return first != grid_.cells.end() ? &*first : nullptr;
    }

    void takeFocus() {
        binder_.act([this] {
            if (auto* const cell = focusCell() ? nullptr : entrance(); cell != nullptr) {
                window_.setFocus(cell);
            }
        });
    }

    // `action` is given the cell with the focus, if there is one.
    template <class Action>
    void atFocus(Action action) {
        binder_.act([&] {
            if (const auto cell = focusCell()) {
                action(grid_(*cell));
            }
        });
    }

    // Shift alone is held back until the next key: where it is needed to type +, it begins no selection.
    bool keyPressed(const QKeyEvent& event) {
        const int code = keyCodeOf(event);
        if (code == controls::kKeyTab) {
            return false;
        }
        if (!focusCell()) {
            takeFocus();
        }
        if (code == controls::kKeyShift) {
            waitingShift_ = shiftOf(event);
            return true;
        }
        if (code == controls::kKeyPlus || code == controls::kKeyMinus) {
            waitingShift_.reset();
        }
        tellShift();
        bool passed = true;
        atFocus([&](auto& cell) { passed = cell.keyDown(code, shiftOf(event)); });
        if (const int character = characterOf(event); character != 0 && passed) {
            atFocus([&](auto& cell) { static_cast<void>(cell.keyPress(character)); });
        }
        return !passed || !binder_.isAttached() || (code >= kFirstMove && code <= kLastMove);
    }

    void keyReleased(const QKeyEvent& event) {
        const int code = keyCodeOf(event);
        if (event.isAutoRepeat() || code == controls::kKeyTab) {
            return;
        }
        if (code == controls::kKeyShift) {
            tellShift();
        }
        atFocus([&](auto& cell) { cell.keyUp(code, shiftOf(event)); });
    }

    void tellShift() {
        if (const auto shift = std::exchange(waitingShift_, std::nullopt)) {
            atFocus([&](auto& cell) { cell.keyDown(controls::kKeyShift, *shift); });
        }
    }

    void mousePressed(const QMouseEvent& event) {
        pressed_.reset();
        const auto cell = view_.cellAt(event.position().toPoint());
        if (!cell || !grid_(*cell).usable()) {
            return;
        }
        pressed_ = cell;
        tellShift();
        binder_.act([&] { window_.setFocus(&grid_(*cell)); });
        if (binder_.isAttached() && focusCell()) {
            view_.setFocus(Qt::MouseFocusReason);
        }
    }

    // The cell that was pressed gets the release, wherever the mouse is now.
    void mouseReleased(const QMouseEvent& event) {
        const auto cell = std::exchange(pressed_, std::nullopt);
        if (!cell) {
            return;
        }
        const QPointF inside = (event.position() - view_.cellRect(*cell).topLeft()) * kTwipsPerPixel;
        binder_.act([&] {
            grid_(*cell).mouseUp(buttonNumber(event.button()), shiftOf(event.modifiers()), inside.x(), inside.y());
        });
    }

    [[nodiscard]] QString tipOf(int cell) const {
        const std::string more = grid_.tip ? grid_.tip(cell) : std::string();
        const std::string& own = grid_(cell).ToolTipText;
        return plainTip(QString::fromStdString(own.empty() || more.empty() ? own + more : own + '\n' + more));
    }

    void showToolTip(const QHelpEvent& event) {
        const auto cell = view_.cellAt(event.pos());
        const QString text = !cell                   ? QString()
                             : view_.isUnread(*cell) ? QStringLiteral("Not read from the ECU yet")
                                                     : tipOf(*cell);
        if (text.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(event.globalPos(), text, &view_, view_.cellRect(*cell));
        }
    }

    Binder& binder_;
    maps::MapGrid& grid_;
    MapGridView& view_;
    controls::Window& window_;
    std::string_view name_;
    std::vector<controls::Control*> watched_;

    std::vector<int> changed_;   // cells
    std::vector<bool> waiting_;  // whether a cell is among them
    bool labelsChanged_ = false;
    bool marked_ = false;

    int lastCell_ = 0;
    std::optional<int> pressed_;       // by the mouse
    std::optional<int> waitingShift_;  // the Shift argument of a Shift key that is held back
};

}  // namespace

void bindGrid(Binder& binder, maps::MapGrid& grid, MapGridView& widget) {
    std::vector<const controls::Control*> cells;
    for (const auto& cell : grid.cells) {
        cells.push_back(&cell);
    }
    binder.bind(std::make_unique<MapGridBinding>(binder, grid, widget), cells, widget);
}

}  // namespace korvane::views
