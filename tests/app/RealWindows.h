// The whole program with its real windows on the offscreen display, a real pseudo-terminal, and the virtual ECU in a
// process of its own.
#pragma once

#include <QApplication>
#include <QTest>

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "app/Process.h"
#include "controls/MSComm.h"
#include "platform/QueuedDialogs.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "program/Program.h"
#include "qt/Until.h"
#include "support/TempFolder.h"
#include "views/Views.h"

namespace korvane::app {

class RealWindows : public testing::Test {
protected:
    RealWindows()
        : ecu_("korvane-ecu", {"--pty", port(), "--with-parent"}),
          line_(pump_, platform::PortMap(pump_, {{2, port()}}, [] { return std::vector<platform::FoundPort>(); })),
          machine_{pump_, line_, dialogs_, preferences_, log_, windows_, folder_.path(), '.', {}},
          program_(machine_),
          views_(windows_) {
        views::addViews(views_);
        // Without the read that follows a load: it takes twenty seconds, here by the real clock.
        program_.connection().loadSettings = [this] {
            program_.frmMisc().load();
            program_.frmMisc().TimerInitialGetData.Enabled = false;
        };
        program_.start();
        auto* const view = views_.viewOf(window_);
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view));
        EXPECT_TRUE(platform::until(pump_, [this] { return std::filesystem::exists(port()); }));
    }

    [[nodiscard]] std::string port() const { return (folder_.path() / "ecu").string(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        auto* const focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : static_cast<QWidget*>(views_.viewOf(window_)), key, modifiers);
    }

    // Tab until the control of this name has the focus.
    void tabTo(const std::string& name) {
        for (int i = 0; i < 60; ++i) {
            if (window_.activeControl() != nullptr && window_.activeControl()->path() == name) {
                return;
            }
            press(Qt::Key_Tab);
        }
        FAIL() << name << " can't be reached by Tab";
    }

    support::TempFolder folder_;
    platform::QtPump pump_;
    BackgroundProgram ecu_;
    platform::QtSerialLine line_;
    platform::QueuedDialogs dialogs_;
    platform::MemoryPreferences preferences_;
    platform::MemoryLog log_;
    controls::WindowList windows_;
    platform::Machine machine_;
    program::Program program_;
    live::FrmSarn2& window_ = program_.frmSarn2();
    views::ViewHost views_;
};

}  // namespace korvane::app
