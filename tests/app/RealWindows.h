// The whole program with its real windows on the offscreen display, a real pseudo-terminal, and the virtual ECU in a
// process of its own.
#pragma once

#include <QApplication>
#include <QTest>

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "app/Process.h"
#include "app/RealProgram.h"
#include "qt/Until.h"
#include "support/TempFolder.h"

namespace korvane::app {

class RealWindows : public testing::Test {
protected:
    RealWindows() : ecu_("korvane-ecu", {"--pty", port(), "--with-parent"}), real_(2, port()) {
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
    BackgroundProgram ecu_;
    RealProgram real_;
    platform::QtPump& pump_ = real_.pump;
    platform::QueuedDialogs& dialogs_ = real_.below.dialogs;
    support::MemoryPreferences& preferences_ = real_.below.preferences;
    support::MemoryLog& log_ = real_.below.log;
    controls::WindowList& windows_ = real_.below.windows;
    program::Program& program_ = real_.program;
    live::FrmSarn2& window_ = program_.frmSarn2();
    views::ViewHost& views_ = real_.views;
};

}  // namespace korvane::app
