// The parts that the map windows are made of.
#pragma once

#include <QGridLayout>
#include <QHBoxLayout>
#include <QString>
#include <QWidget>

#include <array>
#include <memory>

#include "fields/Answers.h"
#include "maps/panes/AnalyserPane.h"
#include "maps/panes/FilePane.h"
#include "maps/panes/MiscPane.h"
#include "maps/panes/ToolPane.h"
#include "views/frame/Binder.h"
#include "views/maps/GridDigits.h"
#include "views/widgets/Card.h"

namespace korvane::views {

class WindowView;

// Makes the cards of a window's grids, which write their numbers in one size.
class GridCards {
public:
    GridCards(maps::PaneWindow& window, Binder& binder) : window_(window), binder_(binder) {}

    // A frame and the grid that fills it; `name` is the map's name for screen readers.
    Card& make(controls::Frame& frame, maps::MapGrid& grid, const QString& name, QWidget* parent);

private:
    maps::PaneWindow& window_;
    Binder& binder_;
    std::shared_ptr<SharedDigits> digits_ = std::make_shared<SharedDigits>();
};

// The text of the window's caption, the progress of a transfer, and the buttons for files and tools.
struct MapBar {
    maps::PaneWindow& window;
    maps::FilePane& files;
    maps::ToolPane& tools;
    controls::CommandButton* injScale = nullptr;
    fields::Answers* answers = nullptr;  // where the window has parameters
};
QWidget& makeMapBar(const MapBar& bar, WindowView& view, QWidget* parent);

// The boxes that belong to the analyser and its agent; visible while it is shown.
QWidget& makeAgentBoxes(maps::AnalyserPane& pane, Binder& binder, QWidget* parent);

// The box of the steady agent and the button for its window; visible with them.
QWidget& makeSteadyBox(maps::AnalyserPane& pane, Binder& binder, QWidget* parent);

// The switch of the analyser and the buttons of its targets.
Card& makeAnalyserCard(maps::AnalyserPane& pane, Binder& binder, QWidget* parent);

// The misc block: limits, offsets, the enable word, the injectors' open time.
Card& makeMiscCard(maps::MiscPane& pane, Binder& binder, QWidget* parent);

// A titled card of two columns, for the column at the right.
class PairCard {
public:
    PairCard(const QString& title, Binder& binder, QWidget* parent);

    [[nodiscard]] Card& card() { return card_; }

    // A row of two. Pairs of which only one is visible at a time share a row.
    void addButtons(controls::CommandButton& left, char leftMnemonic, controls::CommandButton& right,
                    char rightMnemonic);
    void addInstead(controls::CommandButton& left, char leftMnemonic, controls::CommandButton& right,
                    char rightMnemonic);
    void addBox(controls::CheckBox& box, char mnemonic, int column);
    void addWideBox(controls::CheckBox& box, char mnemonic);
    // Whether sends are read back.
    void addVerify(link::VerifySwitch& choice, int column);

private:
    QWidget& make(controls::CheckBox& box, char mnemonic);

    Binder& binder_;
    Card& card_;
    QGridLayout& rows_;
    std::array<QHBoxLayout*, 2> pair_{};  // of the last row of buttons
    int row_ = -1;
};

}  // namespace korvane::views
