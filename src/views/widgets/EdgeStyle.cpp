#include "views/widgets/EdgeStyle.h"

#include <QApplication>
#include <QCheckBox>
#include <QPainter>
#include <QRadioButton>
#include <QStyleOption>

#include "views/widgets/Child.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

const QString kName = QStringLiteral("edgeStyle");

bool isBox(QStyle::PrimitiveElement element) {
    return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorRadioButton;
}

// One that can't be used stays faint, and the toolkit marks the one with the focus.
bool needsEdge(const QStyleOption& option) {
    constexpr auto kFocus = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    return option.state.testFlag(QStyle::State_Enabled) && (option.state & kFocus) != kFocus;
}

// One for all, which ends with the program: widgets do not own their style.
EdgeStyle& shared() {
    auto* const made = qApp->findChild<QObject*>(kName, Qt::FindDirectChildrenOnly);
    if (auto* const style = dynamic_cast<EdgeStyle*>(made)) {
        return *style;
    }
    auto& style = child<EdgeStyle>(static_cast<QObject*>(qApp));
    style.setObjectName(kName);
    return style;
}

}  // namespace

void EdgeStyle::giveTo(QWidget& widget) {
    widget.setStyle(&shared());
}

void EdgeStyle::giveToBoxes(QWidget& view) {
    for (auto* const box : view.findChildren<QAbstractButton*>()) {
        if (dynamic_cast<QCheckBox*>(box) != nullptr || dynamic_cast<QRadioButton*>(box) != nullptr) {
            giveTo(*box);
        }
    }
}

void EdgeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!isBox(element) || !needsEdge(*option)) {
        return;
    }
    painter->save();
    painter->setPen(shades::edge(option->palette));
    painter->setBrush(Qt::NoBrush);
    painter->translate(0.5, 0.5);
    if (element == PE_IndicatorCheckBox) {
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    } else {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawEllipse(option->rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

int EdgeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint == SH_Table_GridLineColor && option != nullptr) {
        return static_cast<int>(shades::edge(option->palette).rgb());
    }
    return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace korvane::views
