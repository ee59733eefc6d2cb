#include <asm/termbits.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>

#include "ecu/server/Pty.h"
#include "ecu/server/TerminalSpeed.h"

namespace korvane::ecu {
namespace {

class TerminalSpeed : public testing::Test {
protected:
    // As a PC program does it on its end of the terminal.
    void setSpeed(unsigned baud) {
        const Descriptor pc(::open(pty_.slavePath().c_str(), O_RDWR | O_NOCTTY));
        termios2 settings{};
        ASSERT_EQ(ioctl(pc.number(), TCGETS2, &settings), 0);
        settings.c_cflag &= ~static_cast<unsigned>(CBAUD);
        settings.c_cflag |= BOTHER;
        settings.c_ospeed = baud;
        settings.c_ispeed = baud;
        ASSERT_EQ(ioctl(pc.number(), TCSETS2, &settings), 0);
    }

    Pty pty_;
};

TEST_F(TerminalSpeed, Is57600BeforeAnybodySetsIt) {
    EXPECT_EQ(pty_.baud(), 57600);
}

TEST_F(TerminalSpeed, IsWhatThePcHasSet) {
    for (const int baud : {9600, 19200, 38400, 57600, 76800, 115200, 230400}) {
        setSpeed(static_cast<unsigned>(baud));
        EXPECT_EQ(pty_.baud(), baud);
    }
}

TEST_F(TerminalSpeed, IsZeroWhereThereIsNoTerminal) {
    EXPECT_EQ(terminalSpeed(-1), 0);
}

}  // namespace
}  // namespace korvane::ecu
