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
    CommandInput(Session& session, const Options& options);
    ~CommandInput();
    CommandInput(const CommandInput&) = delete;
    CommandInput& operator=(const CommandInput&) = delete;

private:
    void runScript(const std::string& commands);
    void readStandardInput();
    void watchSignals();
    void quitOnSignal();

    Session& session_;
    std::unique_ptr<QSocketNotifier> standardInput_;
    std::unique_ptr<QSocketNotifier> signals_;
};

}  // namespace korvane::app
