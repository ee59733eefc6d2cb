#include "maps/FrmInjScale.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/Numbers.h"
#include "core/files/IniFile.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::maps {

namespace {

constexpr std::size_t kScaledCells = 160;  // also of a large map
constexpr double kLargestCell = 250.0;
constexpr const char* kIniFile = "Settings.ini";

}  // namespace

FrmInjScale::FrmInjScale(platform::Machine& machine, core::SharedTables& tables)
    : Window(machine, "frmInjScale"), tables_(tables) {
    Caption = "Injection map rescaling";
    Width = 420 * 15;
    Height = 300 * 15;
    FrameInjectorSize.Caption = "Injector size scaling";
    FrameFuelPressure.Caption = "Fuel pressure scaling";
    lblInjectorOld.Caption = "Old injector";
    lblInjectorNew.Caption = "New injector";
    txtInjectorOld.Text = "500";
    txtInjectorNew.Text = "600";
    btnInjectorChange.Caption = "Change";
    btnInjectorChange.Click = [this] { btnInjectorChange_Click(); };
    placeControls();
}

void FrmInjScale::placeControls() {
    FrameInjectorSize.place(120, 120, 6000, 2000);
    lblInjectorOld.place(120, 360, 1500, 255);
    txtInjectorOld.place(1700, 360, 1000, 315);
    lblInjectorNew.place(120, 780, 1500, 255);
    txtInjectorNew.place(1700, 780, 1000, 315);
    btnInjectorChange.place(1700, 1300, 1500, 435);
    FrameFuelPressure.place(120, 2240, 6000, 1500);
    for (controls::Control* control : std::initializer_list<controls::Control*>{
             &lblInjectorOld, &txtInjectorOld, &lblInjectorNew, &txtInjectorNew, &btnInjectorChange}) {
        control->setContainer(&FrameInjectorSize);
    }
}

void FrmInjScale::Form_Load() {
    txtInjectorNew.Text = core::textOf(tables_.NewInjectorSize);
    txtInjectorOld.Text = core::textOf(tables_.OldInjectorSize);
}

// The sizes are stored before the map is touched: a new size of 0 still leaves them in the file.
void FrmInjScale::btnInjectorChange_Click() {
    try {
        tables_.OldInjectorSize = store("OldInjector", txtInjectorOld);
        tables_.NewInjectorSize = store("NewInjector", txtInjectorNew);
        scaleMap();
    } catch (const platform::RuntimeError& error) {
        machine().dialogs.show(
            {"Korvane Tuner", std::string("Error scaling: ") + error.what(), platform::MessageIcon::Exclamation});
    }
}

float FrmInjScale::store(std::string_view section, const controls::TextBox& box) {
    const std::int16_t size = core::toInt16(core::toInt(core::val(box.Text.get())));
    const std::array lines{core::textOf(int{size})};
    static_cast<void>(core::WriteIniSection(machine().folder / kIniFile, section, lines));
    return size;
}

// A fraction typed into a box counts, though the stored sizes are whole.
void FrmInjScale::scaleMap() {
    scaleCells(core::quotient(core::val(txtInjectorOld.Text.get()), core::val(txtInjectorNew.Text.get())));
    if (populateFuelOUT) {
        populateFuelOUT();
    }
}

void FrmInjScale::scaleCells(double ratio) {
    const core::MapHistory::Change change(history_, {core::Cause::Kind::Scaling});
    for (std::size_t cell = 0; cell < kScaledCells; ++cell) {
        const double scaled = core::toInt(core::finite(tables_.FuelMapOut[cell] * ratio));
        tables_.FuelMapOut[cell] = core::toByte(std::clamp(scaled, 0.0, kLargestCell));
    }
}

}  // namespace korvane::maps
