#include "live/MainLayout.h"

#include <array>
#include <initializer_list>

namespace korvane::live {

namespace {

using controls::Control;

constexpr int kGap = 120;
constexpr int kLine = 255;    // height of a label
constexpr int kButton = 375;  // height of a button or box
constexpr int kColumn = 1800;
constexpr int kInstrumentsTop = 600;
constexpr int kValuesLeft = 2 * kGap + kColumn;
constexpr int kValuesTop = 3600;
constexpr int kTrendsLeft = 6000;
constexpr int kStatusLeft = 15400;
constexpr int kTrendWidth = 9000;  // until a view has a size for it
constexpr int kTrendHeight = 3600;
constexpr int kDialSize = 2700;

void placeConnection(FrmSarn2& window) {
    int left = kGap;
    for (Control* control : std::initializer_list<Control*>{&window.ComboPort, &window.ComboBaud, &window.ComboRefresh,
                                                            &window.btnConnect}) {
        control->place(left, kGap, 1200, kButton);
        left += 1200 + kGap;
    }
    for (Control* control : std::initializer_list<Control*>{&window.lblState, &window.lblBytesRec, &window.lblPackets,
                                                            &window.lblHWVer, &window.lblFeatures}) {
        control->place(left, 180, kColumn, kLine);
        left += kColumn + kGap;
    }
    window.prgSettings.place(left, 180, kColumn, kLine);
}

void placeButtons(FrmSarn2& window) {
    int top = kInstrumentsTop;
    for (Control* control : std::initializer_list<Control*>{
             &window.btnKartat, &window.btnAsetukset, &window.btnBackup, &window.btnUploadEEPROM,
             &window.btnDatalogTrend, &window.btnTuningHelp, &window.Command1, &window.Command2, &window.Command5,
             &window.Command6, &window.Command7, &window.Command8}) {
        control->place(kGap, top, kColumn, kButton);
        top += kButton + kGap;
    }
    window.FrameOptTest.place(kGap, top, kColumn, 2 * kButton + 4 * kGap);
    window.prgEeprom.place(kGap, top + 2 * kButton + 5 * kGap, kColumn, kLine);
    window.Command3.place(kGap, 2 * kGap, kColumn - 2 * kGap, kButton);
    window.Command4.place(kGap, 3 * kGap + kButton, kColumn - 2 * kGap, kButton);
}

void placeValues(FrmSarn2& window) {
    constexpr int kPitch = kLine + 150;
    const auto row = [](Control& name, Control& value, int number) {
        name.place(kGap, 2 * kGap + number * kPitch, 1300, kLine);
        value.place(1500, 2 * kGap + number * kPitch, 1500, kLine);
    };
    window.FrameValues.place(kValuesLeft, kValuesTop, 3300, 3 * kGap + 12 * kPitch);
    for (int i = 0; i < window.lblValue.count(); ++i) {
        row(window.lblValueName(i), window.lblValue(i), i);
    }
    window.FrameMux.place(kStatusLeft, 5600, 3300, 3 * kGap + 8 * kPitch);
    for (int i = 0; i < window.lblValueMux.count(); ++i) {
        row(window.lblValueMuxName(i), window.lblValueMux(i), i);
    }
}

// The dials are square: their height follows their width.
void placeInstruments(FrmSarn2& window) {
    window.SarnGauge3.Height = kDialSize;
    int left = kValuesLeft;
    for (Control* control :
         std::initializer_list<Control*>{&window.SarnMeterRpm, &window.SarnMeterboost, &window.SarnGauge3}) {
        control->Left = left;
        control->Top = kInstrumentsTop;
        control->Width = kDialSize;
        left += kDialSize + kGap;
    }
    window.lblAccel.place(left, kInstrumentsTop, kColumn, kLine);
}

void placeTrends(FrmSarn2& window) {
    window.picTrend.place(kTrendsLeft, 3400, kTrendWidth, kTrendHeight);
    window.picTrend2.place(kTrendsLeft, 6900, kTrendWidth, kTrendHeight);
    int left = kTrendsLeft;
    for (Control* control : std::initializer_list<Control*>{&window.chkSlowTrend, &window.chkUseSound,
                                                            &window.chkDatalog, &window.txtDatalogFile}) {
        control->place(left, 9900, 2100, kButton);
        left += 2100 + kGap;
    }
}

}  // namespace

void layOutControls(FrmSarn2& window) {
    placeConnection(window);
    placeButtons(window);
    placeInstruments(window);
    placeValues(window);
    placeTrends(window);
    window.FrameLeds.Left = kStatusLeft;
    window.FrameLeds.Top = kInstrumentsTop;
}

}  // namespace korvane::live
