#include "views/maps/Map3DView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <optional>
#include <string_view>

#include "views/frame/ObjectPart.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/charts/ChartWidget.h"

namespace korvane::views {

namespace {

constexpr const char* kLongestName = "10500 RPM,  150 - 160 %:  255";

QWidget* noParent() {
    return nullptr;
}

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<int> markOf(int cell) {
    return cell == maps::Marks3D::kNoCell ? std::nullopt : std::optional(cell);
}

}  // namespace

Map3DView::Map3DView(maps::Frm3Dmap& window, FrameClock& clock)
    : WindowView(window, clock),
      window_(window),
      chart_(child<ChartWidget>(this)),
      table_(child<QLabel>(this)),
      scale_(child<QLabel>(this)),
      unread_(child<QLabel>(this)),
      cell_(child<QLabel>(this)) {
    auto& rows = child<QVBoxLayout>(this);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addLayout(&makeBar());
    rows.addWidget(&chart_, 1);
    chart_.setAccessibleName(QString::fromStdString(window.Caption));
    chart_.onNamed([this] { showNames(); });
    binder().bind(window.MSChart1, chart_);
    ObjectPart::bind(binder(), {&window.marks}, [this, &marks = window.marks] {
        chart_.setMarks({markOf(marks.Engine), markOf(marks.Focus)});
        chart_.setMissing(marks.Unread);
        showUnread();
    });
    chart_.setFocus();
    showNames();
}

QHBoxLayout& Map3DView::makeBar() {
    auto& bar = child<QHBoxLayout>(noParent());
    bar.setSpacing(2 * kSpacing);
    QFont bold = table_.font();
    bold.setBold(true);
    table_.setFont(bold);
    bar.addWidget(&table_);
    bar.addWidget(&scale_);
    unread_.setObjectName(QStringLiteral("unreadCells"));
    bar.addWidget(&unread_);
    addPresentations(bar);
    bar.addStretch(1);
    cell_.setObjectName(QStringLiteral("cellName"));
    cell_.setMinimumWidth(cell_.fontMetrics().horizontalAdvance(QLatin1String(kLongestName)));
    cell_.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    bar.addWidget(&cell_);
    auto& update = child<QPushButton>(this);
    binder().bind(window_.Command1, update, 'u');
    bar.addWidget(&update);
    setTabOrder(&update, &chart_);
    return bar;
}

void Map3DView::addPresentations(QHBoxLayout& bar) {
    const auto add = [&](const char* name, const QString& caption, ChartWidget::Presentation presentation) -> auto& {
        auto& button = child<QRadioButton>(this, caption);
        button.setObjectName(QString::fromLatin1(name));
        connect(&button, &QRadioButton::toggled, this, [this, presentation](bool chosen) {
            if (chosen) {
                chart_.setPresentation(presentation);
            }
        });
        bar.addWidget(&button);
        return button;
    };
    add("optSurface", QStringLiteral("&Surface"), ChartWidget::Presentation::Surface).setChecked(true);
    add("optBars", QStringLiteral("&Bars"), ChartWidget::Presentation::Bars);
}

void Map3DView::showNames() {
    if (binder().isAttached()) {
        table_.setText(textOf(window_.tableName()));
        scale_.setText(textOf(window_.tableScale()));
    }
    cell_.setText(chart_.cellName());
}

void Map3DView::showUnread() {
    unread_.setText(QString::fromStdString(window_.unreadWords()));
    unread_.setVisible(!unread_.text().isEmpty());
}

}  // namespace korvane::views
