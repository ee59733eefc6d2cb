// A titled box with its own ground, around widgets that belong together.
#pragma once

#include <QGroupBox>

namespace korvane::views {

class Card : public QGroupBox {
public:
    explicit Card(QWidget* parent) : QGroupBox(parent) {}
    Card(const QString& title, QWidget* parent) : QGroupBox(title, parent) {}

    // The area inside, below the title.
    static constexpr int kPadding = 10;

    // Less space above and below what is inside, for a card of two lines where others have one.
    void setTight() { tight_ = true; }

    // Sets the margins of the card's layout.
    void fitMargins();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] int titleHeight() const;

    bool tight_ = false;
};

// A darker area inside a card.
class Tile : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace korvane::views
