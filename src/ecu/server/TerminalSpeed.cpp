#include "ecu/server/TerminalSpeed.h"

// The system's wide terminal settings can't be declared beside <termios.h>; hence a file of its own.
#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace korvane::ecu {

int terminalSpeed(int descriptor) {
    termios2 settings{};
    if (ioctl(descriptor, TCGETS2, &settings) != 0) {
        return 0;
    }
    return static_cast<int>(settings.c_ospeed);
}

}  // namespace korvane::ecu
