// The service window of the ignition box: its debug words instead of live data, the words that show a fault counted,
// and the plugs fired clean.
#pragma once

#include <cstdint>
#include <span>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "link/Windows.h"
#include "live/FrmSarn2.h"
#include "live/LiveUpdate.h"
#include "live/WordsAge.h"
#include "logs/LogWriter.h"

namespace korvane::live {

class FrmIGNDebug : public controls::Window, public link::IgnitionDebugWindow {
public:
    FrmIGNDebug(platform::Machine& machine, FrmSarn2& main, TrendSink& trends, logs::LogWriter& log);

    controls::Label lblIgnDeb{*this, "lblIgnDeb", "0"};
    controls::Label lblSparkDeb{*this, "lblSparkDeb", "0"};
    controls::Label lblRPMticks{*this, "lblRPMticks", "0"};
    controls::Label lblEnnakkoTicks{*this, "lblEnnakkoTicks", "0"};
    controls::Label lblIgnErr{*this, "lblIgnErr", "0"};  // frames with a bad ignition debug word
    controls::Label lblSparkErr{*this, "lblSparkErr", "0"};
    controls::CommandButton Command1{*this, "Command1", "Start"};
    controls::CommandButton Command2{*this, "Command2", "stop"};
    controls::Frame FrameSparks{*this, "FrameSparks", "Fire sparks, (count*100 sparks)"};
    controls::TextBox txtSparks{*this, "txtSparks"};                                        // in FrameSparks
    controls::CommandButton btnCleanSparkPlugs{*this, "btnCleanSparkPlugs", "cleanPlugs"};  // in FrameSparks
    controls::Timer TimerIGN{*this, "TimerIGN", false, 10};

    WordsAge wordsAge;

    // Shows the four words and pushes them to the trends, one by one; then draws the trends, counts the faults, and
    // writes a row if the main window logs. RuntimeError 9 for a payload that ends too soon: the words before that stay
    // shown, and nothing else is done.
    void showDebugFrame(std::span<const std::uint8_t> payload) override;

protected:
    // The live poll stays as it is.
    bool Form_Unload() override;

private:
    struct Word {
        std::size_t low;  // the byte in the payload; the high one follows
        controls::Label FrmIGNDebug::*label;
        int trend;
        int series;
    };
    static const Word kWords[];

    void placeControls();
    void poll(bool debugWords);
    void btnCleanSparkPlugs_Click();
    void showWord(const Word& word, std::span<const std::uint8_t> payload);
    void writeRow();

    FrmSarn2& main_;
    TrendSink& trends_;
    logs::LogWriter& log_;
};

}  // namespace korvane::live
