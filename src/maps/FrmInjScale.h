// The window that rescales the fuel map for injectors of another size.
#pragma once

#include <functional>
#include <string_view>

#include "core/SharedTables.h"
#include "platform/Controls.h"
#include "platform/Window.h"

namespace korvane::maps {

class FrmInjScale : public platform::Window {
public:
    FrmInjScale(platform::Machine& machine, core::SharedTables& tables);

    platform::Frame FrameInjectorSize{*this, "FrameInjectorSize"};  // "Injector size scaling"
    platform::Label lblInjectorOld{*this, "lblInjectorOld"};
    platform::Label lblInjectorNew{*this, "lblInjectorNew"};
    platform::TextBox txtInjectorOld{*this, "txtInjectorOld"};
    platform::TextBox txtInjectorNew{*this, "txtInjectorNew"};  // ccm per minute
    platform::CommandButton btnInjectorChange{*this, "btnInjectorChange"};
    platform::Frame FrameFuelPressure{*this, "FrameFuelPressure"};  // "Fuel pressure scaling", empty

    // Redraws frmMaps' edited fuel map, if frmMaps is open.
    std::function<void()> populateFuelOUT;

protected:
    void Form_Load() override;

private:
    void placeControls();
    void btnInjectorChange_Click();
    // Writes the box's whole number to a section of the program's ini file and returns it.
    float store(std::string_view section, const platform::TextBox& box);
    void scaleMap();

    core::SharedTables& tables_;
};

}  // namespace korvane::maps
