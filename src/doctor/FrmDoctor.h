// The window that tests a port.
#pragma once

#include "controls/Controls.h"
#include "controls/ListBox.h"
#include "controls/Window.h"
#include "doctor/Doctor.h"
#include "link/ConnectionPanel.h"

namespace korvane::doctor {

// Of the port and speed that the main window has chosen at the time. Made anew for each opening. While the program
// itself has the port open nothing is listened to or asked; a connect in the middle ends the test.
class FrmDoctor : public controls::Window, private controls::Observer {
public:
    FrmDoctor(platform::Machine& machine, link::ConnectionPanel& panel);
    ~FrmDoctor() override;

    controls::Label lblPort{*this, "lblPort"};
    controls::ListBox lstFindings{*this, "lstFindings"};  // "Good: ...", "Hint: ...", "Fault: ..."
    controls::Label lblWarning{*this, "lblWarning"};      // what asking may do
    controls::ListBox lstSpeeds{*this, "lstSpeeds"};      // what came back at each speed
    controls::Label lblVerdict{*this, "lblVerdict"};
    controls::CommandButton btnAgain{*this, "btnAgain", "Test again"};
    controls::CommandButton btnAsk{*this, "btnAsk", "Ask the ECU"};

protected:
    void Form_Load() override;
    bool Form_Unload() override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void testAgain();
    void ask();
    void showAll();
    [[nodiscard]] std::string state() const;

    link::ConnectionPanel& panel_;
    Doctor doctor_;
};

}  // namespace korvane::doctor
