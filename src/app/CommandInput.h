// Brings commands from standard input or a script file to the console, and ends the program after a signal.
#pragma once

#include <QSocketNotifier>

#include <memory>

#include "app/Options.h"
#include "app/Session.h"

namespace korvane::app {

class CommandInput {
public:
    // Reads as the options ask: the script, standard input, or nothing at all.
    CommandInput(Session& session, platform::EventPump& pump, const Options& options);
    ~CommandInput();
    CommandInput(const CommandInput&) = delete;
    CommandInput& operator=(const CommandInput&) = delete;

    // The signals that end the program wait from now on, until an object takes them. To be called before there are
    // other threads: one that does not block them would get them, and end the program at once.
    static void blockEndSignals();

private:
    void feedScript();
    void watchStandardInput();
    void readStandardInput();
    void watchSignals();
    void quitOnSignal();

    Session& session_;
    platform::EventPump& pump_;
    std::string script_;
    std::size_t fed_ = 0;  // bytes of the script
    std::unique_ptr<QSocketNotifier> standardInput_;
    std::unique_ptr<QSocketNotifier> signals_;
    // Input runs as a command alarm: not while the program blocks.
    std::unique_ptr<platform::Alarm> commands_;
    std::unique_ptr<platform::Alarm> end_;
};

}  // namespace korvane::app
