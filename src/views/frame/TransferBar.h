// A progress bar that keeps its place while it is hidden, so that nothing else moves.
#pragma once

#include <QProgressBar>
#include <QString>

#include "views/frame/Binder.h"

namespace korvane::views {

// One whose line is gone paints nothing, whatever the transfer behind it still counts.
class TransferBar : public QProgressBar {
public:
    explicit TransferBar(QWidget* parent) : QProgressBar(parent) {}

    void setEnded(bool ended);
    [[nodiscard]] bool isEnded() const { return ended_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool ended_ = false;
};

// `format` is the text in the bar, with %p for the percentage; none for an empty one. `name` is what a screen reader
// says.
[[nodiscard]] QProgressBar& makeTransferBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent,
                                            const QString& name, const QString& format = {});

// The same for work that needs no line.
[[nodiscard]] QProgressBar& makeWorkBar(controls::ProgressBar& progress, Binder& binder, QWidget* parent,
                                        const QString& name, const QString& format);

}  // namespace korvane::views
