// The misc block between the window's boxes and the ECU.
//
//     'M'  RPM limit (low, high)  shift light (low, high)  enable word (low, high)
//          injection offset  ignition offset  injector code  ~'M'      then 'd', which stores it
#pragma once

#include "maps/transfer/MapLine.h"

namespace korvane::maps {

class MiscPane;

class MiscTransfer {
public:
    // `receiving` is the window's caption while a reply of the ECU is shown; a literal.
    MiscTransfer(MiscPane& pane, MapLine& line, const MapContext& context, const char* receiving);

    void save();

    // Shows MiscBlock in the controls. A reply of the ECU calls it with false: then the poll is stopped meanwhile.
    void LoadMisc(bool skipTimer);
    // The same display work after a file load, without timers; ends with its own caption.
    void showMiscOfFile();

private:
    void sendBlock();
    void sendWord(std::int32_t value);
    [[nodiscard]] std::int32_t enableWord();
    void showBlock();
    void showEnableWord(std::int32_t word);

    MiscPane& pane_;
    MapLine& line_;
    const MapContext& context_;
    const char* receiving_;
};

}  // namespace korvane::maps
