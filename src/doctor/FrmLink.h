// The window that shows how good the line is, over the last ten minutes.
#pragma once

#include <optional>
#include <string>

#include "controls/Controls.h"
#include "controls/PictureBox.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "link/ConnectionPanel.h"

namespace korvane::doctor {

// Made anew for each opening.
class FrmLink : public controls::Window {
public:
    FrmLink(platform::Machine& machine, link::ConnectionPanel& panel);

    controls::Label lblState{*this, "lblState"};
    controls::Label lblRoundTrip{*this, "lblRoundTrip"};
    controls::PictureBox picRoundTrip{*this, "picRoundTrip"};
    controls::Label lblFrames{*this, "lblFrames"};  // against what the speed and the refresh allow
    controls::PictureBox picFrames{*this, "picFrames"};
    controls::Label lblFaults{*this, "lblFaults"};
    controls::PictureBox picFaults{*this, "picFaults"};
    controls::Timer Timer1{*this, "Timer1", true, 1000};

protected:
    void Form_Load() override { showAll(); }

private:
    void showAll();
    void drawAll();
    [[nodiscard]] std::optional<link::PollLimits> limits() const;
    [[nodiscard]] std::string stateText() const;
    [[nodiscard]] std::string roundTripText() const;
    [[nodiscard]] std::string framesText() const;
    [[nodiscard]] std::string faultsText() const;

    link::ConnectionPanel& panel_;
};

}  // namespace korvane::doctor
