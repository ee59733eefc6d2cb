// The log viewer: a log as up to five lines over a page of rows, and its replay through the live values.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

#include "controls/Controls.h"
#include "controls/PictureBox.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "live/FrmSarn2.h"
#include "live/LiveUpdate.h"
#include "logs/clsTXTdata.h"
#include "trend/LogCursor.h"
#include "trend/LogPages.h"
#include "trend/PlotMark.h"
#include "trend/Rehearser.h"
#include "trend/cTrendline_New.h"

namespace korvane::trend {

// The surface of the plot takes the focus, for the keys that move its mark.
class LogPicture : public controls::PictureBox {
public:
    using PictureBox::PictureBox;
    [[nodiscard]] bool canFocus() const override { return true; }
};

// Made anew for each opening, with an empty reader.
class FrmTrend_txt : public controls::Window {
public:
    FrmTrend_txt(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live);

    controls::CommandButton btnLoad{*this, "btnLoad"};
    controls::CommandButton btnPrev{*this, "btnPrev"};
    controls::CommandButton btnNext{*this, "btnNext"};
    controls::CommandButton btnSimulate{*this, "btnSimulate"};
    controls::Frame Frame1{*this, "Frame1"};  // "Select trendlines"
    controls::ComboBox Combo1{*this, "Combo1"};
    controls::ComboBox Combo2{*this, "Combo2"};
    controls::ComboBox Combo3{*this, "Combo3"};
    controls::ComboBox Combo4{*this, "Combo4"};
    controls::ComboBox Combo5{*this, "Combo5"};
    controls::Label lblMaxValue{*this, "lblMaxValue"};
    controls::ComboBox Combo6{*this, "Combo6"};  // the value at the top of the plot
    controls::CheckBox chkAutoSetpoint{*this, "chkAutoSetpoint"};
    controls::CheckBox CheckWithLimits{*this, "CheckWithLimits"};
    controls::Label lblPoints{*this, "lblPoints"};
    controls::ComboBox Combopoints{*this, "Combopoints"};  // rows of a page
    controls::Label lblMaxpoints{*this, "lblMaxpoints"};   // rows of the log
    LogPicture Picture1{*this, "Picture1"};
    controls::Timer Timer1{*this, "Timer1", false, 3000};    // redraws; nothing starts it
    controls::Timer TimerSim{*this, "TimerSim", false, 50};  // replays a row

    // What the window tells beside the plot: the marked row, the row's values, the log, how far a long load has come.
    PlotMark Cursor{*this, "Cursor"};
    controls::Label lblCursor{*this, "lblCursor"};
    controls::Label lblLog{*this, "lblLog"};
    controls::ProgressBar prgLoad{*this, "prgLoad"};

    // Runs the steady agent on the log; a second press ends that.
    controls::CommandButton btnRehearse{*this, "btnRehearse"};
    controls::Timer TimerRehearse{*this, "TimerRehearse", false, 1};  // a part of the log

    // What a choice in the dialog of btnLoad does. Nothing while another load runs.
    void open(const std::filesystem::path& file);
    // The pointer stands at this place of the plot's surface, in twips, or has left it.
    void pointAt(double x);
    void pointAway();
    // Outlives the window. Without it there is nothing to press.
    void useRehearser(Rehearser& rehearser) { rehearser_ = &rehearser; }
    // So many lengths of the list further, shorter if negative.
    void changePoints(int places);

    [[nodiscard]] logs::clsTXTdata& reader() { return reader_; }
    [[nodiscard]] cTrendline_New& line() { return line_; }

protected:
    void Form_Load() override;
    bool Form_Unload() override;
    void Form_KeyDown(int keyCode, int shift) override;

private:
    [[nodiscard]] std::array<controls::ComboBox*, kPlotSeries> seriesLists();
    void describe();
    void fillLists();
    void placeControls();
    void setHandlers();

    void btnLoad_Click();
    void btnSimulate_Click();
    void btnRehearse_Click();
    void TimerRehearse_Tick();
    void endRehearsal(const std::string& words);
    void CheckWithLimits_Click();
    void TimerSim_Tick();
    void Picture1_KeyDown(int keyCode);
    void Picture1_Resize();

    void turn(LogPage (*page)(const LogPage&, std::int32_t, std::int32_t));
    [[nodiscard]] std::int32_t maxRows() const;
    void redraw();
    void takeSeries();
    void takeSeries(logs::clsTXTdata::TrendTarget& table, int series);
    void readFile(const std::filesystem::path& file);
    void showCursor();
    [[nodiscard]] std::string textOfRow(std::int32_t row) const;

    live::FrmSarn2& frmSarn2_;
    live::LiveUpdate& liveUpdate_;
    logs::clsTXTdata reader_;
    cTrendline_New line_;
    LogPage page_;
    LogColumns columns_{};
    LogCursor cursor_;
    Rehearser* rehearser_ = nullptr;
};

}  // namespace korvane::trend
