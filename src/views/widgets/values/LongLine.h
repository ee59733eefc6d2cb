// A line of text as wide as its place: what does not fit is cut, and the tool-tip has it whole.
#pragma once

#include <QLabel>

namespace korvane::views {

class LongLine : public QLabel {
public:
    explicit LongLine(QWidget* parent);

    // As wide as the words, for a place that shares its width by need.
    [[nodiscard]] QSize sizeHint() const override;

    void setWords(const QString& words);
    [[nodiscard]] const QString& words() const { return words_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fit();

    QString words_;
};

}  // namespace korvane::views
