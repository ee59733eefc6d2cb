// korvane-tuner: the program.
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <variant>
#include <vector>

#include "app/DoctorRun.h"
#include "app/OneLine.h"
#include "app/Options.h"
#include "app/RealRun.h"
#include "app/ReplyWriter.h"
#include "app/VirtualRun.h"

namespace {

constexpr int kUsageError = 2;

// A write that the system refuses must fail, not end the program by a signal.
void ignoreWriteSignals() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

int refuse(std::string_view why) {
    korvane::app::complain(why);
    return kUsageError;
}

int print(std::string_view text) {
    korvane::app::ReplyWriter output(STDOUT_FILENO);
    output.write(text);
    return output.failed() ? 1 : 0;
}

bool hasDisplay() {
    for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (const char* const value = std::getenv(variable); value != nullptr && *value != '\0') {
            return true;
        }
    }
    return false;
}

// Without standard descriptors the next files that the program opens would get their numbers. A write to the missing
// standard output must still fail; what is written to the missing standard error is lost.
void occupyStandardStreams() {
    for (const auto& [stream, mode] :
         {std::pair{STDIN_FILENO, O_RDONLY}, std::pair{STDOUT_FILENO, O_RDONLY}, std::pair{STDERR_FILENO, O_WRONLY}}) {
        if (::fcntl(stream, F_GETFD) == -1) {
            static_cast<void>(::open("/dev/null", mode));
        }
    }
}

int start(const korvane::app::Options& options, int& argc, char** argv) {
    if (options.doctor) {
        return korvane::app::runDoctor(options, argc, argv);
    }
    if (options.virtualTime) {
        return korvane::app::runVirtual(options);
    }
    if (options.headless) {
        return korvane::app::runHeadless(options, argc, argv);
    }
    if (!hasDisplay()) {
        return refuse("there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set); --headless needs none");
    }
    return korvane::app::runWithDisplay(options, argc, argv);
}

int run(int& argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto parsed = korvane::app::parseOptions(arguments);
    if (const auto* const error = std::get_if<korvane::app::OptionsError>(&parsed)) {
        return refuse(error->text);
    }
    const auto& options = std::get<korvane::app::Options>(parsed);
    if (options.help) {
        return print(korvane::app::optionsHelp());
    }
    if (options.version) {
        return print("Korvane Tuner " KORVANE_VERSION "\n");
    }
    return start(options, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    ignoreWriteSignals();
    try {
        occupyStandardStreams();
        return run(argc, argv);
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}
