#include "program/Program.h"

#include <memory>

#include "core/Numbers.h"
#include "core/files/ChannelFile.h"
#include "core/tables/Module1.h"
#include "core/tables/ModuleReg.h"
#include "doctor/FrmDoctor.h"
#include "doctor/FrmLink.h"
#include "keep/point/BaselineFile.h"
#include "link/Frames.h"
#include "live/FrmIGNDebug.h"
#include "live/Lamps.h"
#include "maps/history/FrmHistory.h"
#include "maps/steady/FrmSteady.h"
#include "performance/FrmPowerCalc.h"
#include "platform/EventPump.h"
#include "platform/Texts.h"
#include "program/FileKind.h"

namespace korvane::program {

namespace {

constexpr int kMainWidth = 1280 * 15;  // twips
constexpr int kMainHeight = 690 * 15;
constexpr int kQuitStep = 50;      // ms
constexpr int kQuitPatience = 60;  // steps; the close of an open port takes a second
constexpr auto kPointsFolder = "restore";

}  // namespace

Program::Program(platform::Machine& machine)
    : machine_(machine),
      history_(tables_, machine.pump),
      frmSarn2_(machine),
      eeprom_(frmSarn2_.MSComm1, machine.pump, tables_),
      keeper_({machine, tables_, frmSarn2_}),
      desk_(machine, keeper_, history_),
      restoreRun_({machine, tables_, frmSarn2_, eeprom_}, machine.folder / kPointsFolder),
      eepromImage_(frmSarn2_, tables_, eeprom_),
      frmMisc_(machine, tables_, frmSarn2_, eeprom_),
      dispatcher_(machine, frmSarn2_, tables_, windows_),
      connection_(machine, frmSarn2_, dispatcher_),
      trends_(frmSarn2_),
      liveUpdate_(frmSarn2_, tables_, tables_, windows_, trends_),
      logWriter_(machine, tables_, frmSarn2_.chkDatalog, frmSarn2_.txtDatalogFile, frmSarn2_.logCounts),
      analyser_(machine, tables_, frmSarn2_.MSComm1),
      steadyAgent_({machine, tables_, frmSarn2_, analyser_, history_}),
      frm3Dmap_(machine, tables_),
      frmInjScale_(machine, tables_),
      undo_(history_, tables_, frmSarn2_, machine.pump),
      mapContext_{tables_, frmSarn2_, analyser_, frm3Dmap_, frmInjScale_, eeprom_, &history_, &undo_, &steadyAgent_},
      mapWindows_(machine, mapContext_, windows_),
      readoutWindows_(machine, tables_),
      rehearsals_(tables_, steadyAgent_, comparisons_),
      logViewer_(frmSarn2_, liveUpdate_, tables_, clsTXTdata),
      comparisons_(machine, mapContext_, frmMisc_, mapWindows_),
      restorePoints_(machine, mapContext_, keeper_, restoreRun_, comparisons_),
      shelf_(machine.pump) {
    windows_.frmMisc = &frmMisc_;
    eeprom_.written = [this](std::int32_t address, std::uint8_t byte) {
        frmSarn2_.ecuEeprom.sent(address, byte);
        frmSarn2_.ecuMaps.eepromHas(tables_.addresses, address, byte);
    };
    eeprom_.asked = [this](std::int32_t address) {
        frmSarn2_.diversion.askedOrdinarily({link::kEepromByteFrame, address});
    };
    connection_.loadSettings = [this] { frmMisc_.load(); };
    frmMisc_.setRenameHandler([this] { nameChannels(); });
    dispatcher_.setLiveDecoder(liveUpdate_);
    liveUpdate_.setAnalyser(&analyser_);
    liveUpdate_.setRowWriter(&logWriter_);
    frmInjScale_.populateFuelOUT = [this] { mapWindows_.populateFuelOUT(); };
    connectButtons();
    connectHistory();
    connectKeeper();
    connectSteadyAgent();
    frmSarn2_.keepWindows.compare = [this] { comparisons_.open(); };
    frmSarn2_.keepWindows.restore = [this] { restorePoints_.open(); };
    frmSarn2_.keepWindows.history = [this] { openHistory(); };
    frmSarn2_.keepWindows.link = [this] { openLink(); };
    machine_.windows.takesKey = [this](int keyCode, int shift) {
        return frmSarn2_.keepWindows.takesKey(keyCode, shift);
    };
    frmSarn2_.Load = [this] { mainWindowLoad(); };
    frmSarn2_.Unload = [this](bool& stays) { mainWindowUnload(stays); };
    frmSarn2_.chkUseSound.Click = [this] { tables_.useSound = frmSarn2_.chkUseSound.Value == 1; };
}

void Program::connectButtons() {
    frmSarn2_.btnKartat.Click = [this] { mapWindows_.open(); };
    frmSarn2_.Command1.Click = [this] { mapWindows_.openLarge(); };
    frmSarn2_.Command6.Click = [this] { readoutWindows_.openBigText(); };
    frmSarn2_.Command8.Click = [this] { readoutWindows_.openMeter(); };
    frmSarn2_.btnDatalogTrend.Click = [this] { logViewer_.open(); };
    frmSarn2_.Command5.Click = [this] { openDebugWindow(); };
    frmSarn2_.Command7.Click = [this] { mapWindows_.openLimiter(); };
    frmSarn2_.btnAsetukset.Click = [this] { frmMisc_.show(); };
    frmSarn2_.btnTuningHelp.Click = [this] { openPowerCalc(); };
    frmSarn2_.portDoubt.test = [this] { openDoctor(); };
}

void Program::connectHistory() {
    dispatcher_.setHistory(history_);
    analyser_.setHistory(history_);
    frmInjScale_.setHistory(history_);
    undo_.openList = [this] { openHistory(); };
    undo_.currentWindow = [this] { return dynamic_cast<maps::PaneWindow*>(windows_.curMapWindow); };
}

void Program::connectKeeper() {
    eeprom_.storing = [this](std::string_view what) { keeper_.beforeStore(what); };
    eeprom_.overwriting = [this](std::string_view what, const core::Overwritten& overwritten) {
        keeper_.beforeOverwriting(what, overwritten);
    };
    dispatcher_.setReplacing([this](std::string_view what) { desk_.beforeReplacing(what); });
    mapContext_.replacing = [this](std::string_view what) { desk_.beforeReplacing(what); };
    connection_.storesPwmTable = [this] { eeprom_.announceStore("PWM table", {core::Overwritten::Part::Pwm}); };
    frmMisc_.allRead = [this] { keeper_.settingsRead(); };
    frmSarn2_.keepNotice.compare = [this](const std::string& point) { restorePoints_.compare(point); };
    frmSarn2_.keepNotice.showOffer = [this](const std::string& point) { restorePoints_.openAt(point); };
    comparisons_.usePoints(keeper_.store());
}

void Program::connectSteadyAgent() {
    liveUpdate_.setFrameTaker(&steadyAgent_);
    steadyAgent_.openWindow = [this] { openSteadyAgent(); };
    comparisons_.useProposal(rehearsals_.proposal());
    logViewer_.useRehearser(rehearsals_);
    const keep::BaselineFile file(machine_.folder, machine_.toDisk);
    steadyAgent_.setBaselines({.load = [file](const maps::BaselineOwner& owner) { return file.load(owner); },
                               .save = [file](const maps::FuelBaseline& baseline) { return file.save(baseline); }});
}

void Program::start() {
    frmSarn2_.show();
}

void Program::connectTo(int port) {
    frmSarn2_.ComboPort.choose(port - 1);
    if (!frmSarn2_.MSComm1.PortOpen()) {
        frmSarn2_.btnConnect.press();
    }
}

void Program::openFile(const std::filesystem::path& file) {
    switch (const auto kind = kindOf(file)) {
        case FileKind::Tune:
        case FileKind::LargeTune:
            mapWindows_.openTune(file, kind == FileKind::LargeTune);
            break;
        case FileKind::Setpoints:
            mapWindows_.openSetpoints(file);
            break;
        case FileKind::EepromImage:
            comparisons_.open({keep::Source::Kind::Image, file.string()}, {});
            break;
        case FileKind::Log:
            logViewer_.open(file);
            break;
    }
}

void Program::disconnect() {
    if (frmSarn2_.MSComm1.PortOpen()) {
        frmSarn2_.btnConnect.press();
    }
}

void Program::quit() {
    static_cast<void>(frmSarn2_.unload());
    for (int step = 0; !ended_ && step < kQuitPatience; ++step) {
        machine_.pump.wait(kQuitStep);
    }
    if (!ended_) {
        // The port was closed without the button, and the button fails to open it again: the window is unloaded all the
        // same.
        frmSarn2_.isConnected = false;
        static_cast<void>(frmSarn2_.unload());
    }
}

void Program::mainWindowLoad() {
    core::InitModule(tables_, machine_.preferences);
    tables_.HwVersion = core::kAssumedHwVersion;
    core::InitTimeUnits(tables_);
    connection_.fillLists();
    layOutLamps(frmSarn2_, machine_.screen.Height);
    frmSarn2_.Width = kMainWidth;
    frmSarn2_.Height = kMainHeight;
    const auto sound = core::RegReadString(machine_.preferences, core::kSettingsKey, "UseSound");
    frmSarn2_.chkUseSound.Value = sound && (core::val(*sound) != 0 || platform::sameText(*sound, "True")) ? 1 : 0;
    core::loadChannelNames(tables_, machine_.folder, machine_.dialogs);
    core::loadInjectorSizes(tables_, machine_.folder);
    nameChannels();
    frmSarn2_.SarnMeterRpm.setMeterType(1);
    frmSarn2_.SarnMeterboost.setMeterType(0);
    frm3Dmap_.load();
    frm3Dmap_.nothingRead();
    desk_.programBegins();
}

void Program::nameChannels() {
    frmSarn2_.valueUnits.follow(tables_);
    for (int i = 0; i < frmSarn2_.lblValueMuxName.count(); ++i) {
        frmSarn2_.lblValueMuxName(i).Caption = tables_.liveValues[core::indexOf(core::inputChannel(i))].name;
    }
}

void Program::openDebugWindow() {
    using live::FrmIGNDebug;
    shelf_
        .one<FrmIGNDebug>([this] {
            auto window = std::make_unique<FrmIGNDebug>(machine_, frmSarn2_, trends_, logWriter_);
            windows_.frmIGNDebug = window.get();
            window->Unloaded = [this] { windows_.frmIGNDebug = nullptr; };
            return window;
        })
        .show();
}

void Program::openPowerCalc() {
    using performance::FrmPowerCalc;
    shelf_.one<FrmPowerCalc>([this] { return std::make_unique<FrmPowerCalc>(machine_, frmSarn2_.lblValue(0)); }).show();
}

void Program::openDoctor() {
    using doctor::FrmDoctor;
    shelf_.one<FrmDoctor>([this] { return std::make_unique<FrmDoctor>(machine_, frmSarn2_); }).show();
}

void Program::openLink() {
    using doctor::FrmLink;
    shelf_.one<FrmLink>([this] { return std::make_unique<FrmLink>(machine_, frmSarn2_); }).show();
}

void Program::openHistory() {
    using maps::FrmHistory;
    shelf_.one<FrmHistory>([this] { return std::make_unique<FrmHistory>(machine_, undo_); }).show();
}

void Program::openSteadyAgent() {
    using maps::FrmSteady;
    shelf_.one<FrmSteady>([this] { return std::make_unique<FrmSteady>(machine_, steadyAgent_, tables_); }).show();
}

void Program::mainWindowUnload(bool& stays) {
    keeper_.programEnds();  // before the port is closed, which is a disconnect otherwise
    desk_.programEnds();
    stays = connection_.closing(frmSarn2_.chkUseSound.Value);
    if (!stays) {
        mapWindows_.unloadAll();
        shelf_.unloadAll();
        comparisons_.unload();
        restorePoints_.unload();
        frmMisc_.leave();
        frm3Dmap_.leave();
        logViewer_.unload();
        readoutWindows_.unloadAll();
    }
    ended_ = !stays;
    if (ended_) {
        Ended();
    }
}

}  // namespace korvane::program
