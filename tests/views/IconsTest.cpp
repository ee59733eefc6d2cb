#include <QGuiApplication>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

#include "views/widgets/Icons.h"

namespace korvane::views {
namespace {

// The colour of a point on the left side of the frame.
QColor inkOf(const QIcon& icon) {
    return icon.pixmap(32, 32).toImage().pixelColor(2, 16);
}

TEST(BigReadoutIcon, FollowsADesktopThatTurnsDark) {
    const QPalette before = QGuiApplication::palette();
    const QIcon icon = bigReadoutIcon();
    for (const QColor ink : {QColor(10, 20, 30), QColor(250, 240, 230)}) {
        QPalette palette = before;
        palette.setColor(QPalette::ButtonText, ink);
        QGuiApplication::setPalette(palette);
        EXPECT_EQ(inkOf(icon).name(), ink.name());
    }
    QGuiApplication::setPalette(before);
}

}  // namespace
}  // namespace korvane::views
