// The window with the steps that can be undone.
#pragma once

#include <string>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "maps/history/MapUndo.h"
#include "maps/history/StepList.h"

namespace korvane::maps {

// Orders count as given in the map window that is in use. Made anew for each opening.
class FrmHistory : public controls::Window, private controls::Observer {
public:
    FrmHistory(platform::Machine& machine, MapUndo& undo);
    ~FrmHistory() override;

    StepList lstSteps;  // picking a row goes there
    controls::CommandButton btnUndo{*this, "btnUndo"};
    controls::CommandButton btnRedo{*this, "btnRedo"};
    controls::Label lblNote{*this, "lblNote"};           // what came of the last order
    controls::Timer Timer1{*this, "Timer1", true, 500};  // finds what a script has changed

protected:
    void Form_Load() override;
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void showRows();
    [[nodiscard]] PaneWindow* mapWindow() const;

    MapUndo& undo_;
};

}  // namespace korvane::maps
