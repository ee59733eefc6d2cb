#include "link/Connection.h"

#include <algorithm>
#include <limits>
#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/tables/ModuleReg.h"
#include "link/Commands.h"
#include "link/Speeds.h"
#include "link/W32Comms.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"

namespace korvane::link {

namespace {

constexpr int kPortCount = 15;
constexpr int kSpeedWhenUnknown = 3;  // 57600
constexpr int kRefreshStep = 25;      // ms between two rows of the list
constexpr int kFastestRefresh = 10;   // ms, the list's first row
constexpr int kRefreshCount = 12;

constexpr std::array<std::uint8_t, 1> kLiveRequest{kAskLiveData};

// A handler that waits lets the next frame be handled before its own has ended. A line that is never silent must not
// nest them without limit: beyond this depth the bytes stay in the buffer until an outer run takes them.
constexpr int kDeepestReceive = 40;

constexpr int kErrorLineLost = 8012;

// For a line that may bring more than the program can handle: how long one event handles bytes before other events run,
// how long runs may nest, and how far the program may fall behind before the waiting bytes are dropped.
constexpr platform::Micros kSlice = 20 * platform::kMicrosPerMilli;
constexpr platform::Micros kLongestNesting = platform::kMicrosPerSecond;
constexpr platform::Micros kFarthestBehind = 3000 * platform::kMicrosPerMilli;
// A handler that takes longer waits for the user, who reads a message box.
constexpr platform::Micros kMostOfOneHandler = 500 * platform::kMicrosPerMilli;

// A remembered row of a list; 0 for a number that is no row of it.
int rowOr0(std::int32_t row, const controls::ComboBox& list) {
    return row >= 0 && row < list.ListCount() ? row : 0;
}

}  // namespace

Connection::Connection(platform::Machine& machine, ConnectionPanel& panel, Dispatcher& dispatcher)
    : machine_(machine), panel_(panel), dispatcher_(dispatcher), receives_(kDeepestReceive) {
    panel_.receiver.frameDropped = [this](const DroppedFrame& frame) { machine_.log.write(textOf(frame)); };
    panel_.MSComm1.OnComm = [this] { onComm(); };
    panel_.MSComm1.LineLost = [this](const std::string& reason) { lineLost(reason); };
    panel_.ComboRefresh.Click = [this] { comboRefreshClick(); };
    panel_.ComboPort.GotFocus = [this] { showPortDevices(); };
    panel_.btnConnect.Click = [this] { btnConnect_Click(); };
    panel_.Command2.Click = [this] { panel_.MSComm1.Output(shortCommand(kRestartDevice)); };
    panel_.Command3.Click = [this] {
        panel_.diversion.askedOrdinarily({kAskPwmTable});
        panel_.MSComm1.Output(kAskPwmTable);
    };
    panel_.Command4.Click = [this] {
        storesPwmTable();
        panel_.MSComm1.Output(kStorePwmTable);
        panel_.ecuMaps.pwm.stored();
    };
    panel_.Timer1.Tick = [this] { timer1Tick(); };
    panel_.TimerRequestData.Tick = [this] { pollLiveData(); };
    panel_.TimerGetSettings.Tick = [this] { sendIfOpen(kIdentityRequest); };
    panel_.TimerAlarm.Tick = [this] {
        panel_.window.BackColor = controls::kButtonFace;
        panel_.TimerAlarm.Enabled = false;
    };
    panel_.TimerExit.Tick = [this] {
        panel_.TimerExit.Enabled = false;
        static_cast<void>(panel_.window.unload());
    };
    panel_.Timerofflinefeat.Tick = [this] { startSimulation(); };
    panel_.TimerOffline.Tick = [this] { simulateFrame(); };
}

void Connection::fillLists() {
    const auto remembered = [&](const char* name) {
        return core::RegReadNumber(machine_.preferences, core::kSettingsKey, name);
    };
    for (int port = 1; port <= kPortCount; ++port) {
        panel_.ComboPort.AddItem("COM" + std::to_string(port));
    }
    panel_.ComboPort.ListIndex = rowOr0(remembered("Port"), panel_.ComboPort);
    for (const int speed : kSpeeds) {
        panel_.ComboBaud.AddItem(std::to_string(speed));
    }
    const int speed = rowOr0(remembered("Speed"), panel_.ComboBaud);
    panel_.ComboBaud.ListIndex = speed == 0 ? kSpeedWhenUnknown : speed;
    for (int row = 0; row < kRefreshCount; ++row) {
        panel_.ComboRefresh.AddItem(std::to_string(std::max(row * kRefreshStep, kFastestRefresh)));
    }
    panel_.ComboRefresh.ListIndex = rowOr0(remembered("Refresh"), panel_.ComboRefresh);
    // The interval follows the list from the start, but only the tuner starts the polling.
    panel_.TimerRequestData.Enabled = false;
    std::transform(kSpeeds.begin(), kSpeeds.end(), panel_.baudSettings.begin(),
                   [](int each) { return std::to_string(each) + ",N,8,1"; });
    showPortDevices();
}

void Connection::showPortDevices() {
    for (int row = 0; row < panel_.ComboPort.ListCount(); ++row) {
        const auto device = machine_.line.deviceOf(row + 1);
        panel_.ComboPort.setItemToolTip(row, device.empty() ? kNoDevice : device);
    }
}

void Connection::comboRefreshClick() {
    panel_.TimerRequestData.Enabled = false;
    const int interval = panel_.ComboRefresh.ListIndex * kRefreshStep;
    panel_.TimerRequestData.Interval = interval == 0 ? kFastestRefresh : interval;
    panel_.TimerRequestData.Enabled = true;
}

void Connection::btnConnect_Click() {
    try {
        if (panel_.MSComm1.PortOpen()) {
            closePort();
        } else {
            openPort();
        }
        if (panel_.MSComm1.PortOpen()) {
            forceBaud();
        }
        loadSettings();
    } catch (const platform::RuntimeError& error) {
        panel_.portDoubt.connectFailed();
        showError(error.number(), error.what());
    }
}

void Connection::openPort() {
    panel_.MSComm1.OutBufferSize = 16;
    panel_.MSComm1.Settings = core::checked(panel_.baudSettings, panel_.ComboBaud.ListIndex.get());
    panel_.MSComm1.CommPort = panel_.ComboPort.ListIndex + 1;
    panel_.MSComm1.RThreshold = 1;
    panel_.MSComm1.InputLen = 1;
    panel_.MSComm1.setPortOpen(true);
    ++panel_.openings;
    panel_.ecuMisc.forget();
    panel_.ecuEeprom.forget();
    panel_.ecuMaps.connected();
    panel_.isConnected = true;
    panel_.btnConnect.Caption = "Disconnect";
    panel_.TimerRequestData.Enabled = true;
    panel_.TimerGetSettings.Enabled = true;
}

// TimerGetSettings stays as it is: on a closed port it sends nothing.
void Connection::closePort() {
    panel_.isConnected = false;
    panel_.MSComm1.setPortOpen(false);
    panel_.btnConnect.Caption = "Connect";
    panel_.TimerRequestData.Enabled = false;
}

// The control's Settings do not set the fast rates reliably, so these are forced on the open device. The rate is read
// in any case: a device that does not report it is an error.
void Connection::forceBaud() {
    static_cast<void>(GetPortBaud(panel_.MSComm1));
    if (panel_.ComboBaud.ListIndex > kSpeedWhenUnknown) {
        SetCustomBaud(panel_.MSComm1, core::toInt32(core::val(panel_.ComboBaud.Text())));
        static_cast<void>(GetPortBaud(panel_.MSComm1));
    }
}

void Connection::lineLost(const std::string& reason) {
    closePort();
    showError(kErrorLineLost, reason);
}

void Connection::showError(int number, const std::string& description) {
    machine_.dialogs.show(
        {"Korvane Tuner", "  Error " + std::to_string(number) + " " + description, platform::MessageIcon::Critical});
}

void Connection::timer1Tick() {
    if (panel_.MSComm1.PortOpen()) {
        panel_.lblState.Caption = "COM" + std::to_string(panel_.MSComm1.CommPort) + "; " +
                                  std::to_string(GetPortBaud(panel_.MSComm1)) + " Connected";
    }
    panel_.lblBytesRec.Caption = core::numberText(panel_.bytesReceived).view();
}

void Connection::sendIfOpen(std::span<const std::uint8_t> bytes) {
    if (panel_.MSComm1.PortOpen()) {
        panel_.MSComm1.Output(bytes);
    }
}

void Connection::pollLiveData() {
    if (panel_.MSComm1.PortOpen()) {
        panel_.MSComm1.Output(kLiveRequest);
        panel_.linkState.pollSent();
    }
}

bool Connection::closing(int useSound) {
    const auto remember = [&](const char* name, int value) {
        core::RegWriteString(machine_.preferences, core::kSettingsKey, name, std::to_string(value));
    };
    remember("Speed", panel_.ComboBaud.ListIndex);
    remember("Port", panel_.ComboPort.ListIndex);
    remember("Refresh", panel_.ComboRefresh.ListIndex);
    remember("UseSound", useSound);
    if (!panel_.isConnected) {
        return false;
    }
    btnConnect_Click();
    panel_.TimerExit.Enabled = true;
    return true;
}

void Connection::onComm() {
    // An outer run takes the bytes.
    if (nestsTooLong()) {
        return;
    }
    {
        const platform::Nesting::Level level(receives_);
        if (!level) {
            return;
        }
        receiveAll();
    }
    // Pending events run after the bytes of an event. An event that runs here does not do the same again.
    if (const platform::Nesting::Level level(pumps_); level) {
        machine_.pump.pump();
    }
}

void Connection::receiveAll() {
    if (receives_.depth() == 1) {
        runBegin_ = machine_.pump.now();
    }
    while (panel_.MSComm1.InBufferCount() > 0) {
        takeBytes();
        if (!panel_.receiver.rxReady()) {
            continue;
        }
        const auto taken = dispatch();
        behind_ += std::min(taken, kMostOfOneHandler);
        if (panel_.MSComm1.mayFlood() && givesWay(taken)) {
            return;
        }
    }
    behind_ = 0;
}

// Whether the run ends with bytes left. The outermost run does so early. Inside a handler's wait that would change the
// order of the frames: there other events run between two frames, and the run ends only after kLongestNesting.
bool Connection::givesWay(platform::Micros lastHandler) {
    if (behind_ > kFarthestBehind) {
        dropWhatCameTooFast();
    }
    if (panel_.MSComm1.InBufferCount() == 0) {
        return false;
    }
    if (receives_.depth() == 1) {
        const bool ends = machine_.pump.now() - runBegin_ >= kSlice;
        if (ends) {
            panel_.MSComm1.raiseOnCommLater();
        }
        return ends;
    }
    if (!nestsTooLong() && lastHandler >= kSlice) {
        machine_.pump.pump();
    }
    return nestsTooLong();
}

bool Connection::nestsTooLong() const {
    return receives_.depth() > 0 && panel_.MSComm1.mayFlood() && machine_.pump.now() - runBegin_ >= kLongestNesting;
}

void Connection::dropWhatCameTooFast() {
    const auto waiting = panel_.MSComm1.InBufferCount();
    panel_.MSComm1.takeInput(waiting);
    behind_ = 0;
    machine_.log.write("The line sends faster than its frames can be handled: dropped " + std::to_string(waiting) +
                       " bytes");
}

// The count of received bytes is checked: at its end a byte that can't be counted is lost, and the event fails.
void Connection::takeBytes() {
    const auto room =
        static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - std::int64_t{panel_.bytesReceived});
    if (room == 0) {
        panel_.MSComm1.takeInput(1);
        platform::raiseOverflow();
    }
    const auto waiting = panel_.MSComm1.waitingInput();
    const auto taken = panel_.receiver.consume(waiting.first(std::min(waiting.size(), room)));
    panel_.MSComm1.takeInput(taken);
    panel_.bytesReceived += static_cast<std::int32_t>(taken);
    panel_.linkState.bytesReceived(taken);
}

