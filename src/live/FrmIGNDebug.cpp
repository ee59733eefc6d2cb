#include "live/FrmIGNDebug.h"

#include <array>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "link/Commands.h"
#include "platform/Machine.h"

namespace korvane::live {

namespace {

constexpr std::array<std::uint8_t, 3> kDebugRequest{link::kAskIgnitionDebug, 0,
                                                    link::complement(link::kAskIgnitionDebug)};
constexpr double kSampleScale = 10;  // of a word

bool isGoodPattern(std::string_view word) {
    return word == "21845" || word == "43690";  // 0x5555 and 0xAAAA
}

void countFault(const controls::Label& word, controls::Label& errors) {
    if (!isGoodPattern(word.Caption.get())) {
        errors.Caption = core::numberText(core::val(errors.Caption.get()) + 1).view();
    }
}

}  // namespace

// Shown and pushed in this order.
const FrmIGNDebug::Word FrmIGNDebug::kWords[] = {
    {0, &FrmIGNDebug::lblIgnDeb, 0, 0},
    {4, &FrmIGNDebug::lblSparkDeb, 0, 1},
    {2, &FrmIGNDebug::lblRPMticks, 2, 0},
    {6, &FrmIGNDebug::lblEnnakkoTicks, 2, 1},
};

FrmIGNDebug::FrmIGNDebug(platform::Machine& machine, FrmSarn2& main, TrendSink& trends, logs::LogWriter& log)
    : Window(machine, "frmIGNDebug"), wordsAge(machine.pump, main.MSComm1), main_(main), trends_(trends), log_(log) {
    Caption = "Ignition Debug";
    txtSparks.Text = "1";
    Command1.Click = [this] { poll(true); };
    Command2.Click = [this] { poll(false); };
    // Whether the port is open is not asked: on a closed one each tick fails.
    TimerIGN.Tick = [this] { main_.MSComm1.Output(kDebugRequest); };
    btnCleanSparkPlugs.Click = [this] { btnCleanSparkPlugs_Click(); };
    placeControls();
}

void FrmIGNDebug::placeControls() {
    Width = 480 * 15;
    Height = 360 * 15;
    lblIgnDeb.place(1800, 480, 1500, 315);
    lblIgnErr.place(3600, 480, 1500, 315);
    lblSparkDeb.place(1800, 900, 1500, 315);
    lblSparkErr.place(3600, 900, 1500, 315);
    lblRPMticks.place(1800, 1320, 1500, 315);
    lblEnnakkoTicks.place(1800, 1740, 1500, 315);
    Command1.place(300, 2400, 1500, 435);
    Command2.place(1950, 2400, 1500, 435);
    FrameSparks.place(120, 3150, 6900, 1200);
    txtSparks.place(240, 420, 900, 315);
    btnCleanSparkPlugs.place(1300, 360, 1500, 435);
    txtSparks.setContainer(&FrameSparks);
    btnCleanSparkPlugs.setContainer(&FrameSparks);
}

bool FrmIGNDebug::Form_Unload() {
    TimerIGN.Enabled = false;
    return true;
}

// One poll or the other. A transfer, a connect or a choice of refresh meanwhile starts the live poll again beside this
// one.
void FrmIGNDebug::poll(bool debugWords) {
    TimerIGN.Enabled = debugWords;
    main_.TimerRequestData.Enabled = !debugWords;
}

void FrmIGNDebug::btnCleanSparkPlugs_Click() {
    const std::uint8_t count = core::toByte(core::val(txtSparks.Text.get()));
    main_.MSComm1.Output(std::array<std::uint8_t, 4>{link::kCleanPlugs, 1, count, link::complement(link::kCleanPlugs)});
}

void FrmIGNDebug::showDebugFrame(std::span<const std::uint8_t> payload) {
    const Stay stay(*this);  // a row's message box may outlast the window
    for (const Word& word : kWords) {
        showWord(word, payload);
    }
    wordsAge.heard();
    trends_.drawTrends();
    countFault(lblIgnDeb, lblIgnErr);
    countFault(lblSparkDeb, lblSparkErr);
    if (main_.chkDatalog.Value == 1) {
        writeRow();
    }
}

void FrmIGNDebug::showWord(const Word& word, std::span<const std::uint8_t> payload) {
    const int value = core::checked(payload, word.low) + 256 * core::checked(payload, word.low + 1);
    (this->*word.label).Caption = core::numberText(value).view();
    trends_.pushTrendSample(value / kSampleScale, word.series, word.trend);
}

void FrmIGNDebug::writeRow() {
    const auto value = [this](int index) -> std::string_view { return main_.lblValue(index).Caption.get(); };
    log_.writeDebugRow({lblRPMticks.Caption.get(),
                        lblEnnakkoTicks.Caption.get(),
                        lblIgnDeb.Caption.get(),
                        lblSparkDeb.Caption.get(),
                        lblIgnErr.Caption.get(),
                        lblSparkErr.Caption.get(),
                        {value(6), value(7), value(8), value(9)},
                        {value(10), value(11)}});
}

}  // namespace korvane::live
