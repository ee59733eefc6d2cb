// A small fixed name above a field, with the letter that Alt reaches the field by.
#pragma once

#include <QLabel>

namespace korvane::views {

class Caption : public QLabel {
public:
    // `buddy` gets the focus on Alt and the letter, and the caption as its accessible name.
    Caption(const QString& text, QWidget* buddy, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont smallFont() const;
};

}  // namespace korvane::views
