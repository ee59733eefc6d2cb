// How the log viewer looks: what is shown and how at the left, the plot beside it, and below it what it tells.
#pragma once

#include <QProgressBar>

#include "trend/FrmTrend_txt.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class LogPlot;

// Opens a log that is dropped on it. While a load takes long the pointer is a busy one.
class TrendView : public FittedView {
public:
    TrendView(trend::FrmTrend_txt& window, FrameClock& clock);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget& makeChoices();
    [[nodiscard]] QWidget& makeFile(QWidget* parent);
    [[nodiscard]] QWidget& makeSeries(QWidget* parent);
    [[nodiscard]] QWidget& makeScale(QWidget* parent);
    [[nodiscard]] QWidget& makePages(QWidget* parent);
    [[nodiscard]] QWidget& makePlot();
    [[nodiscard]] QWidget& makeNotes();
    void connectPlot(LogPlot& plot);

    trend::FrmTrend_txt& window_;
    QProgressBar* load_ = nullptr;
};

}  // namespace korvane::views
