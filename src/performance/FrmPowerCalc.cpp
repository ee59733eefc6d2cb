#include "performance/FrmPowerCalc.h"

#include <algorithm>
#include <string>

#include "core/Numbers.h"
#include "core/tables/ModuleReg.h"
#include "performance/AccelerationLog.h"
#include "performance/PullTexts.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::performance {

namespace {

using controls::Picture;
using platform::FileDialog;
using platform::RuntimeError;

constexpr const char* kFilter = "All Files (*.par)|*.par";
constexpr const char* kPreference = "CarFile";
constexpr const char* kDefaultCar = "RitmoAbarth.par";

constexpr int kTestStep = 100;  // rpm
constexpr int kTestTop = 8000;

}  // namespace

FrmPowerCalc::FrmPowerCalc(platform::Machine& machine, controls::Label& rpm)
    : Window(machine, "frmPowerCalc"), rpm_(rpm) {
    showDesign();
    placeControls();
    Command1.Click = [this] { List1.Clear(); };
    Command2.Click = [this] { save(); };
    Command3.Click = [this] { load(); };
    Timer1.Tick = [this] { Timer1_Tick(); };
    Timer2.Tick = [this] { Timer2_Tick(); };
}

void FrmPowerCalc::showDesign() {
    Caption = "Tuning helper";
    const CarValues design{"Ritmo Abarth", "3.4", "3.583", "2.235", "1.542", "1.154",
                           "0.967",        "",    "1150",  "56.6",  "2500",  "6500"};
    const CarBoxes boxes = carBoxes();
    for (std::size_t i = 0; i < kCarValues; ++i) {
        boxes[i]->Text = design[i];
    }
    txtSpeed.Locked = true;
    lbltimer.Caption = "0 ms";
    imgLed.Shown = Picture::Grey;
    Command1.Caption = "Clear Log";
    Command2.Caption = "Save";
    Command3.Caption = "Load";
}

void FrmPowerCalc::placeControls() {
    Width = 920 * 15;
    Height = 500 * 15;
    txtSpeed.place(5700, 300, 1500, 600);
    lbltimer.place(7500, 300, 2400, 600);
    imgLed.place(10200, 480, 240, 240);
    List1.place(4800, 2000, 6300, 4800);
    Command1.place(9600, 6900, 1500, 435);
    Command2.place(300, 6900, 1500, 435);
    Command3.place(1950, 6900, 1500, 435);
    int top = 300;
    for (auto* const box : carBoxes()) {
        box->place(2400, top, 1500, 315);
        top += 435;
    }
}

// In the order of the car file.
FrmPowerCalc::CarBoxes FrmPowerCalc::carBoxes() {
    return {&txtCarName,   &txtPera,     &txtVaihde(0), &txtVaihde(1), &txtVaihde(2), &txtVaihde(3),
            &txtVaihde(4), &txtUsedGear, &txtPaino,     &txtrengas,    &txtStartRPM,  &txtStopRPM};
}

// Who has never chosen a car gets the default one if there is its file, and the form's own values otherwise.
void FrmPowerCalc::Form_Load() {
    const auto stored = core::RegReadString(machine().preferences, core::kSettingsKey, kPreference).value_or("");
    carFile_ = stored.empty() ? machine().folder / kDefaultCar : std::filesystem::path(stored);
    std::error_code error;
    if (stored.empty() && !std::filesystem::exists(carFile_, error)) {
        return;
    }
    try {
        loadCar(carFile_);
    } catch (const RuntimeError&) {
        tellUnreadable(carFile_);
    }
}

void FrmPowerCalc::loadCar(const std::filesystem::path& path) {
    const CarValues values = readCar(path);
    const CarBoxes boxes = carBoxes();
    for (std::size_t i = 0; i < kCarValues; ++i) {
        boxes[i]->Text = values[i];
    }
}

void FrmPowerCalc::tellUnreadable(const std::filesystem::path& path) {
    machine().dialogs.show({"", "The car file can't be read:\r\n" + path.string()});
}

void FrmPowerCalc::keepCarFile(const std::filesystem::path& path) {
    carFile_ = path;
    core::RegWriteString(machine().preferences, core::kSettingsKey, kPreference, path.string());
}

void FrmPowerCalc::save() {
    const std::filesystem::path path = machine().dialogs.choose({FileDialog::Kind::Save, "Save Car Settings", kFilter});
    if (path.empty()) {
        return;
    }
    CarValues values;
    std::ranges::transform(carBoxes(), values.begin(), [](const auto* box) { return box->Text.get(); });
    if (saveCar(path, values, machine().dialogs)) {
        keepCarFile(path);
    }
}

void FrmPowerCalc::load() {
    const std::filesystem::path path =
        machine().dialogs.choose({FileDialog::Kind::Open, "Open Car Settings file", kFilter});
    if (path.empty()) {
        return;
    }
    try {
        loadCar(path);
        keepCarFile(path);
    } catch (const RuntimeError&) {
        tellUnreadable(path);
    }
}

void FrmPowerCalc::Timer1_Tick() {
    try {
        measure();
    } catch (const RuntimeError& failure) {
        List1.AddItem("timer " + core::textOf(failure.number()));
    }
}

void FrmPowerCalc::measure() {
    const double rpm = core::val(rpm_.Caption.get());
    const Reading reading{rpm, shownSpeed(roadSpeed(rpm, gearing())), machine().pump.now()};
    txtSpeed.Text = core::numberText(reading.speed).view();
    if (timer_.start(reading, core::val(txtStartRPM.Text.get()))) {
        begin(reading);
    }
    if (timer_.state() == PullTimer::State::Running) {
        lbltimer.Caption = elapsedText(timer_.elapsed(reading.at));
    }
    if (const auto pull = timer_.stop(reading, core::val(txtStopRPM.Text.get()))) {
        finish(*pull);
    }
    if (timer_.rearm(rpm, core::val(txtStartRPM.Text.get()))) {
        imgLed.Shown = Picture::Grey;
    }
}

// A gear that the box has not got is a place that the array has not got.
Gearing FrmPowerCalc::gearing() {
    const double place = std::clamp(core::val(txtUsedGear.Text.get()) - 1, -1.0, double(txtVaihde.count()));
    const auto& ratio = txtVaihde(core::toInt16(place));
    return {core::val(ratio.Text.get()), core::val(txtPera.Text.get()), core::val(txtrengas.Text.get())};
}

void FrmPowerCalc::begin(const Reading& reading) {
    imgLed.Shown = Picture::Green;
    List1.AddItem(startedText(reading));
    List1.ListIndex = List1.ListCount() - 1;
}

void FrmPowerCalc::finish(const Pull& pull) {
    imgLed.Shown = Picture::Grey;
    List1.AddItem(stoppedText(pull));
    List1.AddItem(summaryText(pull));
    saveToLog();
}

void FrmPowerCalc::saveToLog() {
    try {
        appendToLog(carFile_, machine().pump.wallTime(), List1.List(List1.ListCount() - 1));
    } catch (const RuntimeError& failure) {
        machine().dialogs.show({"", std::string("SaveAcc ") + failure.what()});
    }
}

void FrmPowerCalc::Timer2_Tick() {
    testRpm_ = testRpm_ + kTestStep > kTestTop ? 0 : testRpm_ + kTestStep;
    rpm_.Caption = core::numberText(testRpm_).view();
}

}  // namespace korvane::performance
