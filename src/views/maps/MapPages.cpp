#include "views/maps/MapPages.h"

#include <QFontInfo>
#include <QVBoxLayout>

#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {
constexpr double kLow = 46;  // text sizes
constexpr double kWide = 60;
}  // namespace

bool MapPages::neededIn(const QWidget& window) {
    const double size = QFontInfo(window.font()).pixelSize();
    return window.height() < kLow * size && window.width() >= kWide * size;
}

MapPages::MapPages(const QString& upper, const QString& lower, QWidget* parent)
    : QWidget(parent), tabs_(child<TabRow>(this)), upper_(child<QWidget>(this)), lower_(child<QWidget>(this)) {
    tabs_.setObjectName(QStringLiteral("mapPages"));
    tabs_.setAccessibleName(QStringLiteral("Maps"));
    tabs_.addTab(upper);
    tabs_.addTab(lower);
    auto& rows = child<QVBoxLayout>(this);
    rows.setContentsMargins(0, 0, 0, 0);
    rows.setSpacing(kSpacing);
    rows.addWidget(&tabs_, 0, Qt::AlignLeft);
    for (auto* page : {&upper_, &lower_}) {
        child<QVBoxLayout>(page).setContentsMargins(0, 0, 0, 0);
        rows.addWidget(page, 1);
    }
    connect(&tabs_, &QTabBar::currentChanged, this, [this] { showPages(); });
    showPages();
}

void MapPages::keepLowerLow() {
    dynamic_cast<QBoxLayout&>(*layout()).setStretchFactor(&lower_, 0);
}

void MapPages::setPaged(bool paged) {
    if (paged != paged_) {
        paged_ = paged;
        showPages();
    }
}

void MapPages::reveal(const QWidget& inside) {
    for (const auto* page : {&upper_, &lower_}) {
        if (page->isAncestorOf(&inside)) {
            tabs_.setCurrentIndex(page == &upper_ ? 0 : 1);
        }
    }
}

void MapPages::showPages() {
    tabs_.setVisible(paged_);
    upper_.setVisible(!paged_ || tabs_.currentIndex() == 0);
    lower_.setVisible(!paged_ || tabs_.currentIndex() == 1);
}

}  // namespace korvane::views
