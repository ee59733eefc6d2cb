// korvane-tuner: the program.
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>
#include <variant>
#include <vector>

#include "app/Options.h"
#include "app/RealRun.h"
#include "app/VirtualRun.h"

namespace {

constexpr int kUsageError = 2;

int complain(const std::string& text) {
    std::cerr << "korvane-tuner: " << text << '\n';
    return kUsageError;
}

bool hasDisplay() {
    for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (const char* const value = std::getenv(variable); value != nullptr && *value != '\0') {
            return true;
        }
    }
    return false;
}

// A program that was started without them would get the next files that it opens in their place.
void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1) {
            static_cast<void>(::open("/dev/null", O_RDWR));
        }
    }
}

int start(const korvane::app::Options& options, int& argc, char** argv) {
    if (options.virtualTime) {
        return korvane::app::runVirtual(options);
    }
    if (options.headless) {
        return korvane::app::runHeadless(options, argc, argv);
    }
    if (!hasDisplay()) {
        return complain("there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set); --headless needs none");
    }
    return korvane::app::runWithDisplay(options, argc, argv);
}

int run(int& argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto parsed = korvane::app::parseOptions(arguments);
    if (const auto* const error = std::get_if<korvane::app::OptionsError>(&parsed)) {
        return complain(error->text);
    }
    const auto& options = std::get<korvane::app::Options>(parsed);
    if (options.help) {
        std::cout << korvane::app::optionsHelp();
        return 0;
    }
    if (options.version) {
        std::cout << "Korvane Tuner 1.3\n";
        return 0;
    }
    return start(options, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        occupyStandardStreams();
        return run(argc, argv);
    } catch (const std::exception& error) {
        return complain(error.what());
    }
}
