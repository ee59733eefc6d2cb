#include "app/CommandInput.h"

#include <QTimer>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <sys/signalfd.h>
#include <unistd.h>

namespace korvane::app {

using platform::AlarmKind;

CommandInput::CommandInput(Session& session, platform::EventPump& pump, const Options& options)
    : session_(session),
      pump_(pump),
      commands_(pump.makeAlarm([this] { readStandardInput(); }, AlarmKind::Command)),
      end_(pump.makeAlarm([this] { session_.program().quit(); }, AlarmKind::Command)) {
    watchSignals();
    if (options.script) {
        QTimer::singleShot(0, [this, commands = readScript(*options.script)] { runScript(commands); });
    } else if (options.headless || options.console) {
        watchStandardInput();
    }
}

CommandInput::~CommandInput() {
    if (signals_) {
        ::close(static_cast<int>(signals_->socket()));
    }
}

void CommandInput::runScript(const std::string& commands) {
    session_.commands().feed(commands);
    session_.commands().endOfInput();
}

void CommandInput::watchStandardInput() {
    standardInput_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(standardInput_.get(), &QSocketNotifier::activated, [this] {
        standardInput_->setEnabled(false);
        commands_->callAt(pump_.now());
    });
}

// A command may take long; what comes meanwhile is read and waits its turn.
void CommandInput::readStandardInput() {
    std::array<char, 65536> buffer;
    const auto count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    const bool ended = count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
    standardInput_->setEnabled(!ended);
    if (count > 0) {
        session_.commands().feed(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    } else if (ended) {
        session_.commands().endOfInput();
    }
}

// Ctrl+C and a shutdown of the system close the port and keep the preferences, as the close box does.
void CommandInput::watchSignals() {
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
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
