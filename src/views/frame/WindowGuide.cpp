#include "views/frame/WindowGuide.h"

#include <algorithm>
#include <array>

#include "controls/Control.h"

namespace korvane::views {

namespace {

constexpr std::array<KeyHelp, 8> kCellKeys{{
    {"Arrow keys", "move from cell to cell"},
    {"+ and -", "one count up or down, on the selected block or on the cell; also Ctrl+Up and Ctrl+Down"},
    {"Shift+arrow keys", "select a block from the first cell to this one"},
    {"a", "gives the whole block the value of its first cell"},
    {"l", "draws a straight line from the first cell of the block to the last"},
    {"Ctrl+Z", "undoes the last change of a map, whatever made it"},
    {"Ctrl+Y, Ctrl+Shift+Z", "does it again"},
    {"Ctrl+Backspace", "brings the cell, or the selected block, back to what the ECU sent last"},
}};
constexpr KeyHelp kPutBackKey{"F8", "puts the fuel map back to the baseline of the steady agent"};
constexpr std::array<KeyHelp, 9> kMapKeys{{
    kCellKeys[0],
    kCellKeys[1],
    kCellKeys[2],
    kCellKeys[3],
    kCellKeys[4],
    kCellKeys[5],
    kCellKeys[6],
    kCellKeys[7],
    kPutBackKey,
}};
constexpr std::array<KeyHelp, 1> kSteadyKeys{{
    kPutBackKey,
}};
constexpr std::array<KeyHelp, 3> kHistoryKeys{{
    {"Ctrl+Z", "undoes the last change"},
    {"Ctrl+Y, Ctrl+Shift+Z", "does it again"},
    {"Return", "goes to the row with the focus, as a click does"},
}};
constexpr std::array<KeyHelp, 2> kSettingsKeys{{
    {"Ctrl+Tab", "shows the next page"},
    {"+ and -",
     "change a box with a ± by one step of the ECU; in the voltage correction and the acceleration pump "
     "also the arrow keys"},
}};
constexpr std::array<KeyHelp, 1> kStepKeys{{
    {"+ and -", "change a box with a ± by one step of the ECU"},
}};
constexpr std::array<KeyHelp, 3> kSurfaceKeys{{
    {"Arrow keys", "turn the map"},
    {"+ and -", "make it larger or smaller"},
    {"Home", "shows it as at first"},
}};
constexpr std::array<KeyHelp, 2> kLogKeys{{
    {"Page Up, Page Down", "turn the page"},
    {"Left, Right", "move the mark, with the focus on the plot"},
}};

constexpr std::array<KeyHelp, 2> kCompareKeys{{
    {"Arrow keys", "move from cell to cell, or from setting to setting"},
    {"Ctrl+Z, Ctrl+Y", "undo and redo changes of the working maps"},
}};

constexpr std::array<KeyHelp, 2> kRestoreKeys{{
    {"Up, Down", "pick the point above or below, with the focus on the list"},
    {"Ctrl+Z, Ctrl+Y", "undo and redo changes of the working maps"},
}};

constexpr std::array<std::string_view, 4> kMapReads{"btnReadMisc", "btnReadFuel", "btnReadIgn", "btnReadPWM"};
constexpr std::array<std::string_view, 5> kBoxReads{"btnReadMisc", "btnReadIgn", "btnreadign_2", "btnReadLaunch",
                                                    "btnReadIdleAdv"};
constexpr std::array<std::string_view, 2> kLimiterReads{"btnReadData", "btnReadLaunch"};
constexpr std::array<std::string_view, 1> kSettingsReads{"btnLoad"};
constexpr std::array<std::string_view, 1> kSurfaceReads{"Command1"};

constexpr std::string_view kMapReadSends =
    "reads again: asks the ECU for the misc block and each map whose Read button can be pressed. What you have edited "
    "and not sent is replaced";

constexpr std::array kGuides{
    WindowGuide{
        "frmSarn2",
        "",
        "The connection to the ECU, the live values of the engine, and the buttons that open the other windows. "
        "Closing it ends the program.",
        EscapeKey::Nothing,
        {},
        {},
        {}},
    WindowGuide{"frmMaps", "Kartat",
                "The fuel, ignition and PWM maps of 160 cells, the misc block and the injection analyser. Cells are "
                "changed by keys. The ECU gets a map when you press its Send button.",
                EscapeKey::BackToMap, kMapReads, kMapReadSends, kMapKeys},
    WindowGuide{"frmMaps_Large", "Kartat (large)",
                "The fuel, ignition and PWM maps of 320 cells, the misc block and the injection analyser. Cells are "
                "changed by keys. The ECU gets a map when you press its Send button.",
                EscapeKey::BackToMap, kMapReads, kMapReadSends, kMapKeys},
    WindowGuide{"frmMaps_QV_ign", "Kartat (ignition)",
                "The ignition map, the misc block and the parameters of a box that only ignites. The box gets the map "
                "when you press its Send button, and each group when you press its Save button.",
                EscapeKey::BackToMap, kBoxReads,
                "reads again: asks the box for the misc block, the map and the three groups. What you have edited and "
                "not sent is replaced",
                kCellKeys},
    WindowGuide{"frmMaps_ign_limiter", "Ignition limiter",
                "The settings of the ignition limiter. \"Send settings\" sends all but the launch control and restarts "
                "the box.",
                EscapeKey::Nothing, kLimiterReads,
                "reads again: asks the box for its settings and the launch control. What you have typed and not sent "
                "is replaced",
                kStepKeys},
    WindowGuide{"frm3Dmap", "3D map",
                "A map as a surface or as bars, with the ECU's own numbers. It follows each edit.",
                EscapeKey::ClosesWindow, kSurfaceReads, "draws the map again; nothing is sent", kSurfaceKeys},
    WindowGuide{
        "frmHistory",
        "Historia",
        "Every change of the fuel, ignition and PWM maps since the start of the program. A click on a row makes "
        "the maps what they were behind it. Nothing is sent, but for cells that had reached the running engine "
        "by \"Realtime changes\": these follow while that box is ticked in the map window.",
        EscapeKey::ClosesWindow,
        {},
        {},
        kHistoryKeys},
    WindowGuide{"frmDoctor",
                "",
                "Finds out why a port does not work, and says what to do. Nothing is sent before you press \"Ask the "
                "ECU\".",
                EscapeKey::ClosesWindow,
                {},
                {},
                {}},
    WindowGuide{
        "frmLink",
        "",
        "How good the line to the ECU is: the time from a poll to its answer, frames and faults of the last ten "
        "minutes. Nothing is sent by it.",
        EscapeKey::ClosesWindow,
        {},
        {},
        {}},
    WindowGuide{"frmSteady",
                "Steady agent",
                "What the steady agent knows and does, and what you allow it. Nothing is stored in the ECU by it.",
                EscapeKey::ClosesWindow,
                {},
                {},
                kSteadyKeys},
    WindowGuide{"frmInjScale",
                "Injection map rescaling",
                "Multiplies the fuel map for injectors of another size, once for each press of the button.",
                EscapeKey::ClosesWindow,
                {},
                {},
                {}},
    WindowGuide{"frmPowerCalc",
                "Tuning helper",
                "Works out the road speed and times pulls between two engine speeds.",
                EscapeKey::Nothing,
                {},
                {},
                {}},
    WindowGuide{"frmMisc", "Asetukset",
                "The settings of the ECU on nine pages. Each group is sent by its own Save button and by nothing else.",
                EscapeKey::ClosesWindow, kSettingsReads,
                "reads again: asks the ECU for all settings, which takes twenty seconds. What you have typed and not "
                "saved is replaced",
                kSettingsKeys},
    WindowGuide{
        "frmRestore",
        "Palautuspisteet",
        "What was known of an ECU at earlier moments: each is a file, and none is removed by itself. Maps come "
        "back into the working maps, from where they are sent as ever; settings are written to the ECU and read "
        "back.",
        EscapeKey::ClosesWindow,
        {},
        {},
        kRestoreKeys},
    WindowGuide{
        "frmCompare",
        "Vertailu",
        "What differs between two of: the ECU, the working maps, a tune file, an EEPROM image, a restore point. "
        "Nothing is sent. What is copied goes into the working maps, and a setting into its box.",
        EscapeKey::ClosesWindow,
        {},
        {},
        kCompareKeys},
    WindowGuide{"frmBigText",
                "",
                "One channel in figures as large as the window, red above the channel's limit if \"Alarms\" is ticked.",
                EscapeKey::ClosesWindow,
                {},
                {},
                {}},
    WindowGuide{"frmMeter",
                "Meter",
                "A dial whose needle sweeps by itself, to see the dials at any size.",
                EscapeKey::ClosesWindow,
                {},
                {},
                {}},
    WindowGuide{"frmIGNDebug",
                "Ignition Debug",
                "The four debug words of the ignition box. \"stop\" brings live data back; if you close the window "
                "while it polls, live data stay off.",
                EscapeKey::Nothing,
                {},
                {},
                {}},
    WindowGuide{"frmTrend_txt",
                "Datalog & Simulation",
                "A recorded drive as up to five lines. \"Simulate\" sends it through the windows as if the car were "
                "running.",
                EscapeKey::Nothing,
                {},
                {},
                kLogKeys},
};

std::string_view escapeHelp(EscapeKey escape) {
    switch (escape) {
        case EscapeKey::ClosesWindow:
            return "closes this window";
        case EscapeKey::BackToMap:
            return "ends the selection and goes back to the map";
        case EscapeKey::Nothing:
            break;
    }
    return {};
}

controls::Control* controlAt(const controls::Window& window, std::string_view path) {
    const auto found = std::find_if(window.controls().begin(), window.controls().end(),
                                    [path](const auto* control) { return control->path() == path; });
    return found != window.controls().end() ? *found : nullptr;
}

}  // namespace

std::span<const WindowGuide> windowGuides() {
    return kGuides;
}

const WindowGuide* guideOf(std::string_view window) {
    const auto* const found =
        std::find_if(kGuides.begin(), kGuides.end(), [window](const auto& guide) { return guide.window == window; });
    return found != kGuides.end() ? found : nullptr;
}

std::vector<KeyHelp> keysOf(const WindowGuide& guide) {
    std::vector<KeyHelp> keys(guide.keys.begin(), guide.keys.end());
    keys.push_back({"Tab, Shift+Tab", "go to the next control or to the one before"});
    keys.push_back({"Space", "presses a button or ticks a box"});
    keys.push_back({"Alt+letter", "presses the button or box with that letter underlined"});
    if (!guide.reads.empty()) {
        keys.push_back({"F5", guide.readSends});
    }
    if (guide.escape != EscapeKey::Nothing) {
        keys.push_back({"Escape", escapeHelp(guide.escape)});
    }
    keys.push_back({"Ctrl+D, Ctrl+R, Ctrl+H, Ctrl+L",
                    "open the comparison, the restore points, the list of all changes, the quality of the line"});
    keys.push_back({"Ctrl+Q, Ctrl+W", "close this window"});
    keys.push_back({"F1", "this help"});
    return keys;
}

std::string titleOf(std::string_view window, const std::string& caption) {
    const auto* const guide = guideOf(window);
    if (guide == nullptr || caption.find(guide->title) != std::string::npos) {
        return caption;
    }
    return std::string(guide->title) + (caption.empty() ? "" : " – " + caption);
}

void readAgain(controls::Window& window) {
    const auto* const guide = guideOf(window.name());
    if (guide == nullptr) {
        return;
    }
    const controls::Window::Stay stay(window);
    for (const auto path : guide->reads) {
        auto* const button = window.isLoaded() ? controlAt(window, path) : nullptr;
        if (button != nullptr && button->usable() && button->inSight()) {
            button->press();
        }
    }
}

}  // namespace korvane::views
