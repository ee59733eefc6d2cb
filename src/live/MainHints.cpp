#include "live/MainHints.h"

#include <algorithm>
#include <string>

namespace korvane::live {

namespace {

struct Hint {
    std::string_view name;  // of a control, of all elements of an array or of one
    std::string_view text;
};

constexpr Hint kLampHints[] = {
    {"0", "Bit 0 of the ECU's status word. It has no known meaning."},
    {"1", "The choke adds fuel."},
    {"2", "The start help adds fuel."},
    {"3", "Fuel is injected."},
    {"4", "The acceleration pump adds fuel."},
    {"5", "The plugs fire."},
    {"6", "An error: the coil was not charged. This lamp is green too."},
    {"7", "An error: no spark. This lamp is green too."},
    {"8", "The idle map or the idle control is in use."},
    {"9", "Bit 9 of the ECU's status word. It has no known meaning."},
    {"10", "The engine brake cuts the fuel."},
    {"11", "Launch control or antilag is active."},
    {"12", "The engine stands."},
    {"13", "The engine runs."},
    {"14", "Time to shift up."},
    {"15", "The speed limiter cuts in."},
};

constexpr Hint kValueHints[] = {
    {"0", "Engine speed."},
    {"1", "Water temperature."},
    {"2", "Intake air temperature."},
    {"3", "Battery voltage."},
    {"4", "Absolute pressure in the manifold, as an MPX4250 sensor measures it. 1 bar is no boost."},
    {"5", "Throttle opening, between the two ends saved in the settings (page Misc)."},
    {"6", "Air-fuel ratio: the wideband input's 0 to 5 V, shown as 10 to 20."},
    {"7", "Injector duty in counts: 256 would be always open."},
    {"8", "The idle controller. This label stays 0; the trend shows its value."},
    {"9", "The boost controller. This label stays 0; the trend shows its value."},
    {"10", "Exhaust gas temperature. Only newer firmware sends it."},
    {"11", "Ignition advance in use. Only newer firmware sends it."},
};

constexpr Hint kHints[] = {
    {"ComboPort", "The serial port that Connect opens. Opening the list looks for devices. Sends nothing."},
    {"ComboBaud", "The speed of the line, taken at the next Connect. Sends nothing."},
    {"ComboRefresh", "Milliseconds between two polls of the live data. Choosing starts the poll: it sends x."},
    {"btnConnect",
     "Opens the port, asks for the firmware (y, once a second until it answers)\n"
     "and polls live data (x). Pressed again it closes the port."},
    {"prgSettings",
     "How much of the settings has been asked for; the text counts the cells that the ECU has answered."},
    {"lblState", "Port and speed of the open line. It keeps its last text when the line is closed."},
    {"lblBytesRec", "Bytes received since the program started."},
    {"lblPackets",
     "Live frames in one second, the first of them not counted.\nWhen they stop it keeps the last rate: the badge "
     "tells."},
    {"lblHWVer", "The version that the ECU told."},
    {"lblFeatures", "The feature word that the ECU told: each bit is an optional function."},
    {"btnKartat",
     "Opens the map window of this firmware. The window reads what it shows: m, f, a and p;\nof a box that only "
     "ignites m, a and R, of a limiter R and U."},
    {"btnAsetukset",
     "Opens the settings. They are read (e, R and U) once, over some twenty seconds: by the first Connect,\nor by the "
     "first opening if that comes before it."},
    {"btnTuningHelp", "Opens the tuning helper: road speed, and the times of pulls. Sends nothing."},
    {"Command1", "Opens the window of the large maps (320 cells) whatever the firmware. It reads the maps."},
    {"Command7", "Opens the window of the ignition limiter whatever the firmware. It reads its values (R, U)."},
    {"btnDatalogTrend", "Opens the viewer of recorded logs. Sends nothing."},
    {"Command5", "Opens the ignition debug window. Its buttons poll the ignition (S) instead of live data."},
    {"Command8", "Opens a window with a dial that sweeps by itself, for trials. Sends nothing."},
    {"Command6", "Opens a window with one large number. Sends nothing."},
    {"btnBackup",
     "Reads EEPROM addresses 0 to 1010 (R, one each 125 ms, over two minutes) into a file\n"
     "in the program's folder. The live poll rests meanwhile."},
    {"btnUploadEEPROM",
     "Writes addresses 0 to 1010 from such a file (W, one each 125 ms, over two minutes).\n"
     "The ECU does not confirm the writes. The live poll rests meanwhile."},
    {"prgEeprom", "How much of the EEPROM has been read or written."},
    {"Command2", "Sends X: the ECU restarts. What it has not stored is lost, and a running engine may stop."},
    {"FrameOptTest", "Two commands of the PWM table by hand, for tests."},
    {"Command3", "Sends p, the request for the PWM table in its oldest form."},
    {"Command4", "Sends o, the end of a PWM table in its oldest form: the ECU stores the table."},
    {"FrameValues", "The live values, as the last frame had them."},
    {"FrameMux", "Inputs that take turns: each live frame brings one of them."},
    {"lblValueMuxName", "The input's name in Settings_par.ini."},
    {"lblValueMux", "A count of 0 to 4095, with the offset and gain of Settings_par.ini."},
    {"lblAccel", "The row of the acceleration pump in use, 0 to 9. The settings show it red."},
    {"FrameLeds", "The 16 bits of the ECU's status word. A green lamp is on."},
    {"SarnMeterRpm", "Engine speed in 1/min; the thin line is the highest of late."},
    {"SarnMeterboost", "Absolute manifold pressure in bar: 1 is no boost."},
    {"SarnGauge3", "Throttle opening in %."},
    {"picTrend", "Pressure, throttle, lambda, injector duty and a tenth of the speed, newest at the right."},
    {"picTrend2", "Battery voltage, both temperatures and the two controllers, newest at the right."},
    {"chkSlowTrend", "Draws the trends once a second instead of every sixth frame. Sends nothing."},
    {"chkUseSound", "Kept for the next start. The program makes no sound."},
    {"chkDatalog", "Writes each live frame to the file named at the right, 101 rows at a time. Sends nothing."},
    {"txtDatalogFile", "The log's name; .txt is added. Empty: DATA_ with date and time."},
};

template <std::size_t Size>
std::string_view find(const Hint (&hints)[Size], std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(hints), std::end(hints), [&](const Hint& each) { return each.name == name; });
    return found != std::end(hints) ? found->text : std::string_view();
}

}  // namespace

std::string_view hintOf(const controls::Control& control) {
    const std::string index = control.index() ? std::to_string(*control.index()) : std::string();
    if (control.name() == "imgLed" || control.name() == "lblLED") {
        return find(kLampHints, index);
    }
    if (control.name() == "lblValue" || control.name() == "lblValueName") {
        return find(kValueHints, index);
    }
    return find(kHints, control.name());
}

}  // namespace korvane::live
