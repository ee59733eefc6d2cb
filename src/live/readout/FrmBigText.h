// One live channel in very large figures.
#pragma once

#include <cstdint>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "core/tables/LiveTable.h"
#include "live/readout/BigTexts.h"

namespace korvane::live {

// Made anew for each opening, any number of them. Reads the channels' values every 200 ms, whatever brings them.
class FrmBigText : public controls::Window {
public:
    FrmBigText(platform::Machine& machine, const core::LiveTable& live, BigTexts& bigTexts);

    controls::ComboBox Combo1{*this, "Combo1"};  // the channel
    controls::Label Label1{*this, "Label1"};     // its value
    controls::CheckBox Check1{*this, "Check1"};  // whether a value above the channel's limit is shown in red
    controls::Timer Timer1{*this, "Timer1", true, 200};

    [[nodiscard]] int hWnd() const { return handle_; }
    // The window's size as it was loaded, twips.
    [[nodiscard]] std::int16_t initialWidth() const { return initialWidth_; }
    [[nodiscard]] std::int16_t initialHeight() const { return initialHeight_; }

protected:
    void Form_Load() override;
    bool Form_Unload() override;
    void Form_Resize() override;

private:
    void tick();
    void showAlarm(double limit);

    const core::LiveTable& live_;
    BigTexts& bigTexts_;
    int handle_;
    std::int16_t initialWidth_ = 0;
    std::int16_t initialHeight_ = 0;
};

}  // namespace korvane::live
