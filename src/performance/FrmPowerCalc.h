// The tuning helper: road speed from engine speed and the car's gearing, and the time of a pull.
#pragma once

#include <array>
#include <filesystem>

#include "controls/Controls.h"
#include "controls/ListBox.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "performance/CarFile.h"
#include "performance/PullTimer.h"
#include "performance/RoadSpeed.h"

namespace korvane::performance {

class FrmPowerCalc : public controls::Window {
public:
    // `rpm` is the label of the main window that shows the engine's speed.
    FrmPowerCalc(platform::Machine& machine, controls::Label& rpm);

    controls::TextBox txtCarName{*this, "txtCarName"};
    controls::TextBox txtPera{*this, "txtPera"};  // final drive
    controls::ControlArray<controls::TextBox> txtVaihde{*this, "txtVaihde", 5};
    controls::TextBox txtUsedGear{*this, "txtUsedGear"};  // 1 to 5
    controls::TextBox txtPaino{*this, "txtPaino"};        // weight; kept with the car, not used
    controls::TextBox txtrengas{*this, "txtrengas"};      // tyre diameter, cm
    controls::TextBox txtStartRPM{*this, "txtStartRPM"};
    controls::TextBox txtStopRPM{*this, "txtStopRPM"};
    controls::TextBox txtSpeed{*this, "txtSpeed"};  // km/h
    controls::Label lbltimer{*this, "lbltimer"};
    controls::Image imgLed{*this, "imgLed"};  // green while a pull is timed
    controls::ListBox List1{*this, "List1"};
    controls::CommandButton Command1{*this, "Command1"};
    controls::CommandButton Command2{*this, "Command2"};
    controls::CommandButton Command3{*this, "Command3"};
    controls::Timer Timer1{*this, "Timer1", true, 50};
    controls::Timer Timer2{*this, "Timer2", false, 190};  // a test feed: writes speeds to `rpm`

protected:
    void Form_Load() override;

private:
    using CarBoxes = std::array<controls::TextBox*, kCarValues>;

    void showDesign();
    void placeControls();
    [[nodiscard]] CarBoxes carBoxes();
    void save();
    void load();
    void loadCar(const std::filesystem::path& path);
    void tellUnreadable(const std::filesystem::path& path);
    void keepCarFile(const std::filesystem::path& path);

    void Timer1_Tick();
    void Timer2_Tick();
    void measure();
    [[nodiscard]] Gearing gearing();
    void begin(const Reading& reading);
    void finish(const Pull& pull);
    void saveToLog();

    controls::Label& rpm_;
    std::filesystem::path carFile_;
    PullTimer timer_;
    int testRpm_ = 0;
};

}  // namespace korvane::performance
