// A small window with one control of each kind, and a console that drives it on a virtual machine.
#pragma once

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "console/Console.h"
#include "controls/Controls.h"
#include "controls/MSComm.h"
#include "controls/PictureBox.h"
#include "controls/Timer.h"
#include "support/VirtualMachine.h"

namespace korvane::console {

// Rows and columns that count from 1.
class TestTable : public controls::Control {
public:
    using Control::Control;
    [[nodiscard]] std::string_view kind() const override { return "list view"; }
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{1, 3}; }
    [[nodiscard]] int columnCount() const override { return 2; }
    void choose(int choice) override { chosen = choice; }
    void clickColumn(int column) override { clicked = column; }

    int chosen = 0;
    int clicked = 0;
};

class TestWindow : public controls::Window {
public:
    explicit TestWindow(platform::Machine& machine, std::string_view name = "frmTest")
        : Window(machine, name),
          btnGo(*this, "btnGo"),
          chkTrace(*this, "chkTrace"),
          lblPlain(*this, "lblPlain"),
          lblHot(*this, "lblHot"),
          cmbPort(*this, "cmbPort"),
          txtCell(*this, "txtCell", 4),
          txtName(*this, "txtName"),
          fraInner(*this, "fraInner"),
          btnInner(*this, "btnInner"),
          imgLamp(*this, "imgLamp"),
          picPlot(*this, "picPlot"),
          lvwTable(*this, "lvwTable"),
          tmrTick(*this, "tmrTick", false, 100),
          MSComm1(*this, "MSComm1") {
        btnInner.setContainer(&fraInner);
        for (const auto* row : {"COM1", "COM2", "COM3"}) {
            cmbPort.AddItem(row);
        }
    }

    std::vector<std::string> log;  // what the handlers noted
    std::function<void()> onUnload;
    bool staysOpen = false;

    controls::CommandButton btnGo;
    controls::CheckBox chkTrace;
    controls::Label lblPlain, lblHot;
    controls::ComboBox cmbPort;
    controls::ControlArray<controls::TextBox> txtCell;
    controls::TextBox txtName;
    controls::Frame fraInner;
    controls::CommandButton btnInner;
    controls::Image imgLamp;
    controls::PictureBox picPlot;
    TestTable lvwTable;
    controls::Timer tmrTick;
    controls::MSComm MSComm1;

protected:
    bool Form_Unload() override {
        if (onUnload) {
            onUnload();
        }
        return !staysOpen;
    }
    void Form_Resize() override { log.push_back("resize " + std::to_string(Width) + " " + std::to_string(Height)); }
};

class FakeEcu : public EcuControl {
public:
    std::string set(const std::string& key, const std::string& value) override {
        settings.push_back(key + "=" + value);
        return key == "bad" ? "the virtual ECU has no key bad" : "";
    }
    [[nodiscard]] long sparksFired() const override { return sparks; }

    std::vector<std::string> settings;
    long sparks = 0;
};

class FakeScreenshots : public Screenshots {
public:
    std::string take(controls::Window& window, const std::filesystem::path& file) override {
        taken.push_back(std::string(window.name()) + " " + file.string());
        return file == "/forbidden.png" ? "/forbidden.png can't be written" : "";
    }
    std::vector<std::string> taken;
};

// A virtual machine with a tap on its line.
struct ConsoleMachine : support::VirtualMachine {
    platform::TappedLine tap{line, pump, [this](auto bytes) { line.inject(bytes); }};
    platform::Machine tapped = with(tap);
    Names names;
    std::ostringstream errors;

    // The reply, or "(none)", when all that is due behind the command has run.
    static std::string execute(Console& console, std::string_view command) {
        const auto reply = console.execute(command);
        if (!console.ended()) {
            console.whenEnded([] {});
        }
        return reply.value_or("(none)");
    }
};

struct ConsoleOnTestWindow : ConsoleMachine {
    ConsoleOnTestWindow() { window->show(); }

    std::string run(std::string_view command) { return execute(console, command); }

    FakeEcu ecu;
    FakeScreenshots screenshots;
    int quits = 0;
    std::unique_ptr<TestWindow> window = std::make_unique<TestWindow>(tapped);
    Console console{{tapped, dialogs, tap, names, &ecu, &screenshots, errors, [this] { ++quits; }, {}}};
};

}  // namespace korvane::console
