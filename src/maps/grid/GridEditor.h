// Editing of one map grid by keys and mouse: the selection, the commands on a block, the steps of single cells and of
// the focus.
#pragma once

#include <cstdint>
#include <functional>

#include "controls/Window.h"
#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"
#include "maps/grid/MapGrid.h"

namespace korvane::maps {

// The shape of a block and its rules.
enum class BlockShape {
    // All cells between two. Getting the focus ends the selection, unless a step with Shift brought it.
    Run,
    // The corner cells of a rectangle, shown in the window's caption. With Shift no command acts on it; a key that is
    // no command removes its colour at once.
    Rectangle,
};

// How a block is selected. With the mouse the release of a key or a button extends it too; the release of a key does
// not end the selection.
enum class Pointing { Keys, KeysAndMouse };

// What makes the editing of one grid differ from that of another.
struct GridRules {
    core::MapImage core::SharedTables::*image = nullptr;  // what the keys change
    core::EditedMap map = core::EditedMap::Fuel;          // the same map in the history
    core::MapHistory* history = nullptr;                  // notes each change, unless it is null
    BlockShape shape = BlockShape::Run;
    Pointing pointing = Pointing::Keys;

    // + on each cell of a block, and on a single cell.
    std::function<std::uint8_t(std::uint8_t)> blockUp;
    std::function<std::uint8_t(std::uint8_t)> cellUp;

    std::function<void()> redraw;              // after a block command
    std::function<void(int cell)> redrawCell;  // after the step of a cell
    std::function<void(int cell)> cellEdited;  // after that; may be empty
    // A cell has got the focus, or lost it; told again with each of its keys, as another window may have had the focus
    // meanwhile. May be empty.
    std::function<void(int cell, bool has)> focusMoved;
};

// Who presses the keys.
enum class Hand { Tuner, Agent };

class GridEditor {
public:
    // Sets the events of the grid's cells.
    GridEditor(controls::Window& window, MapGrid& grid, core::SharedTables& tables, GridRules rules);
    GridEditor(const GridEditor&) = delete;
    GridEditor& operator=(const GridEditor&) = delete;
    ~GridEditor() = default;

    // RuntimeError 9 for a cell outside the grid; nothing is changed then.
    void keyDown(int index, int keyCode, int shift, Hand hand = Hand::Tuner);

private:
    struct Ends {
        int first = 0;
        int last = 0;
    };

    [[nodiscard]] bool isRun() const { return rules_.shape == BlockShape::Run; }
    [[nodiscard]] bool mouseSelects() const { return rules_.pointing == Pointing::KeysAndMouse; }
    [[nodiscard]] bool extend(int cell);
    void paint();

    void connect(int index);
    void keyUp(int index, int keyCode, int shift);
    void mouseUp(int index, int shift);
    void gotFocus(int index);
    void lostFocus(int index);
    void tellFocus(int index, bool has) const;
    [[nodiscard]] std::uint8_t& byteOf(int cell);
    [[nodiscard]] std::uint8_t& byteOfNumber(int number) { return byteOf(number - 1); }

    // True when the key has been handled.
    [[nodiscard]] bool actOnBlock(int key, int shift);
    [[nodiscard]] bool blockCommand(int key);
    using Step = std::function<std::uint8_t(std::uint8_t)>;
    void changeBlock(const Step& change, core::Cause::Kind kind);
    void levelBlock();
    [[nodiscard]] core::Cause causeOf(core::Cause::Kind kind, int firstNumber, int lastNumber) const;

    void select(int index, int key, int shift);
    void tellSelection();
    void moveOrStep(int index, int key, int shift);
    void moveFocus(int cell, int shift);
    void stepCell(int cell, const Step& step, core::Cause::Kind kind);
    void changeCell(int cell, const Step& step, core::Cause::Kind kind);

    controls::Window& window_;
    MapGrid& grid_;
    core::SharedTables& tables_;
    GridRules rules_;
    Hand hand_ = Hand::Tuner;  // of the key that is handled
    bool stepping_ = false;    // Shift and an arrow move the focus
    Ends beforeFocus_;         // the selection that the focus ended, until the mouse button is released
};

}  // namespace korvane::maps
