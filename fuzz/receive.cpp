// The receive path with everything behind it: any bytes, in any chunking, at any moment, also inside nested waits.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/QueuedDialogs.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "platform/virtual/VirtualPump.h"
#include "program/Program.h"

namespace {

using namespace korvane;

constexpr std::array<std::uint8_t, 21> kCommands{121, 153, 82,  97,  247, 65,  248, 102, 245, 70, 246,
                                                 170, 109, 101, 108, 83,  112, 84,  85,  33,  0};

class Script {
public:
    Script(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    [[nodiscard]] bool atEnd() const { return at_ >= size_; }
    std::uint8_t next() { return atEnd() ? std::uint8_t{0} : data_[at_++]; }
    std::vector<std::uint8_t> bytes(std::size_t count) {
        count = std::min(count, size_ - at_);
        std::vector<std::uint8_t> taken(data_ + at_, data_ + at_ + count);
        at_ += count;
        return taken;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

std::vector<std::uint8_t> frameOf(Script& script) {
    const auto command = kCommands[script.next() % kCommands.size()];
    const auto payload = script.bytes(script.next());
    std::vector<std::uint8_t> frame{command, static_cast<std::uint8_t>(payload.size())};
    frame.insert(frame.end(), payload.begin(), payload.end());
    frame.push_back(static_cast<std::uint8_t>(~command));
    return frame;
}

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// A frame that fails ends its event; what lies behind it waits for the next one.
void takeAll(program::Program& program, platform::MemoryLine& line, platform::VirtualPump& pump) {
    for (int event = 0; event < 5000 && program.frmSarn2().MSComm1.InBufferCount() > 0; ++event) {
        line.inject(std::array<std::uint8_t, 1>{0});
        pump.wait(1000);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::VirtualPump pump;
    platform::MemoryLine line(pump, nullptr);
    platform::QueuedDialogs dialogs;
    platform::MemoryPreferences preferences;
    platform::MemoryLog log;
    controls::WindowList windows;
    platform::Machine machine{pump, line, dialogs, preferences, log, windows, "/nonexistent", '.', {}};
    program::Program program(machine);
    program.start();
    program.connectTo(1);

    Script script(data, size);
    while (!script.atEnd()) {
        switch (script.next() % 6) {
            case 0:
                line.inject(script.bytes(script.next()));
                break;
            case 1:
                line.inject(frameOf(script));
                break;
            case 2:
                pump.wait(script.next());
                break;
            case 3:
                pump.pump();
                break;
            case 4:
                program.frmSarn2().btnConnect.press();
                break;
            default:
                line.inject(frameOf(script));
                pump.pump();
                break;
        }
    }
    // Whatever came: once the line has been quiet and a frame's worth of zeros has ended what was open, a good frame
    // is heard.
    if (!program.frmSarn2().MSComm1.PortOpen()) {
        program.frmSarn2().btnConnect.press();
    }
    pump.wait(5000);
    takeAll(program, line, pump);
    line.inject(std::vector<std::uint8_t>(260, 0));
    takeAll(program, line, pump);
    program.tables().HwVersion = 3.1F;
    line.inject(
        std::array<std::uint8_t, 22>{'R', 19, 0x12, 0x34, 0, 0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0xAD});
    pump.wait(1000);
    require(program.frmSarn2().lblValue(0).Caption.get() == "4660");
    program.quit();
    require(program.ended());
    return 0;
}
