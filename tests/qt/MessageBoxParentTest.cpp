#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>
#include <memory>

#include "platform/qt/QtDialogs.h"

namespace korvane::platform {
namespace {

TEST(MessageBoxParent, WindowThatGoesTakesItsBoxAlong) {
    QtPump pump;
    QtDialogs dialogs(pump);
    auto window = std::make_unique<QWidget>();
    window->show();
    QApplication::setActiveWindow(window.get());
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (QApplication::activeModalWidget() != nullptr) {
            timer.stop();
            window.reset();
        }
    });
    timer.start(1);
    dialogs.show({"title", "text"});
    EXPECT_EQ(window, nullptr);
}

}  // namespace
}  // namespace korvane::platform
