#include "maps/grid/GridEditor.h"

#include <utility>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/grid/CellFace.h"
#include "maps/grid/Selection.h"

namespace korvane::maps {

namespace {

using controls::kControlMask;
using controls::kKeyDown;
using controls::kKeyLeft;
using controls::kKeyMinus;
using controls::kKeyPlus;
using controls::kKeyUp;
using controls::kShiftMask;

constexpr int kReleased = 0;     // key code for the release of a key
constexpr int kMouseButton = 1;  // for that of a mouse button
constexpr int kKeyControl = 17;
constexpr int kKeyA = 65;
constexpr int kKeyL = 76;

// Control turns the vertical arrows into + and -.
int withControl(int keyCode, int shift) {
    if (shift != kControlMask) {
        return keyCode;
    }
    return keyCode == kKeyUp ? kKeyPlus : keyCode == kKeyDown ? kKeyMinus : keyCode;
}

bool movesOn(int key) {
    return key == kReleased || (key >= kKeyLeft && key <= kKeyDown);
}

std::uint8_t lowered(std::uint8_t byte) {
    return byte == 0 ? byte : static_cast<std::uint8_t>(byte - 1);
}

}  // namespace

GridEditor::GridEditor(controls::Window& window, MapGrid& grid, core::SharedTables& tables, GridRules rules)
    : window_(window), grid_(grid), tables_(tables), rules_(std::move(rules)) {
    for (int index = 0; index < grid_.geometry.cells(); ++index) {
        connect(index);
    }
}

void GridEditor::connect(int index) {
    auto& cell = grid_(index);
    cell.GotFocus = [this, index] { gotFocus(index); };
    cell.LostFocus = [this, index] { lostFocus(index); };
    cell.KeyDown = [this, index](int keyCode, int shift) { keyDown(index, keyCode, shift); };
    if (mouseSelects()) {
        cell.KeyUp = [this, index](int keyCode, int shift) { keyUp(index, keyCode, shift); };
        cell.MouseUp = [this, index](int, int shift, double, double) { mouseUp(index, shift); };
    }
}

bool GridEditor::extend(int cell) {
    return isRun() ? extendRun(grid_, cell) : extendRectangle(grid_, cell);
}

void GridEditor::paint() {
    if (isRun()) {
        paintRun(grid_);
    } else {
        paintRectangle(grid_);
    }
}

std::uint8_t& GridEditor::byteOf(int cell) {
    return core::checked(tables_.*rules_.image, cell);
}

void GridEditor::gotFocus(int index) {
    if (isRun()) {
        beforeFocus_ = {grid_.SelFirst, grid_.SelLast};
        if (!stepping_) {
            if (hasBlock(grid_)) {
                whitenRun(grid_);
            }
            forgetBlock(grid_);
        } else if (extendRunByStep(grid_, index)) {
            paint();
        }
    }
    grid_(index).BackColor = controls::kYellow;
    tellFocus(index, true);
}

void GridEditor::lostFocus(int index) {
    grid_(index).BackColor = controls::kWhite;
    tellFocus(index, false);
}

void GridEditor::tellFocus(int index, bool has) const {
    if (rules_.focusMoved) {
        rules_.focusMoved(index, has);
    }
}

void GridEditor::keyUp(int index, int keyCode, int shift) {
    if (keyCode != controls::kKeyShift && shift != 0) {
        keyDown(index, kReleased, shift);
    }
}

// With the mouse the focus moves, and ends the selection, before the button's event brings the Shift argument.
void GridEditor::mouseUp(int index, int shift) {
    if (shift == kShiftMask && isRun() && grid_.SelFirst == 0) {
        grid_.SelFirst = beforeFocus_.first;
        grid_.SelLast = beforeFocus_.last;
        if (hasBlock(grid_)) {
            paint();
        }
    }
    keyDown(index, kMouseButton, shift);
    grid_(index).BackColor = controls::kYellow;
}

void GridEditor::keyDown(int index, int keyCode, int shift, Hand hand) {
    static_cast<void>(grid_(index));  // fails before anything has changed
    hand_ = hand;
    if (keyCode == kKeyControl) {
        return;  // an arrow may follow, whose command needs the block
    }
    beforeFocus_ = {};
    if (window_.activeControl() == &grid_(index)) {
        tellFocus(index, true);
    }
    const int key = withControl(keyCode, shift);
    tellSelection();
    if (actOnBlock(key, shift)) {
        return;
    }
    select(index, key, shift);
    moveOrStep(index, key, shift);
}

bool GridEditor::actOnBlock(int key, int shift) {
    if (!hasBlock(grid_) || (!isRun() && shift == kShiftMask)) {
        return false;
    }
    if (blockCommand(key)) {
        rules_.redraw();
        return true;
    }
    if (mouseSelects() && key == kReleased && shift != kShiftMask) {
        return true;
    }
    if (!isRun()) {
        whitenAll(grid_);
    }
    return false;
}

bool GridEditor::blockCommand(int key) {
    using Kind = core::Cause::Kind;
    switch (key) {
        case kKeyA:
            changeBlock([first = byteOfNumber(grid_.SelFirst)](auto) { return first; }, Kind::BlockFill);
            return true;
        case kKeyPlus:
            changeBlock(rules_.blockUp, Kind::BlockUp);
            return true;
        case kKeyMinus:
            changeBlock(&lowered, Kind::BlockDown);
            return true;
        case kKeyL:
            levelBlock();
            return true;
        default:
            return false;
    }
}

core::Cause GridEditor::causeOf(core::Cause::Kind kind, int firstNumber, int lastNumber) const {
    if (hand_ == Hand::Agent) {
        return {core::Cause::Kind::Agent};
    }
    return core::Cause::cells(kind, rules_.map, static_cast<std::size_t>(firstNumber - 1),
                              static_cast<std::size_t>(lastNumber - 1));
}

void GridEditor::changeBlock(const Step& change, core::Cause::Kind kind) {
    const core::MapHistory::Change noting(rules_.history, causeOf(kind, grid_.SelFirst, grid_.SelLast));
    for (int number = grid_.SelFirst; number <= grid_.SelLast; ++number) {
        byteOfNumber(number) = change(byteOfNumber(number));
    }
}

void GridEditor::levelBlock() {
    const core::MapHistory::Change noting(rules_.history,
                                          causeOf(core::Cause::Kind::BlockLevel, grid_.SelFirst, grid_.SelLast));
    const int first = byteOfNumber(grid_.SelFirst);
    const int last = byteOfNumber(grid_.SelLast);
    const int steps = grid_.SelLast - grid_.SelFirst;
    for (int n = 1; n < steps; ++n) {
        const double slope = static_cast<double>(last - first) / steps;
        byteOfNumber(grid_.SelFirst + n) = core::toByte(core::toInt(n * slope) + first);
    }
}

void GridEditor::select(int index, int key, int shift) {
    if (shift == kShiftMask) {
        // A step has reached this cell, which ends the block already: the next step must not make it the block's start.
        const bool reached = isRun() && movesOn(key) && hasBlock(grid_) && grid_.SelLast == index + 1;
        if (!reached && extend(index)) {
            paint();
        }
    } else if (key != kReleased || !mouseSelects()) {
        forgetBlock(grid_);
    }
    tellSelection();
}

void GridEditor::tellSelection() {
    if (!isRun()) {
        window_.Caption =
            "alku " + core::textOf(grid_.SelFirst.get()) + " Loppu " + core::textOf(grid_.SelLast.get()) + " ";
    }
}

void GridEditor::moveOrStep(int index, int key, int shift) {
    if (const auto next = grid_.beside(index, key)) {
        moveFocus(*next, shift);
    } else if (key == kKeyPlus) {
        stepCell(index, rules_.cellUp, core::Cause::Kind::KeyUp);
    } else if (key == kKeyMinus) {
        stepCell(index, &lowered, core::Cause::Kind::KeyDown);
    }
}

void GridEditor::moveFocus(int cell, int shift) {
    stepping_ = shift == kShiftMask;
    window_.setFocus(&grid_(cell));
    stepping_ = false;
}

void GridEditor::stepCell(int cell, const Step& step, core::Cause::Kind kind) {
    {
        const Unlocked unlocked(grid_(cell));
        changeCell(cell, step, kind);
        rules_.redrawCell(cell);
    }
    if (rules_.cellEdited) {
        rules_.cellEdited(cell);
    }
}

void GridEditor::changeCell(int cell, const Step& step, core::Cause::Kind kind) {
    const core::MapHistory::Change noting(rules_.history, causeOf(kind, cell + 1, cell + 1));
    byteOf(cell) = step(byteOf(cell));
}

}  // namespace korvane::maps
