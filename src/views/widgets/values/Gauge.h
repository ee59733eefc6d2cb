// An arc of a hundred ticks with a pointer, a number and a name.
#pragma once

#include <QColor>
#include <QPixmap>

#include "live/SarnGauge.h"
#include "views/widgets/values/SquareWidget.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

class Gauge : public SquareWidget {
public:
    explicit Gauge(QWidget* parent);

    // What the gauge shows; the tip as a fraction of the square in the widget's middle. Ticks up to `value` are lit.
    struct Pose {
        live::DialPoint tip;
        int value = 0;
        QString number;
        QString caption;
    };
    void setPose(const Pose& pose);
    [[nodiscard]] const QString& number() const { return pose_.number; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // The arc with its end lines and caption, all ticks dark or all lit.
    struct Faces {
        QPixmap dark;
        QPixmap lit;
    };
    [[nodiscard]] const Faces& faces();
    [[nodiscard]] QPixmap paintFace(const QColor& ticks) const;
    [[nodiscard]] QPointF place(live::DialPoint point) const;

    Pose pose_;
    Faces faces_;
    QColor faceInk_;
    TabularText digits_;
};

}  // namespace korvane::views
