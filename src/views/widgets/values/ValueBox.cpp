#include "views/widgets/values/ValueBox.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

#include "views/widgets/Palette.h"
#include "views/widgets/PlainTip.h"

namespace korvane::views {

namespace {
constexpr QChar kMark(0x00B1);  // plus-minus
constexpr int kMarkLeft = 4;
constexpr double kMarkScale = 0.85;
constexpr int kSmallestPixels = 8;
constexpr double kPaddingOfText = 0.85;
constexpr int kRing = 2;
}  // namespace

ValueBox::ValueBox(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
    setAlignment(Qt::AlignRight);
}

QSize ValueBox::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const int padding = static_cast<int>(metrics.height() * kPaddingOfText);
    const int mark = isReadOnly() ? markWidth() : 0;
    return {metrics.horizontalAdvance(u'0') * digits_ + padding + mark, QLineEdit::sizeHint().height()};
}

QFont ValueBox::markFont() const {
    QFont small = font();
    small.setPixelSize(std::max(static_cast<int>(QFontInfo(font()).pixelSize() * kMarkScale), kSmallestPixels));
    return small;
}

int ValueBox::markWidth() const {
    return QFontMetrics(markFont()).horizontalAdvance(kMark);
}

void ValueBox::fitMark() {
    setTextMargins(isReadOnly() ? markWidth() : 0, 0, 0, 0);
    updateGeometry();
}

void ValueBox::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange || event->type() == QEvent::FontChange) {
        fitMark();
    }
    if (event->type() == QEvent::ReadOnlyChange) {
        describe();
    }
    if (event->type() == QEvent::ReadOnlyChange || event->type() == QEvent::PaletteChange) {
        keepGround();
    }
}

void ValueBox::setMark(BoxMark mark, bool isZero, const QString& note) {
    if (mark == mark_ && isZero == isZero_ && note == note_) {
        return;
    }
    mark_ = mark;
    isZero_ = isZero;
    note_ = note;
    describe();
    update();
}

void ValueBox::describe() {
    QStringList parts;
    if (isReadOnly()) {
        parts += QStringLiteral("changes by the keys + and -");
    }
    if (!note_.isEmpty()) {
        parts += note_;
    }
    setAccessibleDescription(parts.join(QStringLiteral(". ")));
}

// The note comes before the tool-tip that a control has of its own.
bool ValueBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && !note_.isEmpty()) {
        const QString text = toolTip().isEmpty() ? note_ : note_ + u'\n' + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainTip(text), this);
        return true;
    }
    return QLineEdit::event(event);
}

// When its mark is removed, a cell gets the usual ground and not white, which would be wrong in dark windows.
void ValueBox::keepGround() {
    const QColor ground = QPalette().color(QPalette::Window);
    if (isReadOnly() && ground != Qt::white && palette().color(QPalette::Base) == Qt::white) {
        setOwnColor(*this, QPalette::Base, ground);
    }
}

void ValueBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (isReadOnly()) {
        paintSteps();
    }
    if (mark_ != BoxMark::None || isZero_) {
        QPainter painter(this);
        const QColor ground = palette().color(QPalette::Base);
        paintCorner(painter, rect(), mark_, ground);
        if (isZero_) {
            paintUnderline(painter, rect(), ground);
        }
    }
}

void ValueBox::paintSteps() {
    QPainter painter(this);
    painter.setFont(markFont());
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    painter.drawText(rect().adjusted(kMarkLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QString(kMark));
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), kRing));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

// An arrow key that has stepped the number must not scroll the area around the box.
void ValueBox::keyPressEvent(QKeyEvent* event) {
    QLineEdit::keyPressEvent(event);
    if (isReadOnly() && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        event->accept();
    }
}

}  // namespace korvane::views
