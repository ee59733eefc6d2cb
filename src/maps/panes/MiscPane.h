// The misc block: limits, offsets, the enable word and the injectors' longest opening time.
#pragma once

#include <array>
#include <string_view>

#include "link/Windows.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/MiscMarks.h"
#include "maps/panes/PaneWindow.h"
#include "maps/transfer/MiscTransfer.h"

namespace korvane::maps {

// The boxes of txtMisc.
inline constexpr int kRpmLimit = 0;
inline constexpr int kRpmShift = 1;
inline constexpr int kInjectionOffset = 2;
inline constexpr int kIgnitionOffset = 3;

// The texts of a window's misc block.
struct MiscCaptions {
    std::array<std::string_view, kMiscBits> bits;  // of the enable word; empty for one without a meaning
    const char* receiving;                         // the window's caption while a reply is shown
};

class MiscPane : public MapPane, public link::MiscPart, public link::EepromPart {
public:
    // `captions` must outlive the pane.
    MiscPane(PaneWindow& window, const MiscCaptions& captions);

    controls::CommandButton btnReadMisc, btnSaveMisc;
    controls::Frame FrameMisc;
    controls::ControlArray<controls::Label> lblMisc;               // the names beside txtMisc
    controls::ControlArray<controls::TextBox> txtMisc;             // kRpmLimit to kIgnitionOffset
    controls::ControlArray<controls::CheckBox> CheckMisc;          // the bits of the enable word
    controls::Frame FrameINJMaxOpen;                               // "Suutin max aukiolo"
    controls::ControlArray<controls::OptionButton> optINJMaxOpen;  // "4.4ms", "2.2ms"
    controls::Timer TimeOutTimer;                                  // seconds of a blocking read
    std::int16_t timeOutCounter = 0;

    void LoadMisc(bool skipTimer) override;
    // The same display work after a file load, without timers; ends with its own caption.
    void showMiscOfFile() { transfer_.showMiscOfFile(); }
    // The 16-bit limits of the EEPROM onto txtMisc.
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override;

    void loadPane(std::int32_t features) override;
    void readPane() override;
    void showLoadedTune() override { showMiscOfFile(); }

    // Which boxes the ECU does not have, and how many.
    [[nodiscard]] MiscMarks& miscMarks() { return marks_; }
    // The block of the boxes; nothing before they were filled, or if a number does not fit.
    [[nodiscard]] std::optional<link::MiscBytes> miscOfBoxes() const {
        return marks_.isFilled() ? transfer_.shown() : std::nullopt;
    }
    [[nodiscard]] std::optional<UnsentOfMap> unsentStatus() const override;
    [[nodiscard]] std::optional<Sends> sends() const override;

private:
    void describe(const MiscCaptions& captions);
    void place();

    MiscTransfer transfer_;
    MiscMarks marks_;
};

}  // namespace korvane::maps
