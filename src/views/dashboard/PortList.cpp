#include "views/dashboard/PortList.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyledItemDelegate>

#include "link/Connection.h"
#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kGap = 12;

QString deviceOf(const QModelIndex& index) {
    return index.data(Qt::ToolTipRole).toString();
}

// The note on a row is its device.
class PortRow : public QStyledItemDelegate {
public:
    explicit PortRow(QObject* list) : QStyledItemDelegate(list) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize usual = QStyledItemDelegate::sizeHint(option, index);
        return {nameWidth(option.fontMetrics) + option.fontMetrics.horizontalAdvance(deviceOf(index)) + 2 * kGap,
                usual.height()};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem row = option;
        if (deviceOf(index) == QLatin1String(link::kNoDevice)) {
            for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
                row.palette.setColor(role, option.palette.color(QPalette::Disabled, role));
            }
        }
        QStyledItemDelegate::paint(painter, row, index);
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setPen(row.palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(option.rect.adjusted(nameWidth(option.fontMetrics), 0, -kGap / 2, 0),
                          Qt::AlignLeft | Qt::AlignVCenter, deviceOf(index));
        painter->restore();
    }

private:
    [[nodiscard]] static int nameWidth(const QFontMetrics& metrics) {
        return metrics.horizontalAdvance(QStringLiteral("COM15")) + 2 * kGap;
    }
};

}  // namespace

PortList::PortList(QWidget* parent) : DropDown(parent) {
    setItemDelegate(&child<PortRow>(this));
}

// The list is as wide as its longest row needs.
void PortList::showPopup() {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + kGap);
    DropDown::showPopup();
}

}  // namespace korvane::views
