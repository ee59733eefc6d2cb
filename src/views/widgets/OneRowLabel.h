// Words in one row, whatever their length: what has no room is cut, and the tool-tip has all of it.
#pragma once

#include <QLabel>
#include <QString>

namespace korvane::views {

// Of a text of several lines the row has all, one behind the other.
class OneRowLabel : public QLabel {
public:
    explicit OneRowLabel(QWidget* parent);

    void setWords(const QString& text);
    [[nodiscard]] bool isCut() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QString row() const;
    void fitTip();
};

}  // namespace korvane::views
