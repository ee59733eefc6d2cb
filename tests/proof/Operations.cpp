#include "Operations.h"

#include <algorithm>
#include <map>

#include "PointsWindow.h"
#include "core/ParameterNames.h"
#include "keep/point/PointStore.h"

namespace korvane::proof {

namespace {

constexpr int kFull = 11;
constexpr int kLarge = 14;
constexpr int kIgnitionBox = 30;
constexpr int kLimiterBox = 112;
constexpr int kReads = 8'000;    // ms, of what a window reads when it opens
constexpr int kOtherEdge = 1;    // the row of the sensor type that the factory has not chosen
constexpr long kImageStep = 50;  // of the image after a backup: without one each byte is tried
constexpr const char* kTuneFile = "other tune.txt";
constexpr const char* kImageFile = "other image.txt";
constexpr int kImageAsking = 50;
constexpr long kVerifiedStep = 7;  // of maps that take long: without the verification each byte is tried

// Two of the misc block, whose working copy an EEPROM write does not change, two words and four bytes.
constexpr int kRestoredCells[] = {2, 3, 346, 347, 348, 349, 511, 512};

constexpr const char* kSettings = "frmMisc";
constexpr const char* kMaps = "frmMaps";
constexpr const char* kLargeMaps = "frmMaps_Large";
constexpr const char* kIgnitionMaps = "frmMaps_QV_ign";
constexpr const char* kLimiter = "frmMaps_ign_limiter";

using controls::ComboBox;
using controls::TextBox;

// Each cell has another value than before, with which the settings still make sense.
std::vector<std::uint8_t> otherCells(int type) {
    auto cells = cellsBefore(type);
    for (auto& cell : cells) {
        cell ^= 1U;
    }
    const auto set = [&](std::string_view name, std::uint8_t value) {
        cells.at(static_cast<std::size_t>(core::addressOf(name))) = value;
    };
    set("INJ_MODE_OFFSET", 4);
    cells.at(10) = 5;  // the misc block's code of the longest injector opening: 6 or 5
    return cells;
}

const char* mapWindowOf(int type) {
    return type == kLarge ? kLargeMaps : type == kIgnitionBox ? kIgnitionMaps : type == kLimiterBox ? kLimiter : kMaps;
}

// Of the buttons, those that the window has.
void pressThose(Desk& desk, std::initializer_list<const char*> buttons) {
    auto& window = desk.window(mapWindowOf(desk.program.tables().SWType));
    for (const auto* const button : buttons) {
        for (auto* const control : window.controls()) {
            if (control->name() == button) {
                control->press();
                desk.wait(1500);
            }
        }
    }
}

void loadTune(Desk& desk, std::string_view window, std::string_view button) {
    desk.machine.folder.write(kTuneFile, otherTune(desk.program.tables().SWType));
    desk.machine.dialogs.answerFile(desk.machine.folder / kTuneFile);
    desk.press(window, button);
    desk.wait(500);
}

void editMaps(Desk& desk, std::string_view window) {
    loadTune(desk, window, "btnLoad");
}

void editSettings(Desk& desk) {
    desk.press("frmSarn2", "btnAsetukset");
    loadTune(desk, kSettings, "btnReadFromFile");
}

// A tune file has the first of its four cells alone.
void editVoltage(Desk& desk) {
    editSettings(desk);
    for (int i = 0; i < 4; ++i) {
        desk.control<TextBox>(kSettings, "txtVolt", i).Tag = std::to_string(101 + i);
    }
}

void typeText(Desk& desk, std::string_view window, std::string_view box, std::string_view text,
              std::optional<int> index = {}) {
    desk.control<TextBox>(window, box, index).Text = text;
}

void editIdleIgnition(Desk& desk) {
    for (int i = 0; i < 5; ++i) {
        typeText(desk, kIgnitionMaps, "txtIdleAdv", std::to_string(60 + i), i);
    }
}

void editLaunch(Desk& desk, std::string_view window) {
    typeText(desk, window, "txtLaunchControlLimit", "3210");
    desk.control<ComboBox>(window, "Combolaunchmode").choose(3);
    typeText(desk, window, "txtLaunchFixedDelay", "33");
    desk.control<ComboBox>(window, "ComboAccellimiter").choose(4);
    typeText(desk, window, "txtMaxAccel", "44");
}

void editIgnitionSetup(Desk& desk) {
    desk.control<TextBox>(kIgnitionMaps, "txtchargetime").ToolTipText = "222";
    desk.control<ComboBox>(kIgnitionMaps, "Combosensortype").choose(kOtherEdge);
}

void editLimiter(Desk& desk) {
    int value = 2101;
    for (const char* const box : {"txtSigPerRev", "txtCylCount", "txtrpmlimitLOW", "txtrpmlimitLOWpre",
                                  "txtrpmlimitHIGH", "txtrpmlimitHIGHpre"}) {
        typeText(desk, kLimiter, box, std::to_string(value));
        value += 257;
    }
    for (int i = 0; i < 3; ++i) {
        typeText(desk, kLimiter, "txtInputFuncVal", std::to_string(4000 + i), i);
        desk.control<TextBox>(kLimiter, "txtInputvolt", i).ToolTipText = std::to_string(111 + i);
    }
}

void editImage(Desk& desk) {
    std::string text;
    for (const int cell : otherCells(desk.program.tables().SWType)) {
        text += std::to_string(cell) + "\r\n";
    }
    desk.machine.folder.write(kImageFile, text);
    desk.machine.dialogs.answerFile(desk.machine.folder / kImageFile);
}

// A restore point as another tune had it, older than all others.
void editPoint(Desk& desk) {
    auto point = desk.program.keeper().now();
    point.reason = kRestoredPoint;
    --point.time.year;
    for (const int address : kRestoredCells) {
        auto& cell = point.eeprom.at(static_cast<std::size_t>(address));
        cell = {static_cast<std::uint8_t>(cellsBefore(kFull).at(static_cast<std::size_t>(address)) ^ 1U),
                link::Known::Told};
    }
    keep::PointStore(desk.machine.folder / "restore").add(point);
}

// What is sent is read back.
Operation verified(Operation operation) {
    operation.edit = [edit = operation.edit](Desk& desk) {
        edit(desk);
        desk.program.frmSarn2().verify.On = true;
    };
    operation.name += ", verified";
    return operation;
}

// The same operation after a backup of the EEPROM, by which all its cells are known.
Operation backedUp(Operation operation) {
    operation.edit = [edit = operation.edit](Desk& desk) {
        backUp(desk);
        edit(desk);
    };
    operation.name += ", backed up before";
    operation.storesUnread = false;
    operation.backsUp = true;
    return operation;
}

// With and without a backup.
void addUnread(std::vector<Operation>& all, Operation operation) {
    operation.storesUnread = true;
    all.push_back(operation);
    all.push_back(backedUp(std::move(operation)));
}

void editRaw(Desk& desk, const char* address, const char* value) {
    desk.press("frmSarn2", "btnAsetukset");
    typeText(desk, kSettings, "TextOs", address);
    typeText(desk, kSettings, "TextArvo", value);
}

std::function<void(Desk&)> pressing(const char* window, const char* button) {
    return [=](Desk& desk) { desk.press(window, button); };
}

void addMaps(std::vector<Operation>& all, const char* prefix, int type, const char* window,
             const std::vector<std::string_view>& fuelHalves, const std::vector<std::string_view>& ignitionHalves) {
    const auto edit = [window](Desk& desk) { editMaps(desk, window); };
    const std::string name(prefix);
    if (!fuelHalves.empty()) {
        all.push_back({name + "fuel map", type, edit, pressing(window, "btnWriteFuel"), fuelHalves});
    }
    all.push_back({name + "ignition map", type, edit, pressing(window, "btnWriteIgn"), ignitionHalves});
    all.push_back({name + "misc block", type, edit, pressing(window, "btnSaveMisc")});
    if (!fuelHalves.empty() && fuelHalves.size() == 1) {
        all.push_back({name + "PWM table", type, edit, pressing(window, "btnSavePWM")});
    }
}

void addSettings(std::vector<Operation>& all) {
    struct Group {
        const char* name;
        const char* button;
    };
    constexpr Group kGroups[] = {
        {"idle ignition", "btnSaveIdleAdv"},
        {"ignition sensor", "btnIgnEdge"},
        {"charge time", "btnSaveChargeTime"},
        {"engine brake", "btnSaveMotorbrake"},
        {"injection mode", "btnInjMode"},
        {"injection advance", "btnSaveInjAdv"},
        {"start help", "btnStartHelp"},
        {"voltage correction", "btnSaveVolt"},
        {"acceleration pump", "btnAccel"},
        {"flags", "btnSaveMisc3"},
        {"idle valve", "btnSaveIdleValve"},
        {"PWM functions", "btnPWMmode"},
        {"boost", "btnSaveBoost"},
        {"lambda type", "btnSaveLambdaType"},
        {"lambda correction", "btnSaveLambda"},
        {"idle fuel", "btnSaveIdlemap"},
        {"temperature sensors", "btnSaveNTCCal"},
        {"load calculation", "btnLoadCalc"},
        {"warnings", "btnSaveWarnings"},
        {"launch and antilag", "btnSaveALSsettings"},
        {"throttle closed", "btn0thr"},
        {"throttle open", "btn100thr"},
    };
    for (const auto& group : kGroups) {
        const auto edit = group.button == std::string_view("btnSaveVolt") ? editVoltage : editSettings;
        Operation save{std::string("settings: ") + group.name, kFull, edit, pressing(kSettings, group.button)};
        if (group.button == std::string_view("btnSaveLambda")) {
            addUnread(all, std::move(save));
        } else {
            all.push_back(std::move(save));
        }
    }
}

void addBoxes(std::vector<Operation>& all) {
    addMaps(all, "ignition box: ", kIgnitionBox, kIgnitionMaps, {}, {"A"});
    all.push_back(
        {"ignition box: idle ignition", kIgnitionBox, editIdleIgnition, pressing(kIgnitionMaps, "btnSaveIdleAdv")});
    all.push_back({"ignition box: launch control", kIgnitionBox, [](Desk& desk) { editLaunch(desk, kIgnitionMaps); },
                   pressing(kIgnitionMaps, "btnSaveLaunch")});
    all.push_back({"ignition box: ignition", kIgnitionBox, editIgnitionSetup, pressing(kIgnitionMaps, "btnsaveign_2")});
    all.push_back({"limiter: settings", kLimiterBox, editLimiter, pressing(kLimiter, "btnSendSettings")});
    all.push_back({"limiter: launch control", kLimiterBox, [](Desk& desk) { editLaunch(desk, kLimiter); },
                   pressing(kLimiter, "btnSaveLaunch")});
}

void addRestore(std::vector<Operation>& all) {
    all.push_back({"restore of settings", kFull, editPoint,
                   [](Desk& desk) { restorePoint(desk, pointOf(desk, kRestoredPoint), true, false); }});
    all.back().restores = true;
}

void addVerified(std::vector<Operation>& all, const std::vector<std::string_view>& names) {
    for (const auto name : names) {
        const auto found = std::ranges::find(all, name, &Operation::name);
        all.push_back(verified(*found));
        all.back().step = name == "PWM table" || name.starts_with("large") ? kVerifiedStep : 1;
    }
}

std::vector<Operation> makeOperations() {
    std::vector<Operation> all;
    addMaps(all, "", kFull, kMaps, {"F"}, {"A"});
    addMaps(all, "large ", kLarge, kLargeMaps, {"F", "246"}, {"A", "248"});
    addSettings(all);
    addUnread(all,
              {"EEPROM byte", kFull, [](Desk& desk) { editRaw(desk, "700", "170"); }, pressing(kSettings, "Command1")});
    all.push_back({"EEPROM word", kFull, [](Desk& desk) { editRaw(desk, "511", "3210"); },
                   pressing(kSettings, "btnWriteEE16bit")});
    addUnread(all, {"EEPROM image", kFull, editImage, pressing("frmSarn2", "btnUploadEEPROM")});
    all.back().step = kImageStep;
    (all.end() - 2)->asking = kImageAsking;
    addBoxes(all);
    addRestore(all);
    addVerified(all, {"fuel map", "misc block", "PWM table", "large ignition map", "settings: start help"});
    return all;
}

std::string madeTune(int type) {
    Bench bench(type, otherCells(type));
    const char* const window = mapWindowOf(type);
    bench.desk->machine.dialogs.answerFile(bench.desk->machine.folder / kTuneFile);
    bench.desk->press(window, "btnSave");
    return bench.desk->machine.folder.read(kTuneFile);
}

}  // namespace

const std::vector<Operation>& operations() {
    static const std::vector<Operation> kAll = makeOperations();
    return kAll;
}

void openMaps(Desk& desk) {
    desk.press("frmSarn2", "btnKartat");
    desk.wait(kReads);
}

void sendMaps(Desk& desk) {
    pressThose(desk, {"btnWriteFuel", "btnWriteIgn", "btnSavePWM"});
}

void readAll(Desk& desk) {
    desk.press("frmSarn2", "btnAsetukset");
    desk.press(kSettings, "btnLoad");
    pressThose(desk, {"btnReadFuel", "btnReadIgn", "btnReadMisc", "btnReadPWM", "btnReadData", "btnReadLaunch"});
}

void backUp(Desk& desk) {
    desk.press("frmSarn2", "btnBackup");
    desk.wait(500);
    static_cast<void>(desk.machine.dialogs.takeMessages());
}

// As from the factory, but for the closed throttle: the sensor's own value would be stored again.
std::vector<std::uint8_t> cellsBefore(int type) {
    ecu::EcuSettings settings;
    settings.type = type;
    const ecu::VirtualEcu factory(settings);
    std::vector<std::uint8_t> cells(factory.eeprom().begin(), factory.eeprom().end());
    cells.at(static_cast<std::size_t>(core::addressOf("MINTHR_OFF"))) += 5;
    return cells;
}

const std::string& otherTune(int type) {
    static std::map<int, std::string> tunes;
    auto found = tunes.find(type);
    if (found == tunes.end()) {
        found = tunes.emplace(type, madeTune(type)).first;
    }
    return found->second;
}

}  // namespace korvane::proof
