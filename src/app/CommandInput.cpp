#include "app/CommandInput.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <sys/signalfd.h>
#include <unistd.h>

namespace korvane::app {

using platform::AlarmKind;

namespace {

constexpr std::size_t kPiece = 65536;  // bytes of input at once

sigset_t endSignals() {
    sigset_t ends;
    sigemptyset(&ends);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {  // the last one: the terminal has gone
        sigaddset(&ends, signal);
    }
    return ends;
}

}  // namespace

CommandInput::CommandInput(Session& session, platform::EventPump& pump, const Options& options)
    : session_(session),
      pump_(pump),
      commands_(pump.makeAlarm([this] { standardInput_ ? readStandardInput() : feedScript(); }, AlarmKind::Command)),
      end_(pump.makeAlarm([this] { session_.program().quit(); }, AlarmKind::Command)) {
    watchSignals();
    if (options.script) {
        script_ = readScript(*options.script);
        session_.commands().Wanting = [this] { commands_->callAt(pump_.now()); };
        commands_->callAt(pump_.now());
    } else if (options.headless || options.console) {
        watchStandardInput();
    }
}

void CommandInput::blockEndSignals() {
    const sigset_t ends = endSignals();
    sigprocmask(SIG_BLOCK, &ends, nullptr);
}

CommandInput::~CommandInput() {
    if (signals_) {
        ::close(static_cast<int>(signals_->socket()));
    }
}

void CommandInput::feedScript() {
    const auto piece = std::string_view(script_).substr(fed_, kPiece);
    fed_ += piece.size();
    if (piece.empty()) {
        session_.commands().endOfInput();
    } else {
        session_.commands().feed(piece);
    }
}

void CommandInput::watchStandardInput() {
    standardInput_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(standardInput_.get(), &QSocketNotifier::activated, [this] {
        standardInput_->setEnabled(false);
        commands_->callAt(pump_.now());
    });
    session_.commands().Wanting = [this] { standardInput_->setEnabled(true); };
}

// The next piece is read when all commands of this one have been answered.
void CommandInput::readStandardInput() {
    std::array<char, kPiece> buffer;
    const auto count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count > 0) {
        session_.commands().feed(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    } else if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        standardInput_->setEnabled(true);
    } else {
        session_.commands().endOfInput();
    }
}

void CommandInput::watchSignals() {
    blockEndSignals();
    const sigset_t ends = endSignals();
    const int descriptor = signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        return;
    }
    signals_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(signals_.get(), &QSocketNotifier::activated, [this] { quitOnSignal(); });
}

void CommandInput::quitOnSignal() {
    signalfd_siginfo signal{};
    if (::read(static_cast<int>(signals_->socket()), &signal, sizeof signal) > 0) {
        end_->callAt(pump_.now());
    }
}

}  // namespace korvane::app
