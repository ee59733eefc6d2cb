// Brings commands from standard input or a script file to the console, and signals to the program's orderly end.
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
    // What came in is an order to the program, for which it has no ear while it blocks.
    std::unique_ptr<platform::Alarm> commands_;
    std::unique_ptr<platform::Alarm> end_;
};

}  // namespace korvane::app
