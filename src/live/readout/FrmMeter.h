// A small window to try the dial: its needle sweeps from Min to Max by itself.
#pragma once

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "live/SarnMeter.h"

namespace korvane::live {

class FrmMeter : public controls::Window {
public:
    explicit FrmMeter(platform::Machine& machine);

    controls::ComboBox Combo1{*this, "Combo1"};  // the dial's type
    SarnMeter SarnMeter1{*this, "SarnMeter1"};
    controls::Timer Timer1{*this, "Timer1", true, 100};

    // How large the dial is in a window of this size; all in twips.
    [[nodiscard]] static int dialSide(int width, int height);

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void sweep();
};

}  // namespace korvane::live
