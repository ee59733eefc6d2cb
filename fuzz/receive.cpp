// The receive path with everything behind it: any bytes, in any chunking, at any moment, also inside nested waits, with
// any windows open.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Support.h"

namespace {

using namespace korvane;
using fuzz::require;

// The first byte of an input, a bit each. The main window is always there.
constexpr unsigned kMaps = 1;
constexpr unsigned kLargeMaps = 2;
constexpr unsigned kSettings = 4;

// What a step begins with; those that are left are as good as the last one.
enum class Step : std::uint8_t { Bytes, Frame, Wait, Pump, Connect, FrameAtOnce };
constexpr int kSteps = 16;

void openWindows(program::Program& program, unsigned which) {
    if ((which & kMaps) != 0) {
        program.mapWindows().open();
    }
    if ((which & kLargeMaps) != 0) {
        program.mapWindows().openLarge();
    }
    if ((which & kSettings) != 0) {
        program.frmMisc().show();
    }
}

// Any code: the frames of an ECU, and other bytes in the form of a frame.
std::vector<std::uint8_t> frameOf(fuzz::Script& script) {
    const auto code = script.next();
    const auto payload = script.bytes(script.next());
    std::vector<std::uint8_t> frame{code, static_cast<std::uint8_t>(payload.size())};
    frame.insert(frame.end(), payload.begin(), payload.end());
    frame.push_back(static_cast<std::uint8_t>(~code));
    return frame;
}

void take(fuzz::ProgramRun& run, fuzz::Script& script) {
    switch (static_cast<Step>(script.next() % kSteps)) {
        case Step::Bytes:
            run.line.inject(script.bytes(script.next()));
            break;
        case Step::Frame:
            run.line.inject(frameOf(script));
            break;
        case Step::Wait:
            run.pump.wait(script.next());
            break;
        case Step::Pump:
            run.pump.pump();
            break;
        case Step::Connect:
            run.program.frmSarn2().btnConnect.press();
            break;
        case Step::FrameAtOnce:
        default:
            run.line.inject(frameOf(script));
            run.pump.pump();
            break;
    }
}

// A frame that fails ends its event; the bytes behind it wait for the next one.
void takeAll(fuzz::ProgramRun& run) {
    for (int event = 0; event < 5000 && run.program.frmSarn2().MSComm1.InBufferCount() > 0; ++event) {
        run.line.inject(std::array<std::uint8_t, 1>{0});
        run.pump.wait(1000);
    }
}

// After any input: once the line has been quiet and a frame's length of zeros has ended an open frame, a good frame is
// received.
void hearsAGoodFrame(fuzz::ProgramRun& run) {
    auto& window = run.program.frmSarn2();
    if (!window.MSComm1.PortOpen()) {
        window.btnConnect.press();
    }
    run.pump.wait(5000);
    takeAll(run);
    run.line.inject(std::vector<std::uint8_t>(260, 0));
    takeAll(run);
    run.program.tables().HwVersion = 3.1F;
    run.line.inject(
        std::array<std::uint8_t, 22>{'R', 19, 0x12, 0x34, 0, 0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0xAD});
    run.pump.wait(1000);
    require(window.lblValue(0).Caption.get() == "4660");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ProgramRun run;
    run.program.connectTo(1);
    fuzz::Script script({data, size});
    openWindows(run.program, script.next());
    while (!script.atEnd()) {
        take(run, script);
    }
    hearsAGoodFrame(run);
    run.program.quit();
    require(run.program.ended());
    return 0;
}
