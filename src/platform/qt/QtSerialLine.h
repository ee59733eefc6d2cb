// The serial driver on real devices and pseudo-terminals.
#pragma once

#include <QSerialPort>

#include <memory>

#include "platform/EventPump.h"
#include "platform/SerialLine.h"
#include "platform/qt/OpenFailure.h"
#include "platform/qt/PortMap.h"

namespace korvane::platform {

// Bytes that came in while the port was closed are lost. Failures to open are those of openError.
class QtSerialLine : public SerialLine {
public:
    QtSerialLine(EventPump& pump, PortMap ports);
    ~QtSerialLine() override;
    QtSerialLine(const QtSerialLine&) = delete;
    QtSerialLine& operator=(const QtSerialLine&) = delete;

    void open(int port, int baud, LineListener& listener) override;
    void close() override;
    [[nodiscard]] std::string deviceOf(int port) override { return ports_.describe(port); }

    [[nodiscard]] PortFacts factsOf(int port) override;

    // Passes the bytes to the driver before it returns, as many as the driver accepts.
    void write(std::span<const std::uint8_t> bytes) override;
    // Counts what waits here and in the driver.
    [[nodiscard]] std::size_t pendingOutput() override;

    // 0 if the device does not report it.
    [[nodiscard]] int baud() const override;
    [[nodiscard]] bool setBaud(int baud) override;

private:
    [[nodiscard]] RuntimeError nothingThere(OpenAttempt attempt);
    void openDevice(OpenAttempt attempt);
    void receive();
    void lookAfterError();
    void reportLoss();

    EventPump& pump_;
    PortMap ports_;
    LineListener* listener_ = nullptr;
    std::string device_;
    std::unique_ptr<Alarm> closing_;
    std::unique_ptr<Alarm> loss_;
    mutable QSerialPort port_;  // its handle can't be had from a constant one
};

}  // namespace korvane::platform
