// Keys, clicks and counted paintings, for tests of the views.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace korvane::views {

// Runs what the toolkit has delayed.
inline void settle() {
    for (int turn = 0; turn < 3; ++turn) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

inline void send(QWidget& widget, QEvent&& event) {
    QApplication::sendEvent(&widget, &event);
}

inline void keyDown(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    send(widget, QKeyEvent(QEvent::KeyPress, key, modifiers, text));
}

inline void keyUp(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    send(widget, QKeyEvent(QEvent::KeyRelease, key, modifiers));
}

inline void key(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    keyDown(widget, key, modifiers, text);
    keyUp(widget, key, modifiers);
}

// Types letters and digits.
inline void type(QWidget& widget, const QString& text) {
    for (const QChar character : text) {
        key(widget, static_cast<Qt::Key>(character.toUpper().unicode()), {}, QString(character));
    }
}

inline void click(QWidget& widget, QPoint at, Qt::KeyboardModifiers modifiers = {}) {
    const QPoint global = widget.mapToGlobal(at);
    send(widget, QMouseEvent(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, modifiers));
    send(widget, QMouseEvent(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, modifiers));
}

inline void click(QWidget& widget) {
    click(widget, widget.rect().center());
}

// Counts how often a widget is painted.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

}  // namespace korvane::views
