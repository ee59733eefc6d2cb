// korvane-ecu: the virtual ECU on a pseudo-terminal.
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string_view>
#include <sys/prctl.h>
#include <vector>

#include "ecu/EcuServer.h"
#include "ecu/Options.h"
#include "ecu/Pty.h"
#include "ecu/VirtualEcu.h"

namespace {

using namespace korvane::ecu;

constexpr int kUsageError = 2;

int complain(std::string_view what, int status) {
    std::cerr << "korvane-ecu: " << what << '\n';
    return status;
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
    std::cout << pty.slavePath() << std::endl;
    server.run(end);
    const std::string error = ecu.finish();
    return error.empty() ? EXIT_SUCCESS : complain(error, EXIT_FAILURE);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Options options;
        const std::vector<std::string_view> arguments(argv + 1, argv + argc);
        if (const std::string error = parseOptions(arguments, options); !error.empty()) {
            return complain(error, kUsageError);
        }
        if (options.help) {
            std::cout << helpText();
            return EXIT_SUCCESS;
        }
        return serve(options);
    } catch (const std::exception& error) {
        return complain(error.what(), EXIT_FAILURE);
    }
}
