// Two groups of widgets side by side, or one below the other where there is no room for that.
#pragma once

#include <QHBoxLayout>
#include <QWidget>

namespace korvane::views {

// The first group gets the room that is left; the second one is at the right.
class FoldingRow : public QWidget {
public:
    FoldingRow(int spacing, QWidget* parent);

    [[nodiscard]] QHBoxLayout& first() { return first_; }
    [[nodiscard]] QHBoxLayout& second() { return second_; }
    [[nodiscard]] bool isFolded() const { return rows_.direction() == QBoxLayout::TopToBottom; }

    // Folded.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fold();

    QBoxLayout& rows_;
    QHBoxLayout& first_;
    QHBoxLayout& second_;
};

}  // namespace korvane::views
