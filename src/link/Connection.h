// The serial port of the main window: choice of port and speed, polling, restart, and the close.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "link/ConnectionPanel.h"
#include "link/Dispatcher.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/Nesting.h"

namespace korvane::link {

// The note on a port that no device stands for.
inline constexpr const char* kNoDevice = "No device";

class Connection {
public:
    // Sets the handlers of the panel's controls; all of them outlive it.
    Connection(platform::Machine& machine, ConnectionPanel& panel, Dispatcher& dispatcher);

    // The connection's share of the main window's load: fills the lists and picks what the preferences remember.
    void fillLists();

    // Opens or closes the port as the button does. A failure shows a message box with its number and description.
    void btnConnect_Click();

    // The close of the main window, first part: remembers the choices and `useSound`, the box's value. True if the
    // window has to stay open for now, because the port is only just being closed; TimerExit unloads it a second later.
    [[nodiscard]] bool closing(int useSound);

    // Loads the settings window, so that replies always reach it. Called after each connect and each disconnect.
    controls::Event<> loadSettings;
    // Command4 is about to have the ECU store its PWM table.
    controls::Event<> storesPwmTable;

private:
    void onComm();
    [[nodiscard]] platform::Micros dispatch();
    void receiveAll();
    [[nodiscard]] bool givesWay(platform::Micros lastHandler);
    [[nodiscard]] bool nestsTooLong() const;
    void dropWhatCameTooFast();
    void takeBytes();
    void comboRefreshClick();
    void openPort();
    void closePort();
    void forceBaud();
    void lineLost(const std::string& reason);
    void showError(int number, const std::string& description);
    void showPortDevices();
    void timer1Tick();
    void pollLiveData();
    void sendIfOpen(std::span<const std::uint8_t> bytes);
    void startSimulation();
    void simulateFrame();

    platform::Machine& machine_;
    ConnectionPanel& panel_;
    Dispatcher& dispatcher_;
    platform::Nesting receives_;
    platform::Nesting pumps_{1};  // runs of pending events after the bytes of an event
    // Time spent in handlers since the buffer was empty last.
    platform::Micros behind_ = 0;
    platform::Micros runBegin_ = 0;  // of the outermost run
    std::array<std::uint8_t, 19> offlineFrame_{};
};

}  // namespace korvane::link
