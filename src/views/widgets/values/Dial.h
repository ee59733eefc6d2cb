// A round dial: a cached face, a needle, a peak marker and a number.
#pragma once

#include <QColor>
#include <QPixmap>

#include <functional>

#include "live/SarnMeter.h"
#include "views/widgets/values/DialFace.h"
#include "views/widgets/values/SquareWidget.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

class Dial : public SquareWidget {
public:
    explicit Dial(QWidget* parent);

    // What the dial shows; lines as fractions of the square in the widget's middle.
    struct Pose {
        live::DialLine needle;
        live::DialLine peak;
        QString number;
        int meterType = 0;
    };
    void setPose(const Pose& pose);
    [[nodiscard]] const QString& number() const { return pose_.number; }
    [[nodiscard]] QString name() const { return scale_.name; }

    // Called with the square's new side after the widget's size has changed, in logical pixels.
    void onResized(std::function<void(int)> resized) { resized_ = std::move(resized); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QPointF place(live::DialPoint point) const;
    [[nodiscard]] QRect around(const live::DialLine& line) const;
    [[nodiscard]] QRect numberPlate() const;
    void renewFace();
    [[nodiscard]] const QPixmap& face();
    void paintNeedle(QPainter& painter) const;
    void paintNumber(QPainter& painter) const;

    Pose pose_;
    DialScale scale_;
    QPixmap face_;
    QColor faceInk_;
    TabularText digits_;
    std::function<void(int)> resized_;
};

}  // namespace korvane::views
