// korvane-ecu: the virtual ECU on a pseudo-terminal.
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <string_view>
#include <sys/prctl.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "ecu/VirtualEcu.h"
#include "ecu/server/EcuServer.h"
#include "ecu/server/OneLine.h"
#include "ecu/server/Options.h"
#include "ecu/server/Pty.h"

namespace {

using namespace korvane::ecu;

constexpr int kUsageError = 2;

int complain(std::string_view what, int status) {
    std::cerr << "korvane-ecu: " << oneLine(what) << '\n';
    return status;
}

// Without this a descriptor that is closed at the start would become the terminal's, which would then get the texts.
void fillStandardDescriptors() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(number, F_GETFD) < 0) {
            static_cast<void>(open("/dev/null", number == STDERR_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

void say(std::string_view text) {
    errno = 0;
    if (!(std::cout << text << std::flush)) {
        throw std::system_error(errno, std::generic_category(), "standard output can't be written");
    }
}

int serve(const Options& options) {
    if (options.withParent) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    }
    const Descriptor end = endSignals();
    const Pty pty;
    const auto link = options.link.empty() ? nullptr : std::make_unique<DeviceLink>(options.link, pty.slavePath());
    VirtualEcu ecu(options.ecu);
    EcuServer server(ecu, pty);
    say(pty.slavePath() + "\n");
    server.run(end);
    const std::string error = ecu.finish();
    return error.empty() ? EXIT_SUCCESS : complain(error, EXIT_FAILURE);
}

}  // namespace

int main(int argc, char** argv) {
    fillStandardDescriptors();
    // A missing reader and a limit on file sizes must fail the write, not end the program by a signal.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        Options options;
        const std::vector<std::string_view> arguments(argv + 1, argv + argc);
        if (const std::string error = parseOptions(arguments, options); !error.empty()) {
            return complain(error, kUsageError);
        }
        if (options.help) {
            say(helpText());
            return EXIT_SUCCESS;
        }
        if (options.programVersion) {
            say("korvane-ecu " KORVANE_VERSION "\n");
            return EXIT_SUCCESS;
        }
        return serve(options);
    } catch (const std::exception& error) {
        return complain(error.what(), EXIT_FAILURE);
    }
}