// Returns how long the handler took.
platform::Micros Connection::dispatch() {
    const auto begin = machine_.pump.now();
    const ReceiveMachine::Loan payload(panel_.receiver);
    panel_.linkState.frameReceived(panel_.receiver.rxCommand(), begin);
    dispatcher_.DoCommand(panel_.receiver.rxCommand(), payload.bytes());
    panel_.receiver.frameDone();
    return machine_.pump.now() - begin;
}

void Connection::startSimulation() {
    std::array<std::uint8_t, 5> identity{1, 1, 13, 58, 11};
    dispatcher_.DoCommand(kIdentityFrame, identity);
    panel_.Timerofflinefeat.Enabled = false;
    panel_.TimerOffline.Enabled = true;
}

void Connection::simulateFrame() {
    const std::uint8_t previous = offlineFrame_[6];
    offlineFrame_.fill(34);
    const std::array<std::uint8_t, 10> head{5, 5, 112, 72, 125, 120, 0, 130, 55, 0};
    std::copy(head.begin(), head.end(), offlineFrame_.begin());
    offlineFrame_[6] = static_cast<std::uint8_t>(previous > 250 ? 2 : previous + 3);
    panel_.TimerOffline.Interval = core::toInt32(core::val(panel_.ComboRefresh.Text()));
    dispatcher_.DoCommand(kLiveDataFrame, offlineFrame_);
}

}  // namespace korvane::link
