// Edges of boxes, and lines of a table, that can be seen in the dark too: the toolkit's own are darker than the window.
#pragma once

#include <QProxyStyle>

class QWidget;

namespace korvane::views {

class EdgeStyle : public QProxyStyle {
public:
    explicit EdgeStyle(QObject* parent) { setParent(parent); }

    // Gives it to all check boxes and option buttons inside `view`.
    static void giveToBoxes(QWidget& view);
    static void giveTo(QWidget& widget);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
};

}  // namespace korvane::views
