// The misc block between the window's boxes and the ECU.
//
//     'M'  RPM limit (low, high)  shift light (low, high)  enable word (low, high)
//          injection offset  ignition offset  injector code  ~'M'      then 'd', which stores it
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "controls/Timer.h"
#include "maps/transfer/MapLine.h"

namespace korvane::maps {

class MiscPane;
class PaneWindow;

// What a window does when the misc block arrives.
struct MiscReply {
    MapLine& line;
    controls::Timer& timeOut;
    std::int16_t& timeOutCounter;
    const char* receiving;  // the window's caption while the block is shown

    // False is how a reply of the ECU calls it: the poll stands still meanwhile.
    void take(bool skipTimer, const std::function<void()>& show) const;
};

class MiscTransfer {
public:
    // `receiving` is the window's caption while a reply of the ECU is shown; a literal.
    MiscTransfer(MiscPane& pane, PaneWindow& window, const char* receiving);

    void save();
    // What a send would send; nothing if a number does not fit.
    [[nodiscard]] std::optional<link::MiscBytes> shown() const;

    // Brings MiscBlock onto the controls, as a MiscReply.
    void LoadMisc(bool skipTimer);
    // The same display work after a file load, without timers; ends with its own caption.
    void showMiscOfFile();

private:
    using Sent = std::vector<std::uint8_t>;  // of the nine bytes

    void saveTrapped(Sent& sent);
    void sendBlock(Sent& sent);
    // The bytes of each value of the boxes, in the order of the block. A number that does not fit raises its error.
    void eachValue(const std::function<void(std::span<const std::uint8_t>)>& take) const;
    void note(const Sent& sent, bool heard);
    [[nodiscard]] std::int32_t enableWord() const;
    void showBlock();
    void showEnableWord(std::int32_t word);

    MiscPane& pane_;
    PaneWindow& window_;
    MapLine& line_;
    const MapContext& context_;
    const char* receiving_;
};

}  // namespace korvane::maps
