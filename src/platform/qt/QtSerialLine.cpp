#include "platform/qt/QtSerialLine.h"

#include <array>
#include <cerrno>
#include <unistd.h>
#include <utility>

#include "platform/qt/PortProbe.h"
#include "platform/qt/SerialHandle.h"

namespace korvane::platform {

namespace {

constexpr std::size_t kReadAtOnce = 4096;

OpenFailure whyNotOpened(const std::string& path, QSerialPort::SerialPortError error) {
    if (::access(path.c_str(), F_OK) != 0 && errno != EACCES) {
        return OpenFailure::Missing;
    }
    if (::access(path.c_str(), R_OK | W_OK) != 0 && errno == EACCES) {
        return OpenFailure::NoPermission;
    }
    return error == QSerialPort::PermissionError ? OpenFailure::InUse : OpenFailure::Other;
}

}  // namespace

QtSerialLine::QtSerialLine(EventPump& pump, PortMap ports)
    : pump_(pump), ports_(std::move(ports)), loss_(pump.makeAlarm([this] { reportLoss(); })) {
    // A device that was removed is closed even while the program's handlers do not run.
    closing_ = pump.makeAlarm(
        [this] {
            port_.close();
            loss_->callAt(pump_.now());
        },
        AlarmKind::Device);
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { receive(); });
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_, [this](QSerialPort::SerialPortError error) {
        if (error != QSerialPort::NoError) {
            lookAfterError();
        }
    });
}

QtSerialLine::~QtSerialLine() {
    QtSerialLine::close();
}

void QtSerialLine::open(int port, int baud, LineListener& listener) {
    close();
    OpenAttempt attempt{port, baud, ports_.pathOf(port), {}};
    if (attempt.path.empty()) {
        throw nothingThere(std::move(attempt));
    }
    device_ = deviceName(port, attempt.path);
    openDevice(std::move(attempt));
    listener_ = &listener;
}

PortFacts QtSerialLine::factsOf(int port) {
    const auto ports = ports_.ports();
    const auto own = ports.find(port);
    auto facts = own == ports.end() ? PortFacts{.kind = PortFacts::Kind::NoDevice} : probePort(own->second.path);
    for (const auto& [number, device] : ports) {
        if (number != port) {
            facts.others.push_back(deviceName(port == kPortOfPath ? kPortOfPath : number, device.path));
        }
    }
    return facts;
}

RuntimeError QtSerialLine::nothingThere(OpenAttempt attempt) {
    for (const auto& [number, device] : ports_.ports()) {
        attempt.detail += (attempt.detail.empty() ? "" : ", ") + deviceName(number, device.path);
    }
    return openError(attempt.detail.empty() ? OpenFailure::NothingFound : OpenFailure::NoDeviceForPort, attempt);
}

void QtSerialLine::openDevice(OpenAttempt attempt) {
    port_.setPortName(QString::fromStdString(attempt.path));
    port_.setBaudRate(QSerialPort::Baud9600);
    if (!port_.open(QIODevice::ReadWrite)) {
        attempt.detail = port_.errorString().toStdString();
        throw openError(whyNotOpened(attempt.path, port_.error()), attempt);
    }
    if (!lockDevice(port_.handle())) {
        port_.close();
        throw openError(OpenFailure::InUse, attempt);
    }
    if (!setBaud(attempt.baud)) {
        port_.close();
        throw openError(OpenFailure::RefusedRate, attempt);
    }
    port_.clear(QSerialPort::Input);
}

void QtSerialLine::close() {
    listener_ = nullptr;
    closing_->cancel();
    loss_->cancel();
    if (port_.isOpen()) {
        port_.close();
    }
}

void QtSerialLine::write(std::span<const std::uint8_t> bytes) {
    if (!port_.isOpen()) {
        return;
    }
    port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    // The caller may block the event loop next: what it wrote must have reached the driver by then.
    port_.flush();
}

std::size_t QtSerialLine::pendingOutput() {
    return port_.isOpen() ? static_cast<std::size_t>(port_.bytesToWrite()) + queuedOutput(port_.handle()) : 0;
}

int QtSerialLine::baud() const {
    return port_.isOpen() ? deviceRate(port_.handle()) : 0;
}

bool QtSerialLine::setBaud(int baud) {
    // A driver that can't set a rate may report success all the same and keep its old one.
    return port_.isOpen() && baud > 0 && port_.setBaudRate(baud) && isSameRate(baud, deviceRate(port_.handle()));
}

void QtSerialLine::receive() {
    std::array<std::uint8_t, kReadAtOnce> bytes{};
    while (port_.isOpen()) {
        const auto count = port_.read(reinterpret_cast<char*>(bytes.data()), static_cast<qint64>(bytes.size()));
        if (count <= 0) {
            return;
        }
        if (listener_ != nullptr) {
            listener_->lineReceived(std::span(bytes).first(static_cast<std::size_t>(count)));
        }
    }
}

// Not every error is a loss: a nested event loop may have read what this one was told of, and a full driver refuses
// bytes for a while.
void QtSerialLine::lookAfterError() {
    if (listener_ != nullptr && port_.isOpen() && isHungUp(port_.handle())) {
        closing_->callAt(pump_.now());
    }
}

void QtSerialLine::reportLoss() {
    if (LineListener* const listener = std::exchange(listener_, nullptr); listener != nullptr) {
        listener->lineLost(device_ + ": the device is gone. Was its cable pulled out? Plug it in and connect again.");
    }
}

}  // namespace korvane::platform
