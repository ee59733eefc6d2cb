// The serial control.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "controls/Control.h"
#include "platform/EventPump.h"
#include "platform/SerialLine.h"

namespace korvane::controls {

// Failures carry the control's own numbers: 8002 invalid port number, 8018 operation valid only when the port is open.
class MSComm : public Control, private platform::LineListener {
public:
    MSComm(Window& window, std::string_view name);
    ~MSComm() override;

    Property<int> CommPort{*this, 1};                     // 1 to 16
    Property<std::string> Settings{*this, "9600,N,8,1"};  // baud, parity, data bits, stop bits
    Property<int> RThreshold{*this};                      // 0: OnComm is not raised by received bytes
    Property<int> InputLen{*this};
    Property<int> OutBufferSize{*this, 512};

    // Raised after bytes came in, once for all that are there; again if more come while it runs.
    Event<> OnComm;
    // Raises it once more with an event of its own, if bytes are still there by then.
    void raiseOnCommLater() { arrival_->callAt(pump_.now()); }
    // The device was removed; the port is closed by then. The argument is a sentence for the user.
    Event<const std::string&> LineLost;

    // Opening raises RuntimeError when the device can't be had; closing never fails and drops what was not read.
    void setPortOpen(bool open);
    [[nodiscard]] bool PortOpen() const { return open_; }

    // Received bytes that have not been taken. A reader looks at them and then takes bytes from the front.
    [[nodiscard]] std::size_t InBufferCount() const { return input_.size() - taken_; }
    [[nodiscard]] std::span<const std::uint8_t> waitingInput() const;
    void takeInput(std::size_t count);
    // Whether the line may bring more than the program can handle.
    [[nodiscard]] bool mayFlood() const { return line_.mayFlood(); }

    // Sends bytes. RuntimeError 8018 when the port is closed.
    void Output(std::span<const std::uint8_t> bytes);
    void Output(std::uint8_t byte) { Output(std::span(&byte, 1)); }
    [[nodiscard]] int OutBufferCount() const;
    // How many bytes were sent since the start of the program, by whoever.
    [[nodiscard]] std::uint64_t bytesSent() const { return bytesSent_; }

    // The rate of the open line in baud, as the device reports it. RuntimeError 8018 when the port is closed.
    [[nodiscard]] int lineBaud() const;
    // False if the device refuses the rate. RuntimeError 8018 when the port is closed.
    [[nodiscard]] bool setLineBaud(int baud);

    [[nodiscard]] std::string_view kind() const override { return "serial control"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "PortOpen"; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
    [[nodiscard]] const void* portOpenProperty() const { return &open_; }

private:
    void lineReceived(std::span<const std::uint8_t> bytes) override;
    void lineLost(const std::string& reason) override;
    void receiveEvent();
    void requireOpen() const;
    void close();

    platform::SerialLine& line_;
    platform::EventPump& pump_;
    std::vector<std::uint8_t> input_;
    std::size_t taken_ = 0;
    std::uint64_t bytesSent_ = 0;
    bool open_ = false;
    std::unique_ptr<platform::Alarm> arrival_;
};

}  // namespace korvane::controls
