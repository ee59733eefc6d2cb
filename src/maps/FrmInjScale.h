// The window that rescales the fuel map for injectors of another size.
#pragma once

#include <functional>
#include <string_view>

#include "controls/Controls.h"
#include "controls/Window.h"
#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"

namespace korvane::maps {

class FrmInjScale : public controls::Window {
public:
    FrmInjScale(platform::Machine& machine, core::SharedTables& tables);

    controls::Frame FrameInjectorSize{*this, "FrameInjectorSize"};  // "Injector size scaling"
    controls::Label lblInjectorOld{*this, "lblInjectorOld"};
    controls::Label lblInjectorNew{*this, "lblInjectorNew"};
    controls::TextBox txtInjectorOld{*this, "txtInjectorOld"};
    controls::TextBox txtInjectorNew{*this, "txtInjectorNew"};  // ccm per minute
    controls::CommandButton btnInjectorChange{*this, "btnInjectorChange"};
    controls::Frame FrameFuelPressure{*this, "FrameFuelPressure"};  // "Fuel pressure scaling", empty

    // What the scaling changes is noted in it.
    void setHistory(core::MapHistory& history) { history_ = &history; }

    // Redraws frmMaps' edited fuel map, if frmMaps is open.
    std::function<void()> populateFuelOUT;

protected:
    void Form_Load() override;

private:
    void placeControls();
    void btnInjectorChange_Click();
    // Writes the box's whole number to a section of the program's ini file and returns it.
    float store(std::string_view section, const controls::TextBox& box);
    void scaleMap();
    void scaleCells(double ratio);

    core::SharedTables& tables_;
    core::MapHistory* history_ = nullptr;
};

}  // namespace korvane::maps
