// A small window with one control of each kind, its view, and the machine below.
#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "controls/Controls.h"
#include "controls/PictureBox.h"
#include "support/VirtualMachine.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/frame/ViewHost.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/charts/PictureView.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

class Form : public controls::Window {
public:
    explicit Form(platform::Machine& machine) : Window(machine, "frmTest") {
        for (const char* row : {"one", "two", "three"}) {
            cboList.AddItem(row);
        }
        btnInside.setContainer(&fraGroup);
        for (const char* tab : {"Fuel", "Ignition"}) {
            tabPages.addTab(tab);
        }
    }

    void Form_KeyDown(int keyCode, int) override { formKeys.push_back(keyCode); }

    controls::Label lblFixed{*this, "lblFixed"};
    controls::Label lblLive{*this, "lblLive"};
    controls::CommandButton btnPress{*this, "btnPress"};
    controls::CheckBox chkTick{*this, "chkTick"};
    controls::ComboBox cboList{*this, "cboList"};
    controls::TextBox txtCell{*this, "txtCell", 17};
    controls::Frame fraGroup{*this, "fraGroup"};
    controls::CommandButton btnInside{*this, "btnInside"};
    controls::Image imgLamp{*this, "imgLamp"};
    controls::PictureBox picPlot{*this, "picPlot"};
    controls::ControlArray<controls::OptionButton> optChoice{*this, "optChoice", 2};
    controls::TabStrip tabPages{*this, "tabPages"};
    controls::PictureBox picPage{*this, "picPage"};
    controls::ProgressBar prgDone{*this, "prgDone"};

    std::vector<int> formKeys;
    bool stays = false;
    int resizes = 0;

protected:
    bool Form_Unload() override { return !stays; }
    void Form_Resize() override { ++resizes; }
};

class FormView : public WindowView {
public:
    FormView(Form& form, FrameClock& clock) : WindowView(form, clock) {
        QWidget* const self = this;
        auto& rows = child<QVBoxLayout>(self);
        const auto put = [&rows](auto& widget) -> auto& {
            rows.addWidget(&widget);
            return widget;
        };
        auto& lamp = put(child<Lamp>(self));
        binder().bind(form.lblFixed, put(child<QLabel>(self)));
        binder().bind(form.lblLive, put(child<Readout>(self)), &lamp);
        binder().bind(form.btnPress, put(child<QPushButton>(self)), 'p');
        binder().bind(form.chkTick, put(child<QCheckBox>(self)), 't');
        binder().bind(form.cboList, put(child<DropDown>(self)));
        binder().bind(form.txtCell, put(child<QLineEdit>(self)));
        auto& group = put(child<QGroupBox>(self));
        binder().bind(form.fraGroup, group);
        binder().bind(form.btnInside, child<QPushButton>(static_cast<QWidget*>(&group)));
        binder().bind(form.imgLamp, lamp);
        binder().bind(form.picPlot, put(child<PictureView>(self)));
        for (auto& option : form.optChoice) {
            binder().bind(option, put(child<QRadioButton>(self)), 'o');
        }
        binder().bind(form.tabPages, put(child<QTabBar>(self)));
        binder().bindContainer(form.picPage, put(child<QWidget>(self)));
        binder().bind(form.prgDone, put(child<QProgressBar>(self)));
    }
};

struct FormBench : support::VirtualMachine {
    FormBench() {
        host.add<FormView, Form>("frmTest");
        form.Width = 400 * 15;
        form.Height = 600 * 15;
    }

    // On the screen and active, all painted.
    void show() {
        form.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(form); }
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(const char* name) const {
        return findIn<Widget>(view(), name);
    }

    // Runs the next frame of the clock, and what the toolkit has delayed.
    void frame() {
        host.clock().tick();
        settle();
    }

    Form form{machine};
    ViewHost host{windows};
};

}  // namespace korvane::views
