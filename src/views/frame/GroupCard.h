// One group of parameters: its boxes with names and units, or in columns under headers, and the button that saves them.
#pragma once

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QVBoxLayout>

#include <vector>

#include "controls/Controls.h"
#include "views/frame/Binder.h"
#include "views/widgets/Card.h"

namespace korvane::views {

class DropDown;

inline constexpr int kByteDigits = 3;
inline constexpr int kWordDigits = 5;
inline constexpr int kScaledDigits = 6;  // "2.7778"

// The name that stands beside a box.
[[nodiscard]] inline QString labelOf(const controls::Control& control) {
    return QString::fromStdString(control.label());
}

// A button with space around its caption.
[[nodiscard]] QPushButton& makeCommand(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent);

class GroupCard {
public:
    GroupCard(controls::Frame& frame, Binder& binder, QWidget* parent);

    [[nodiscard]] Card& card() { return card_; }

    // A line: the box between its name and its unit. Names, boxes and units of consecutive lines form columns.
    void addValue(const QString& name, controls::TextBox& box, int digits, const QString& unit = {});
    void addText(const QString& name, controls::TextBox& box);
    void addChoice(const QString& name, controls::ComboBox& box);
    // What the ECU tells, with room for `longest`.
    void addShown(const QString& name, controls::Label& label, const QString& longest, const QString& unit = {});
    // A list at the end of the last line; `spoken` is its name for screen readers.
    void addBeside(const QString& spoken, controls::ComboBox& list);
    // Later lines are put into a new column, right of those so far.
    void startColumn();
    // Later lines are put below everything that has been added so far.
    void startLines();

    // The column headers, with a text before them.
    void addHeads(const QString& word, const QStringList& heads);
    // A row of boxes in these columns, `name` before it; `spoken` is what screen readers say before a column's header.
    void addCells(const QString& name, const QString& spoken, const std::vector<controls::TextBox*>& boxes, int digits);
    void addCells(const QString& name, const QString& spoken, controls::ControlArray<controls::TextBox>& boxes,
                  int digits);

    // Column headers with one row of boxes below them.
    void addTable(const QString& word, const QStringList& heads, const QString& spoken,
                  controls::ControlArray<controls::TextBox>& boxes, int digits);

    void addNote(const QString& text);
    void addOptions(controls::ControlArray<controls::OptionButton>& options, Qt::Orientation direction);
    void add(QWidget& widget) { rows_.insertWidget(end(), &widget); }
    void add(QLayout& layout) { rows_.insertLayout(end(), &layout); }
    // At the lower right; several are side by side.
    void addButton(controls::CommandButton& button, char mnemonic);

private:
    // Below what has been added, above the free space and the buttons.
    [[nodiscard]] int end() const { return rows_.count() - (buttons_ != nullptr ? 2 : 1); }
    QGridLayout& lines();
    void addName(const QString& name, QWidget& field);
    void addField(const QString& name, QWidget& widget, const QString& unit);
    DropDown& makeList(controls::ComboBox& box);

    Binder& binder_;
    Card& card_;
    QVBoxLayout& rows_;
    QGridLayout* lines_ = nullptr;
    QGridLayout* cells_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    QStringList heads_;
    QString word_;
    int line_ = 0;
    int lineColumn_ = 0;
    int cellRow_ = 0;
};

// A page's cards in rows, each as wide as its share of its row.
class PageRows {
public:
    explicit PageRows(QWidget* page);

    struct Place {
        QWidget& widget;
        int share;
    };
    void add(std::initializer_list<Place> row);
    void addNote(const QString& text);
    // The rest of the page stays empty.
    void close() { rows_.addStretch(1); }

private:
    QWidget* page_;
    QVBoxLayout& rows_;
};

// "1.0", "1.5" ...: the engine speeds from `first` on, in thousands.
[[nodiscard]] QStringList thousands(int first, int step, int count);

// An explanation of the boxes that are stepped by keys.
[[nodiscard]] QString steppedLegend();

}  // namespace korvane::views
