// The window of the restore points.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "keep/restore/PointList.h"
#include "keep/restore/RestoreContext.h"

namespace korvane::keep {

// Sends nothing unless btnRestore, btnGoOn or btnGoBack write settings. Made anew for each opening.
class FrmRestore : public controls::Window, private controls::Observer {
public:
    // `context` outlives the window.
    FrmRestore(platform::Machine& machine, const RestoreContext& context);
    ~FrmRestore() override;

    controls::TextBox txtFilter{*this, "txtFilter"};
    controls::CommandButton btnMake{*this, "btnMake", "Make a point now"};
    PointList lstPoints;
    controls::Label lblCount{*this, "lblCount"};
    controls::Label lblPoint{*this, "lblPoint"};  // the picked point in words
    controls::TextBox txtNote{*this, "txtNote"};
    controls::CommandButton btnNote{*this, "btnNote", "Keep note"};
    controls::CommandButton btnCompare{*this, "btnCompare", "Compare"};
    controls::CommandButton btnExportTune{*this, "btnExportTune", "Export tune..."};
    controls::CommandButton btnExportImage{*this, "btnExportImage", "Export image..."};
    controls::CommandButton btnDelete{*this, "btnDelete", "Delete"};
    controls::CheckBox chkFuel{*this, "chkFuel", "Fuel map"};
    controls::CheckBox chkIgnition{*this, "chkIgnition", "Ignition map"};
    controls::CheckBox chkPwm{*this, "chkPwm", "PWM table"};
    controls::CheckBox chkSettings{*this, "chkSettings", "Settings"};
    controls::CheckBox chkDesk{*this, "chkDesk", "Maps as they were edited"};
    controls::CommandButton btnRestore{*this, "btnRestore", "Restore"};
    controls::Label lblOther{*this, "lblOther"};  // that the point is of another type of ECU
    controls::Label lblState{*this, "lblState"};  // what came of the last press
    controls::ProgressBar prgRestore{*this, "prgRestore"};
    controls::CommandButton btnStop{*this, "btnStop", "Stop"};
    controls::Label lblOffer{*this, "lblOffer"};  // a restore that was not completed
    controls::CommandButton btnGoOn{*this, "btnGoOn", "Go on"};
    controls::CommandButton btnGoBack{*this, "btnGoBack", "Go back"};
    controls::CommandButton btnForget{*this, "btnForget", "Leave it so"};
    controls::Timer Timer1{*this, "Timer1", true, 500};  // finds what has changed in the ECU

    // Picks a point by its name, and shows it whatever the filter is; nothing happens if there is none.
    void pick(const std::string& name);

    // Before the journal of a restore is removed: what the user is asked; empty if there is none.
    [[nodiscard]] std::string forgetQuestion() const;
    // Before the picked point is deleted: what the user is asked; empty if none is picked.
    [[nodiscard]] std::string deleteQuestion() const;

protected:
    void Form_Load() override;
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void connectControls();
    void connectRun();
    void act(const std::function<std::string(const std::string& name)>& action);
    void follow();
    void showPoints();
    void showCount();
    void showChosen();
    void showMaps(const Decoded<Snapshot>& point);
    void showOther(const Decoded<Snapshot>& point);
    void showButtons();
    void showRun();
    [[nodiscard]] RestoreChoice choice() const;
    [[nodiscard]] std::string exportTune(const std::string& name);
    [[nodiscard]] std::string exportImage(const std::string& name);
    [[nodiscard]] std::string askForFile(const char* title);

    const RestoreContext& context_;
    std::optional<Snapshot> compared_;  // what the ECU had when the rows were compared
    std::string shown_;                 // name of the point that the controls are about
};

}  // namespace korvane::keep
