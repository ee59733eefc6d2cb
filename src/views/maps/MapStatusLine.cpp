#include "views/maps/MapStatusLine.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <array>
#include <functional>
#include <vector>

#include "maps/history/MapUndo.h"
#include "maps/panes/MapStatus.h"
#include "views/frame/ObjectPart.h"
#include "views/maps/MiscMarksPart.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/PlainTip.h"
#include "views/widgets/values/LongLine.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kGap = 14;
constexpr int kMargin = 1;       // above and below; the grids need the height
constexpr double kScale = 0.92;  // of the usual text
constexpr const char* kLongestUnsent = "Not sent: 160 fuel, 16 misc";

// What the line tells of may have changed with a cell, the focus, the caption or what the ECU has.
std::vector<controls::Object*> toldOf(maps::PaneWindow& window) {
    auto& connection = window.context().connection;
    auto& ecu = connection.ecuMaps;
    std::vector<controls::Object*> objects{
        &window, &ecu.fuel, &ecu.ignition, &ecu.pwm, &connection.ecuMisc, &connection.MSComm1, &connection.keepNotice};
    for (auto* const pane : window.panes()) {
        if (auto* const grid = pane->paneGrid()) {
            objects.push_back(grid);
            for (auto& cell : grid->cells) {
                objects.push_back(&cell);
            }
        }
        if (auto* const misc = dynamic_cast<maps::MiscPane*>(pane)) {
            const auto boxes = miscBoxesOf(*misc);
            objects.insert(objects.end(), boxes.begin(), boxes.end());
        }
    }
    return objects;
}

std::string cellText(const maps::MapStatus& status) {
    if (status.cell.empty() && status.block.empty()) {
        return "No cell has the focus";
    }
    const bool both = !status.cell.empty() && !status.block.empty();
    return status.cell + (both ? "; " : "") + status.block;
}

void showLine(LongLine& line, const std::string& words) {
    line.setWords(QString::fromStdString(words));
    line.setVisible(!words.empty());
}

// What follows from it is in the tool-tip, so that the cell keeps its room.
void showUnread(LongLine& line, const std::string& words) {
    showLine(line, words.substr(0, words.find(';')));
    line.setAccessibleName(QString::fromStdString(words));
    line.setToolTip(plainTip(QString::fromStdString(words)));
}

struct StatusLines {
    LongLine& store;
    LongLine& unread;
};

void bindStatus(maps::PaneWindow& window, Binder& binder, Readout& cell, const StatusLines& lines, Readout& unsent) {
    ObjectPart::bind(binder, toldOf(window), [&window, &cell, lines, &unsent] {
        const auto status = maps::statusOf(window);
        const std::string& note = window.HistoryNote;
        if (const auto told = QString::fromStdString(note.empty() ? cellText(status) : note); told != cell.text()) {
            cell.setText(told);
            cell.updateGeometry();
        }
        showLine(lines.store, status.store);
        showUnread(lines.unread, status.unread);
        const QString words = QString::fromStdString(status.unsent);
        const QString usual = QString::fromLatin1(kLongestUnsent);
        unsent.setReserve(words.isEmpty() || words.size() > usual.size() ? words : usual);
        unsent.setText(words);
    });
}

struct LookWords {
    const char* name;
    const char* caption;
    const char* toolTip;
};
constexpr LookWords kHeatWords{"heatTint", "Heat",
                               "A bar in each cell shows how high its number is: dark blue is the lowest, yellow the "
                               "highest of the map"};
constexpr LookWords kAlignWords{"alignNumbers", "Align", "Writes the decimal points of a column below each other"};

// A choice of the look.
QCheckBox& makeBox(maps::GridLook& look, controls::Property<bool>& choice, const LookWords& words, Binder& binder,
                   QWidget* parent) {
    auto& box = child<QCheckBox>(parent);
    box.setObjectName(QLatin1String(words.name));
    box.setText(QLatin1String(words.caption));
    box.setToolTip(QLatin1String(words.toolTip));
    QObject::connect(&box, &QCheckBox::clicked, &box,
                     [&choice, &binder](bool on) { binder.act([&choice, on] { choice = on; }); });
    ObjectPart::bind(binder, {&look}, [&choice, &box] { box.setChecked(choice); });
    return box;
}

