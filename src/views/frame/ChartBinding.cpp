// Continues Binder: charts.
#include "controls/Chart.h"
#include "views/frame/Binder.h"
#include "views/widgets/charts/ChartWidget.h"

namespace korvane::views {

namespace {

// A chart of more cells than this can't be told apart on any screen, and is shown empty.
constexpr std::int64_t kMostCells = 10000;

class ChartBinding : public Binding {
public:
    ChartBinding(Binder& binder, controls::Chart& chart, ChartWidget& widget)
        : Binding(binder, chart, widget), chart_(chart), shown_(widget) {}

protected:
    void showContent() override { shown_.setContent(isShown() ? content() : ChartWidget::Content()); }

private:
    [[nodiscard]] bool isShown() const {
        const std::int64_t rows = chart_.RowCount;
        const std::int64_t columns = chart_.ColumnCount;
        return rows > 0 && columns > 0 && rows * columns <= kMostCells;
    }

    [[nodiscard]] ChartWidget::Content content() const {
        ChartWidget::Content content;
        for (int column = 0; column < chart_.ColumnCount; ++column) {
            content.columnLabels.push_back(QString::fromStdString(chart_.columnLabelAt(column)));
        }
        for (int row = 0; row < chart_.RowCount; ++row) {
            content.rowLabels.push_back(QString::fromStdString(chart_.rowLabelAt(row)));
            for (int column = 0; column < chart_.ColumnCount; ++column) {
                content.data.push_back(QString::fromStdString(chart_.dataAt(row, column)));
            }
        }
        return content;
    }

    controls::Chart& chart_;
    ChartWidget& shown_;
};

}  // namespace

void Binder::bind(controls::Chart& chart, ChartWidget& widget) {
    add(std::make_unique<ChartBinding>(*this, chart, widget));
}

}  // namespace korvane::views
