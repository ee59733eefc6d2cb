#include "views/frame/GroupCard.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

#include "views/widgets/Caption.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/Readout.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr int kRowGap = 6;
constexpr int kColumnGap = 6;
constexpr int kCellGap = 3;
constexpr int kWideCellGap = 8;
constexpr int kLineColumns = 3;         // name, field, and what is left
constexpr double kButtonPadding = 1.6;  // of the text's height
constexpr int kManyCells = 10;          // share the card's width; fewer stand close together
constexpr int kBlockGap = 36;
constexpr int kLeastChoice = 14;  // letters
constexpr int kAllOfIt = 0;       // such a list is never narrower than its longest choice

class Command : public QPushButton {
public:
    explicit Command(QWidget* parent) : QPushButton(parent) {}

    [[nodiscard]] QSize sizeHint() const override {
        const QSize usual = QPushButton::sizeHint();
        const int words = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
        const int padding = static_cast<int>(fontMetrics().height() * kButtonPadding);
        return {std::max(usual.width(), words + padding), usual.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

// Of options that are only shown, the one that holds can be read like any text.
class Option : public QRadioButton {
public:
    explicit Option(QWidget* parent) : QRadioButton(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override {
        if (isEnabled() || !isChecked()) {
            QRadioButton::paintEvent(event);
            return;
        }
        QStyleOptionButton option;
        initStyleOption(&option);
        option.state |= QStyle::State_Enabled;
        option.palette.setCurrentColorGroup(QPalette::Active);
        QStylePainter(this).drawControl(QStyle::CE_RadioButton, option);
    }
};

QLabel& makeLabel(const QString& text, QWidget* parent) {
    auto& label = child<QLabel>(parent, text);
    label.setTextFormat(Qt::PlainText);
    return label;
}

Caption& makeCaption(const QString& text, QWidget* parent) {
    auto& caption = child<Caption>(parent, text, kNobody);
    caption.setTextFormat(Qt::PlainText);
    return caption;
}

}  // namespace

QPushButton& makeCommand(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent) {
    auto& push = child<Command>(parent);
    binder.bind(button, push, mnemonic);
    return push;
}

GroupCard::GroupCard(controls::Frame& frame, Binder& binder, QWidget* parent)
    : binder_(binder), card_(child<Card>(parent)), rows_(child<QVBoxLayout>(&card_)) {
    rows_.setSpacing(kRowGap);
    rows_.addStretch(1);
    binder.bind(frame, card_);
    card_.fitMargins();
}

QGridLayout& GroupCard::lines() {
    if (lines_ == nullptr) {
        lines_ = &child<QGridLayout>(kNobody);
        lines_->setVerticalSpacing(kRowGap);
        lines_->setHorizontalSpacing(kColumnGap);
        lines_->setColumnStretch(kLineColumns - 1, 1);
        add(*lines_);
    }
    return *lines_;
}

void GroupCard::startColumn() {
    lines().setColumnStretch(lineColumn_ + kLineColumns - 1, 0);
    lines().setColumnMinimumWidth(lineColumn_ + kLineColumns - 1, kBlockGap);
    lineColumn_ += kLineColumns;
    lines().setColumnStretch(lineColumn_ + kLineColumns - 1, 1);
    line_ = 0;
}

void GroupCard::startLines() {
    lines_ = nullptr;
    line_ = 0;
    lineColumn_ = 0;
}

void GroupCard::addName(const QString& name, QWidget& field) {
    auto& label = makeLabel(name, &card_);
    label.setBuddy(&field);
    field.setAccessibleName(name);
    lines().addWidget(&label, line_, lineColumn_);
}

void GroupCard::addValue(const QString& name, controls::TextBox& box, int digits, const QString& unit) {
    auto& edit = child<ValueBox>(&card_, digits);
    edit.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    binder_.bind(box, edit);
    addField(name, edit, unit);
}

void GroupCard::addShown(const QString& name, controls::Label& label, const QString& longest, const QString& unit) {
    auto& shown = child<Readout>(&card_, Readout::Look{.bold = true});
    shown.setReserve(longest);
    shown.setFromEcu();
    binder_.bind(label, shown);
    addField(name, shown, unit);
}

void GroupCard::addField(const QString& name, QWidget& widget, const QString& unit) {
    addName(name, widget);
    auto& field = child<QHBoxLayout>(kNobody);
    field.setSpacing(kColumnGap);
    field.addWidget(&widget);
    if (!unit.isEmpty()) {
        field.addWidget(&makeLabel(unit, &card_));
    }
    field.addStretch(1);
    lines().addLayout(&field, line_++, lineColumn_ + 1);
}

void GroupCard::addText(const QString& name, controls::TextBox& box) {
    auto& edit = child<QLineEdit>(&card_);
    binder_.bind(box, edit);
    addName(name, edit);
    lines().addWidget(&edit, line_++, lineColumn_ + 1, 1, 2);
}

void GroupCard::addChoice(const QString& name, controls::ComboBox& box) {
    auto& list = makeList(box);
    addName(name, list);
    lines().addWidget(&list, line_++, lineColumn_ + 1);
}

void GroupCard::addBeside(const QString& spoken, controls::ComboBox& box) {
    auto& list = makeList(box);
    list.setAccessibleName(spoken);
    list.setMinimumContentsLength(kAllOfIt);
    lines().addWidget(&list, line_ - 1, lineColumn_ + 2, Qt::AlignLeft);
}

DropDown& GroupCard::makeList(controls::ComboBox& box) {
    auto& list = child<DropDown>(&card_);
    list.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list.setMinimumContentsLength(kLeastChoice);
    binder_.bind(box, list);
    return list;
}

void GroupCard::addHeads(const QString& word, const QStringList& heads) {
    heads_ = heads;
    word_ = word;
    cells_ = &child<QGridLayout>(kNobody);
    cells_->setVerticalSpacing(kCellGap);
    cells_->setHorizontalSpacing(heads.size() < kManyCells ? kWideCellGap : kCellGap);
    add(*cells_);
    if (!word.isEmpty()) {
        cells_->addWidget(&makeCaption(word, &card_), 0, 0);
    }
    for (int i = 0; i < heads.size(); ++i) {
        cells_->addWidget(&makeCaption(heads[i], &card_), 0, i + 1, Qt::AlignHCenter);
        cells_->setColumnStretch(i + 1, heads.size() < kManyCells ? 0 : 1);
    }
    cells_->setColumnStretch(static_cast<int>(heads.size()) + 1, heads.size() < kManyCells ? 1 : 0);
    cellRow_ = 0;
}

void GroupCard::addCells(const QString& name, const QString& spoken, const std::vector<controls::TextBox*>& boxes,
                         int digits) {
    ++cellRow_;
    if (!name.isEmpty()) {
        auto& label = makeLabel(name, &card_);
        label.setContentsMargins(0, 0, kColumnGap, 0);
        cells_->addWidget(&label, cellRow_, 0);
    }
    int column = 0;
    for (auto* box : boxes) {
        auto& edit = child<ValueBox>(&card_, digits);
        edit.setAlignment(Qt::AlignCenter);
        binder_.bind(*box, edit);
        edit.setAccessibleName((spoken + u' ' + heads_.value(column) + u' ' + word_).trimmed());
        cells_->addWidget(&edit, cellRow_, ++column);
    }
}

void GroupCard::addCells(const QString& name, const QString& spoken, controls::ControlArray<controls::TextBox>& boxes,
                         int digits) {
    std::vector<controls::TextBox*> all;
    for (auto& box : boxes) {
        all.push_back(&box);
    }
    addCells(name, spoken, all, digits);
}

void GroupCard::addTable(const QString& word, const QStringList& heads, const QString& spoken,
                         controls::ControlArray<controls::TextBox>& boxes, int digits) {
    addHeads(word, heads);
    addCells({}, spoken, boxes, digits);
}

void GroupCard::addNote(const QString& text) {
    add(makeCaption(text, &card_));
}

void GroupCard::addOptions(controls::ControlArray<controls::OptionButton>& options, Qt::Orientation direction) {
    auto& place =
        child<QBoxLayout>(kNobody, direction == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    place.setSpacing(direction == Qt::Horizontal ? 2 * kColumnGap : kRowGap / 2);
    for (auto& option : options) {
        auto& radio = child<Option>(&card_);
        binder_.bind(option, radio);
        place.addWidget(&radio);
    }
    if (direction == Qt::Horizontal) {
        place.addStretch(1);
    }
    add(place);
}

void GroupCard::addButton(controls::CommandButton& button, char mnemonic) {
    if (buttons_ == nullptr) {
        buttons_ = &child<QHBoxLayout>(kNobody);
        buttons_->setSpacing(kColumnGap);
        buttons_->addStretch(1);
        rows_.addLayout(buttons_);
    }
    buttons_->addWidget(&makeCommand(button, mnemonic, binder_, &card_));
}

PageRows::PageRows(QWidget* page) : page_(page), rows_(child<QVBoxLayout>(page)) {
    rows_.setContentsMargins(0, 0, 0, 0);
    rows_.setSpacing(kSpacing);
}

void PageRows::add(std::initializer_list<Place> row) {
    auto& places = child<QHBoxLayout>(kNobody);
    places.setSpacing(kSpacing);
    for (const Place& place : row) {
        places.addWidget(&place.widget, place.share);
    }
    rows_.addLayout(&places);
}

void PageRows::addNote(const QString& text) {
    rows_.addWidget(&makeCaption(text, page_));
}

QStringList thousands(int first, int step, int count) {
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts += QString::number((first + i * step) / 1000.0, 'f', 1);
    }
    return texts;
}

QString steppedLegend() {
    return QStringLiteral("\u00B1  changes by the keys + and -");
}

}  // namespace korvane::views