struct OrderWords {
    const char* caption;  // with the key, which the window gets as any other
    maps::HistoryOrder order;
};
constexpr std::array kOrders{OrderWords{"&Undo\tCtrl+Z", maps::HistoryOrder::Undo},
                             OrderWords{"&Redo\tCtrl+Y", maps::HistoryOrder::Redo},
                             OrderWords{"Re&vert cell or block\tCtrl+Backspace", maps::HistoryOrder::Revert},
                             OrderWords{"&List of all changes\tCtrl+H", maps::HistoryOrder::List}};

void addOrders(maps::PaneWindow& window, Binder& binder, QMenu& menu) {
    auto* const undo = window.context().undo;
    if (undo == nullptr) {
        return;
    }
    for (const auto& [caption, order] : kOrders) {
        const auto* const action = menu.addAction(QLatin1String(caption));
        QObject::connect(action, &QAction::triggered, &menu, [&window, undo, &binder, which = order] {
            binder.act([&] { window.enter(window.name(), [&] { undo->obey(which, window); }); });
        });
    }
}

void addOpener(const char* caption, const std::function<void()>& open, Binder& binder, QMenu& menu) {
    if (open) {
        const auto* const action = menu.addAction(QLatin1String(caption));
        QObject::connect(action, &QAction::triggered, &menu, [open, &binder] { binder.act(open); });
    }
}

// What there is not has no row. The cell keeps the focus when the mouse presses the button.
void addHistoryButton(maps::PaneWindow& window, Binder& binder, QHBoxLayout& row, QWidget* parent) {
    auto& button = child<QToolButton>(parent);
    auto& menu = child<QMenu>(&button);
    const auto& keep = window.context().connection.keepWindows;
    addOrders(window, binder, menu);
    addOpener("&Compare\tCtrl+D", keep.compare, binder, menu);
    addOpener("Restore &points\tCtrl+R", keep.restore, binder, menu);
    button.setObjectName(QStringLiteral("history"));
    button.setText(QStringLiteral("History"));
    button.setAutoRaise(true);
    button.setFocusPolicy(Qt::TabFocus);
    button.setToolTip(
        QStringLiteral("Undo, redo, revert, and a list of all changes of the maps; comparison and restore points"));
    button.setPopupMode(QToolButton::InstantPopup);
    button.setMenu(&menu);
    button.setVisible(!menu.isEmpty());
    row.addWidget(&button);
}

Readout& makeReadout(const char* name, const char* spoken, Qt::Alignment alignment, QWidget* parent) {
    auto& readout = child<Readout>(
        parent, Readout::Look{.scale = kScale, .elided = true, .alignment = alignment, .ground = Ground::Tile});
    readout.setObjectName(QLatin1String(name));
    readout.setAccessibleName(QLatin1String(spoken));
    return readout;
}

LongLine& makeLine(const char* name, QWidget* parent) {
    auto& line = child<LongLine>(parent);
    line.setObjectName(QLatin1String(name));
    line.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return line;
}

}  // namespace

QWidget& makeMapStatusLine(maps::PaneWindow& window, Binder& binder, QWidget* parent) {
    auto& line = child<Tile>(parent);
    // However long the texts are, they do not make the window wider.
    line.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&line);
    row.setSpacing(kGap);
    auto& cell = makeReadout("cellStatus", "Cell", Qt::AlignLeft, &line);
    auto& store = makeLine("storeStatus", &line);
    auto& unread = makeLine("unreadStatus", &line);
    auto& unsent = makeReadout("unsentStatus", "Not in the ECU", Qt::AlignRight, &line);
    // Each gets what its text needs, the cell the rest; where that is not there, the longer ones give way alike.
    cell.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cell.setMinimumWidth(1);
    store.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    store.setMinimumWidth(1);
    unread.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    unread.setMinimumWidth(1);
    row.addWidget(&cell);
    row.addWidget(&store);
    row.addWidget(&unread);
    row.addWidget(&unsent);
    addHistoryButton(window, binder, row, &line);
    row.addWidget(&makeBox(window.look, window.look.HeatTint, kHeatWords, binder, &line));
    row.addWidget(&makeBox(window.look, window.look.AlignNumbers, kAlignWords, binder, &line));
    bindStatus(window, binder, cell, {store, unread}, unsent);
    row.setContentsMargins(Card::kPadding, kMargin, Card::kPadding, kMargin);
    return line;
}

}  // namespace korvane::views
