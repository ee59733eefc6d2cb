// A part of MapParts: the misc block.
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include <vector>

#include "views/maps/MapParts.h"
#include "views/maps/MiscMarksPart.h"
#include "views/widgets/Caption.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kRowGap = 3;  // so that the column needs no scroll bar on a screen of 1366 by 768
constexpr int kBitGap = 1;
constexpr int kColumnGap = 6;
constexpr int kLongestNumber = 6;  // digits

// As narrow as the numbers that it takes.
class NumberBox : public Marked<QLineEdit> {
public:
    explicit NumberBox(QWidget* parent) : Marked(parent) { setAlignment(Qt::AlignRight); }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        return {metrics.horizontalAdvance(u'0') * kLongestNumber + metrics.height(), QLineEdit::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

// Labels and boxes in two columns: the limits, then the offsets.
QLayout& makeNumbers(maps::MiscPane& pane, Binder& binder, QWidget* parent) {
    auto& grid = child<QGridLayout>(kNobody);
    grid.setVerticalSpacing(kRowGap);
    grid.setHorizontalSpacing(kColumnGap);
    for (int i = 0; i < pane.txtMisc.count(); ++i) {
        auto& name = child<Readout>(parent);
        auto& box = child<NumberBox>(parent);
        binder.bind(pane.txtMisc(i), box);
        bindNote(pane, binder, box, [&pane, i] { return pane.miscMarks().numberNote(i); });
        binder.bind(pane.lblMisc(i), name, &box);
        grid.addWidget(&name, i % 2, i / 2 * 2);
        grid.addWidget(&box, i % 2, i / 2 * 2 + 1);
    }
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
    return grid;
}

QCheckBox& makeBit(maps::MiscPane& pane, int bit, Binder& binder, QWidget* parent) {
    auto& check = child<Marked<QCheckBox>>(parent);
    binder.bind(pane.CheckMisc(bit), check);
    bindNote(pane, binder, check, [&pane, bit] { return pane.miscMarks().bitNote(bit); });
    return check;
}

// The name of a bit without a caption is its number.
QLayout& makeNamelessBits(maps::MiscPane& pane, const std::vector<int>& bits, Binder& binder, QWidget* parent) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kColumnGap);
    row.addWidget(&child<Caption>(parent, QStringLiteral("Bits"), nullptr));
    for (const int bit : bits) {
        auto& check = makeBit(pane, bit, binder, parent);
        row.addSpacing(kColumnGap);
        row.addWidget(&check);
        row.addWidget(&child<Caption>(parent, QString::number(bit), nullptr));
        check.setAccessibleName(QStringLiteral("Bit %1").arg(bit));
    }
    row.addStretch(1);
    return row;
}

// Down the first column and then down the second, in the order of the bits.
QLayout& makeBits(maps::MiscPane& pane, Binder& binder, QWidget* parent) {
    std::vector<int> named;
    std::vector<int> nameless;
    for (int bit = 0; bit < pane.CheckMisc.count(); ++bit) {
        (pane.CheckMisc(bit).Caption.get().empty() ? nameless : named).push_back(bit);
    }
    auto& grid = child<QGridLayout>(kNobody);
    grid.setVerticalSpacing(kBitGap);
    grid.setHorizontalSpacing(kColumnGap);
    const int rows = static_cast<int>(named.size() + 1) / 2;
    for (int i = 0; i < static_cast<int>(named.size()); ++i) {
        auto& check = makeBit(pane, named[static_cast<std::size_t>(i)], binder, parent);
        grid.addWidget(&check, i % rows, i / rows);
    }
    if (!nameless.empty()) {
        grid.addLayout(&makeNamelessBits(pane, nameless, binder, parent), rows, 0, 1, 2);
    }
    return grid;
}

Card& makeOpenTime(maps::MiscPane& pane, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&card);
    row.setSpacing(kColumnGap);
    binder.bind(pane.FrameINJMaxOpen, card);
    for (auto& option : pane.optINJMaxOpen) {
        auto& radio = child<Marked<QRadioButton>>(&card);
        binder.bind(option, radio);
        bindNote(pane, binder, radio,
                 [&pane, &option] { return option.Value ? pane.miscMarks().openingNote() : std::string(); });
        row.addWidget(&radio);
    }
    card.fitMargins();
    return card;
}

}  // namespace

Card& makeMiscCard(maps::MiscPane& pane, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    QWidget* const inside = &card;
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kRowGap);
    binder.bind(pane.FrameMisc, card);
    rows.addLayout(&makeNumbers(pane, binder, inside));
    rows.addLayout(&makeBits(pane, binder, inside));
    rows.addWidget(&makeOpenTime(pane, binder, inside));
    rows.addStretch(1);
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
