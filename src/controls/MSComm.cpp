#include "controls/MSComm.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/Machine.h"

namespace korvane::controls {

namespace {

constexpr int kErrorInvalidPort = 8002;
constexpr int kErrorPortNotOpen = 8018;
constexpr int kErrorBadSettings = 380;

// While no handler reads (a message box is open), bytes still arrive; those beyond this limit are lost, as in a driver.
constexpr std::size_t kInputLimit = std::size_t{1} << 20U;
constexpr std::size_t kFloodLimit = std::size_t{256} << 10U;  // of a device that does not wait for the program

const MSComm& comm(const Object& object) {
    return dynamic_cast<const MSComm&>(object);
}

constexpr std::array kProperties{
    property<&MSComm::CommPort>("CommPort"),
    property<&MSComm::Settings>("Settings"),
    property<&MSComm::RThreshold>("RThreshold"),
    property<&MSComm::InputLen>("InputLen"),
    property<&MSComm::OutBufferSize>("OutBufferSize"),
    PropertyInfo{"PortOpen", [](const Object& object) -> Value { return comm(object).PortOpen(); },
                 [](Object& object, const Value& value) {
                     dynamic_cast<MSComm&>(object).setPortOpen(detail::fromValue<bool>(value));
                 }},
    PropertyInfo{"InBufferCount",
                 [](const Object& object) -> Value { return static_cast<std::int64_t>(comm(object).InBufferCount()); },
                 nullptr},
    PropertyInfo{"OutBufferCount",
                 [](const Object& object) -> Value { return std::int64_t{comm(object).OutBufferCount()}; }, nullptr},
};

int baudOf(const std::string& settings) {
    int baud = 0;
    const auto* const end = settings.data() + settings.size();
    const auto result = std::from_chars(settings.data(), end, baud);
    if (result.ec != std::errc() || std::string_view(result.ptr, end) != ",N,8,1" || baud <= 0) {
        throw platform::RuntimeError(kErrorBadSettings, "Invalid property value");
    }
    return baud;
}

}  // namespace

MSComm::MSComm(Window& window, std::string_view name)
    : Control(window, name),
      line_(window.machine().line),
      pump_(window.machine().pump),
      arrival_(pump_.makeAlarm([this] { receiveEvent(); })) {}

MSComm::~MSComm() {
    close();
}

void MSComm::setPortOpen(bool open) {
    if (open == open_) {
        return;
    }
    if (!open) {
        close();
        return;
    }
    if (CommPort < 1 || CommPort > 16) {
        throw platform::RuntimeError(kErrorInvalidPort, "Invalid port number");
    }
    line_.open(CommPort, baudOf(Settings), *this);
    open_ = true;
    changed(portOpenProperty());
}

void MSComm::close() {
    if (!open_) {
        return;
    }
    open_ = false;
    line_.close();
    input_.clear();
    taken_ = 0;
    arrival_->cancel();
    changed(portOpenProperty());
}

std::span<const std::uint8_t> MSComm::waitingInput() const {
    return std::span(input_).subspan(taken_);
}

void MSComm::takeInput(std::size_t count) {
    taken_ += std::min(count, InBufferCount());
    if (taken_ == input_.size()) {
        input_.clear();
        taken_ = 0;
    }
}

void MSComm::Output(std::span<const std::uint8_t> bytes) {
    requireOpen();
    line_.write(bytes);
    bytesSent_ += bytes.size();
}

int MSComm::OutBufferCount() const {
    return open_ ? static_cast<int>(line_.pendingOutput()) : 0;
}

int MSComm::lineBaud() const {
    requireOpen();
    return line_.baud();
}

bool MSComm::setLineBaud(int baud) {
    requireOpen();
    return line_.setBaud(baud);
}

void MSComm::requireOpen() const {
    if (!open_) {
        throw platform::RuntimeError(kErrorPortNotOpen, "Operation valid only when the port is open", path());
    }
}

void MSComm::lineReceived(std::span<const std::uint8_t> bytes) {
    const auto limit = mayFlood() ? kFloodLimit : kInputLimit;
    const auto room = limit - std::min(limit, InBufferCount());
    const auto kept = bytes.first(std::min(bytes.size(), room));
    if (taken_ > limit) {
        input_.erase(input_.begin(), input_.begin() + static_cast<std::ptrdiff_t>(taken_));
        taken_ = 0;
    }
    input_.insert(input_.end(), kept.begin(), kept.end());
    if (RThreshold > 0) {
        arrival_->callAt(pump_.now());
    }
}

// An outer handler may have taken the bytes meanwhile: then there is no event.
void MSComm::receiveEvent() {
    if (InBufferCount() > 0) {
        raise(OnComm);
    }
}

void MSComm::lineLost(const std::string& reason) {
    open_ = false;
    arrival_->cancel();
    input_.clear();
    taken_ = 0;
    changed(portOpenProperty());
    window().enter(name(), [&] { LineLost(reason); });
}

std::vector<std::span<const PropertyInfo>> MSComm::propertyTables() const {
    return withTable<Control>(*this, kProperties);
}

}  // namespace korvane::controls
