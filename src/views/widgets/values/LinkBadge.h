// A small badge that says how the line to the ECU is, by a shape, a word and a colour, and how old its data is.
#pragma once

#include <QColor>
#include <QLabel>

#include <functional>

namespace korvane::views {

// One that is too narrow for both leaves the age out, and one that is even narrower than its minimum the word too.
class LinkBadge : public QLabel {
public:
    enum class Shape { Disc, Ring, Triangle, Bars, Hourglass, Cross };
    struct Look {
        Shape shape;
        QColor hue;
    };

    explicit LinkBadge(QWidget* parent);

    // `age` may be empty.
    void setState(const Look& look, const QString& word, const QString& age);

    // Asked for the tool-tip each time it is about to be shown.
    void onTip(std::function<QString()> tip) { tip_ = std::move(tip); }

    // Room for the longest usual text, so that nothing moves when it changes.
    [[nodiscard]] QSize sizeHint() const override;
    // Room for the longest word.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int side() const;
    [[nodiscard]] int widthOf(const QString& words) const;
    [[nodiscard]] QString fitting() const;
    void paintShape(QPainter& painter, const QRectF& place) const;

    Look look_{Shape::Cross, Qt::gray};
    QString word_;
    std::function<QString()> tip_;
};

}  // namespace korvane::views
