// The whole program with its real windows, the virtual ECU at the other end of a line in memory, and a clock that runs
// as fast as it can: the toolkit paints and takes its events every 20 ms of that clock, in the middle of whatever runs
// then.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "program/Program.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"

namespace korvane::app {

inline constexpr int kBeat = 20;  // ms
inline ecu::EcuSettings halfLoad() {
    ecu::EcuSettings settings;
    settings.drive = {ecu::DriveKind::Bench, 2000, 50.0, 10.0};
    return settings;
}

class SettingsStory : public testing::Test {
protected:
    explicit SettingsStory(const ecu::EcuSettings& ecu = halfLoad()) : ecu_(ecu) {
        host_.folder.write("Settings_par.ini", "");
        views::addViews(views_);
        program_.start();
        static_cast<void>(host_.dialogs.takeMessages());
        heart_ = host_.pump.makeAlarm([this] { beat(); });
        heart_->callAt(0);
    }

    [[nodiscard]] int now() const { return static_cast<int>(host_.pump.milliseconds()); }
    // In the middle of what runs `milliseconds` from now.
    void in(int milliseconds, std::function<void()> action) {
        alarms_.push_back(host_.pump.makeAlarm(std::move(action)));
        alarms_.back()->callAt((now() + milliseconds) * platform::kMicrosPerMilli);
    }

    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(controls::Window& window, const std::string& name) const {
        auto* const view = views_.viewOf(window);
        auto* const widget =
            view == nullptr ? nullptr : dynamic_cast<Widget*>(view->findChild<QWidget*>(QString::fromStdString(name)));
        if (widget == nullptr) {
            throw std::runtime_error("no widget " + name);
        }
        return *widget;
    }
    // With the mouse, on the mark of an option or a check box and in the middle of all else.
    void press(controls::Window& window, const std::string& name) {
        auto& widget = find(window, name);
        ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << name;
        auto* const button = dynamic_cast<QAbstractButton*>(&widget);
        const bool marked = button != nullptr && button->isCheckable();
        const QPoint middle = widget.rect().center();
        QTest::mouseClick(&widget, Qt::LeftButton, {}, marked ? QPoint(middle.y(), middle.y()) : middle);
    }
    void press(const std::string& name) { press(misc_, name); }
    void chooseTab(int tab) {
        auto& tabs = find<QTabBar>(misc_, "tbsOptions");
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab - 1).center());
    }
    static void key(Qt::Key key) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key);
    }
    // Over what stands in the box.
    void type(const std::string& box, const QString& text) { type(misc_, box, text); }
    void type(controls::Window& window, const std::string& box, const QString& text) {
        press(window, box);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    [[nodiscard]] std::string shown(const std::string& box) const {
        return find<QLineEdit>(misc_, box).text().toStdString();
    }
    // As a button of the main window shows it.
    [[nodiscard]] std::string caption(const std::string& button) {
        return find<QAbstractButton>(main_, button).text().remove('&').toStdString();
    }
    [[nodiscard]] bool polls() { return main_.TimerRequestData.Enabled; }

    // Opens the port; the first read has ended and the settings are in sight.
    void connectAndOpen() {
        press(main_, "btnConnect");
        host_.pump.wait(200);
        openSettings();
    }
    void openSettings() {
        press(main_, "btnAsetukset");
        host_.pump.wait(2 * kBeat);
        auto* const view = views_.viewOf(misc_);
        ASSERT_NE(view, nullptr);
        ASSERT_TRUE(view->isVisible());
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    }
    void save(const std::string& button) {
        press(button);
        host_.pump.wait(50);
    }

    [[nodiscard]] std::vector<int> eeprom() const { return {ecu_.eeprom().begin(), ecu_.eeprom().end()}; }
    // Address and new value of each cell that is not as in `before`.
    [[nodiscard]] std::map<int, int> changedSince(const std::vector<int>& before) const {
        std::map<int, int> changes;
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (eeprom().at(i) != before[i]) {
                changes[static_cast<int>(i)] = eeprom().at(i);
            }
        }
        return changes;
    }
    std::vector<std::string> messages() {
        std::vector<std::string> texts;
        for (const auto& box : host_.dialogs.takeMessages()) {
            texts.push_back(box.text);
        }
        return texts;
    }
    [[nodiscard]] std::string imageName() const {
        for (const auto& name : host_.folder.names()) {
            if (name.starts_with("EEPROM_")) {
                return (host_.folder / name).string();
            }
        }
        return {};
    }

    support::EcuDevice ecu_;
    support::VirtualMachine host_{&ecu_};
    program::Program program_{host_.machine};
    live::FrmSarn2& main_ = program_.frmSarn2();
    settings::FrmMisc& misc_ = program_.frmMisc();
    views::ViewHost views_{host_.windows};

private:
    void beat() {
        heart_->callAt(host_.pump.now() + kBeat * platform::kMicrosPerMilli);
        views_.clock().tick();
        QApplication::processEvents();
    }

    std::vector<std::unique_ptr<platform::Alarm>> alarms_;
    std::unique_ptr<platform::Alarm> heart_;
};

}  // namespace korvane::app
