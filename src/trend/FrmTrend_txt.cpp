#include "trend/FrmTrend_txt.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Numbers.h"
#include "core/TextEncoding.h"
#include "logs/LogFindings.h"
#include "logs/LogGrammar.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"
#include "trend/LoadProgress.h"

namespace korvane::trend {

namespace {

constexpr int kKeyPageUp = 33;
constexpr int kKeyPageDown = 34;
constexpr double kFasterThanDriven = 1.33;  // a replay
constexpr std::size_t kLongestCell = 40;    // bytes of a cell that the line about a row shows

constexpr const char* kRehearse = "What would the agent do?";

constexpr std::string_view kNone = "none";
constexpr std::string_view kRateName = "updateSpeed";                 // the lists spell it in their own way
constexpr std::array<int, kPlotSeries> kFirstChoices{2, 6, 7, 8, 9};  // RPM, MAP, Throttle, Lambda, InjTime

constexpr std::array<std::string_view, 14> kMaxValues{"50",  "100", "150", "200", "300",  "400",  "500",
                                                      "600", "700", "800", "900", "1000", "1200", "1500"};
constexpr int kFirstMaxValue = 9;  // "800"
constexpr std::array<std::string_view, 7> kPoints{"500", "1000", "2000", "5000", "10000", "25000", "50000"};
constexpr int kFirstPoints = 4;  // "10000"

template <class Texts>
void fill(controls::ComboBox& list, const Texts& texts, int choice) {
    for (const std::string_view text : texts) {
        list.AddItem(std::string(text));
    }
    list.ListIndex = choice;
}

// A little faster than the rows were driven. Milliseconds, rounded down.
int replayInterval(double rowsPerSecond) {
    return core::toInt32(core::toInt(core::quotient(1000, rowsPerSecond) / kFasterThanDriven));
}

// A cell of a damaged log may have megabytes.
std::string shortened(const std::string& cell) {
    if (cell.size() <= kLongestCell) {
        return cell;
    }
    const auto sizeAt = [&](std::size_t place) {
        return std::max<std::size_t>(core::characterSize(std::string_view(cell).substr(place)), 1);
    };
    std::size_t end = 0;
    while (end + sizeAt(end) <= kLongestCell) {
        end += sizeAt(end);
    }
    return cell.substr(0, end) + "...";
}

}  // namespace

FrmTrend_txt::FrmTrend_txt(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live)
    : Window(frmSarn2.machine(), "frmTrend_txt"),
      frmSarn2_(frmSarn2),
      liveUpdate_(liveUpdate),
      reader_(live, frmSarn2.machine().decimal),
      line_(frmSarn2.machine().dialogs) {
    describe();
    placeControls();
}

void FrmTrend_txt::describe() {
    Caption = "Datalog & Simulation";
    btnLoad.Caption = "Load  file";
    btnPrev.Caption = "Prev";
    btnNext.Caption = "Next";
    btnSimulate.Caption = "Simulate";
    btnSimulate.Enabled = false;
    btnRehearse.Caption = kRehearse;
    btnRehearse.Enabled = false;
    Frame1.Caption = "Select trendlines";
    lblMaxValue.Caption = "Max value";
    lblPoints.Caption = "Points:";
    chkAutoSetpoint.Caption = "Auto";
    CheckWithLimits.Caption = "Show with limits";
    Picture1.BackColor = controls::kBlack;
    Cursor.Visible = false;
    lblLog.Caption = "No log is loaded: press \"Load  file\", or drop a log on this window.";
}

// Where the controls stand without a display; a view has a layout of its own.
void FrmTrend_txt::placeControls() {
    Width = 1240 * 15;
    Height = 680 * 15;
    Frame1.place(120, 120, 3300, 2700);
    Combo1.place(120, 300, 3060, 315);
    Combo2.place(120, 780, 3060, 315);
    Combo3.place(120, 1260, 3060, 315);
    Combo4.place(120, 1740, 3060, 315);
    Combo5.place(120, 2220, 3060, 315);
    lblMaxValue.place(120, 2940, 1500, 255);
    Combo6.place(1620, 2940, 1800, 315);
    chkAutoSetpoint.place(120, 3420, 3300, 315);
    CheckWithLimits.place(120, 3780, 3300, 315);
    lblPoints.place(120, 4260, 1500, 255);
    Combopoints.place(1620, 4260, 1800, 315);
    lblMaxpoints.place(1620, 4680, 1800, 255);
    btnPrev.place(120, 5100, 1600, 435);
    btnNext.place(1820, 5100, 1600, 435);
    btnLoad.place(120, 5640, 3300, 435);
    btnSimulate.place(120, 6180, 3300, 435);
    btnRehearse.place(120, 6720, 3300, 435);
    Picture1.place(3540, 120, 14940, 9120);
    lblCursor.place(3540, 9300, 14940, 255);
    lblLog.place(3540, 9660, 12000, 255);
    prgLoad.place(15660, 9660, 2820, 255);
    for (auto* const list : seriesLists()) {
        list->setContainer(&Frame1);
    }
}

std::array<controls::ComboBox*, kPlotSeries> FrmTrend_txt::seriesLists() {
    return {&Combo1, &Combo2, &Combo3, &Combo4, &Combo5};
}

void FrmTrend_txt::Form_Load() {
    fillLists();
    line_.maxX = 360;
    line_.maxY = 200;
    line_.minY = 0;
    line_.Resolution = 5;
    line_.PicBox = &Picture1;
    Timer1.Enabled = false;
    setHandlers();
    redraw();
}

void FrmTrend_txt::fillLists() {
    std::vector<std::string_view> names{kNone};
    names.insert(names.end(), logs::kColumnNames.begin(), logs::kColumnNames.end());
    names.back() = kRateName;
    const auto lists = seriesLists();
    for (std::size_t series = 0; series < lists.size(); ++series) {
        fill(*lists[series], names, kFirstChoices[series]);
    }
    fill(Combo6, kMaxValues, kFirstMaxValue);
    fill(Combopoints, kPoints, kFirstPoints);
}

void FrmTrend_txt::setHandlers() {
    for (auto* const list : {&Combo1, &Combo2, &Combo3, &Combo4, &Combo5, &Combo6}) {
        list->Click = [this] { redraw(); };
    }
    Combopoints.Click = [this] { turn(&pageOf); };
    btnNext.Click = [this] { turn(&nextPage); };
    btnPrev.Click = [this] { turn(&previousPage); };
    btnLoad.Click = [this] { btnLoad_Click(); };
    btnSimulate.Click = [this] { btnSimulate_Click(); };
    chkAutoSetpoint.Click = [this] {
        line_.AutoScale = chkAutoSetpoint.Value == 1;
        redraw();
    };
    btnRehearse.Click = [this] { btnRehearse_Click(); };
    TimerRehearse.Tick = [this] { TimerRehearse_Tick(); };
    CheckWithLimits.Click = [this] { CheckWithLimits_Click(); };
    Picture1.Resize = [this] { Picture1_Resize(); };
    Picture1.KeyDown = [this](int keyCode, int) { Picture1_KeyDown(keyCode); };
    Timer1.Tick = [this] { redraw(); };
    TimerSim.Tick = [this] { TimerSim_Tick(); };
}

bool FrmTrend_txt::Form_Unload() {
    Timer1.Enabled = false;
    TimerSim.Enabled = false;
    if (TimerRehearse.Enabled) {
        endRehearsal({});
    }
    return true;
}

// In a list these keys move the choice.
void FrmTrend_txt::Form_KeyDown(int keyCode, int) {
    if (dynamic_cast<controls::ComboBox*>(activeControl()) != nullptr) {
        return;
    }
    if (keyCode == kKeyPageUp) {
        btnPrev.press();
    } else if (keyCode == kKeyPageDown) {
        btnNext.press();
    }
}

void FrmTrend_txt::btnLoad_Click() {
    const auto file =
        machine().dialogs.choose({platform::FileDialog::Kind::Open, "Save Settings", "All Files (*.txt)|*.txt"});
    if (!file.empty() && isLoaded()) {
        open(file);
    }
}

// A log may be dropped while a long load paints the window.
void FrmTrend_txt::open(const std::filesystem::path& file) {
    if (reader_.loading) {
        return;
    }
    enter("open", [&] {
        if (TimerRehearse.Enabled) {
            endRehearsal({});
        }
        readFile(file);
        lblMaxpoints.Caption = core::numberText(reader_.ItemCount()).view();
        enter(Combopoints.name(), [this] { turn(&pageOf); });
        redraw();
        btnSimulate.Enabled = true;
        btnRehearse.Enabled = rehearser_ != nullptr;
        lblLog.Caption = logs::findingsOf(reader_);
    });
}

void FrmTrend_txt::readFile(const std::filesystem::path& file) {
    LoadProgress progress(prgLoad, machine().pump);
    reader_.loading = [&](std::uintmax_t read, std::uintmax_t size) { progress.report(read, size); };
    static_cast<void>(reader_.LoadFromFile(file));
    reader_.loading = nullptr;
    cursor_.clear();
}

void FrmTrend_txt::CheckWithLimits_Click() {
    line_.ShowLimits = CheckWithLimits.Value == 1;
    for (auto* const list : {&Combo2, &Combo3, &Combo4, &Combo5}) {
        list->Enabled = !line_.ShowLimits;
    }
}

std::int32_t FrmTrend_txt::maxRows() const {
    return core::toInt32(core::val(lblMaxpoints.Caption.get()));
}

void FrmTrend_txt::turn(LogPage (*page)(const LogPage&, std::int32_t, std::int32_t)) {
    page_ = page(page_, core::toInt32(core::val(Combopoints.Text())), maxRows());
    redraw();
}

void FrmTrend_txt::changePoints(int places) {
    enter(Combopoints.name(),
          [&] { Combopoints.choose(std::clamp(Combopoints.ListIndex + places, 0, Combopoints.ListCount() - 1)); });
}

// A window that is drawn larger step by step tells nothing anew.
void FrmTrend_txt::Picture1_Resize() {
    line_.tellsFailures = false;
    redraw();
    line_.tellsFailures = true;
}

// A failure ends it without a word.
void FrmTrend_txt::redraw() {
    try {
        takeSeries();
        line_.maxY = core::toInt32(core::val(Combo6.Text()));
        line_.minY = 0;
        line_.Resolution = 10;
        line_.firstRow = page_.pageStart;
        line_.lastRow = page_.pageEnd;
        line_.ToRight = true;
        line_.maxX = page_.pagePoints;
        if (core::val(lblMaxpoints.Caption.get()) > 0) {
            line_.DrawSQLTrend(reader_, columns_, false);
            cursor_.setPage({page_.pageStart, page_.pageEnd, line_.maxX, static_cast<double>(line_.frame().left),
                             static_cast<double>(line_.frame().right)});
        }
    } catch (const platform::RuntimeError&) {  // NOLINT(bugprone-empty-catch): silence is the rule
    }
    showCursor();
}

// With limits on show the first series stands alone.
void FrmTrend_txt::takeSeries() {
    const auto table = std::make_unique<logs::clsTXTdata::TrendTarget>();
    columns_.fill(0);
    const int count = line_.ShowLimits ? 1 : kPlotSeries;
    for (int series = 0; series < count; ++series) {
        takeSeries(*table, series);
    }
}

void FrmTrend_txt::takeSeries(logs::clsTXTdata::TrendTarget& table, int series) {
    const auto place = static_cast<std::size_t>(series);
    const auto& list = *seriesLists()[place];
    if (list.Text() != kNone) {
        const int column = list.ListIndex - 1;
        reader_.getTrendData(table, false, series, column);
        columns_[place] = column;
    }
}

// A message of the disconnect may stand for long, and this window may be closed meanwhile.
void FrmTrend_txt::btnSimulate_Click() {
    if (frmSarn2_.isConnected) {
        frmSarn2_.btnConnect.press();
    }
    if (!isLoaded()) {
        return;
    }
    TimerSim.Enabled = !TimerSim.Enabled;
    btnSimulate.Caption = TimerSim.Enabled ? "STOP" : "Simulate";
}

// What the update sets off may close this window.
void FrmTrend_txt::TimerSim_Tick() {
    if (!reader_.getNextSimDataPacket()) {
        TimerSim.Enabled = false;
        btnSimulate.Caption = "STOP";
    }
    TimerSim.Interval = replayInterval(reader_.getSimSpeed());
    liveUpdate_.updateData_new();
}

void FrmTrend_txt::btnRehearse_Click() {
    if (rehearser_ == nullptr) {
        return;
    }
    if (TimerRehearse.Enabled) {
        endRehearsal("The rehearsal was stopped.");
        return;
    }
    const auto missing = rehearser_->begin(reader_);
    if (!missing.empty()) {
        lblLog.Caption = "The agent would not start: " + missing;
        return;
    }
    btnRehearse.Caption = "Stop";
    lblLog.Caption = "Rehearsal: 0 %";
    TimerRehearse.Enabled = true;
}

// What is shown at the end may take long or close this window.
void FrmTrend_txt::TimerRehearse_Tick() {
    if (rehearser_->goOn()) {
        lblLog.Caption = "Rehearsal: " + std::to_string(static_cast<int>(100.0 * rehearser_->share())) + " %";
        return;
    }
    TimerRehearse.Enabled = false;
    btnRehearse.Caption = kRehearse;
    lblLog.Caption = rehearser_->finish();
}

void FrmTrend_txt::endRehearsal(const std::string& words) {
    rehearser_->drop();
    TimerRehearse.Enabled = false;
    btnRehearse.Caption = kRehearse;
    lblLog.Caption = words;
}

void FrmTrend_txt::pointAt(double x) {
    enter(Cursor.name(), [&] {
        cursor_.moveTo(x);
        showCursor();
    });
}

void FrmTrend_txt::pointAway() {
    cursor_.clear();
    enter(Cursor.name(), [this] { showCursor(); });
}

void FrmTrend_txt::Picture1_KeyDown(int keyCode) {
    if (keyCode == controls::kKeyLeft || keyCode == controls::kKeyRight) {
        cursor_.moveLeft(keyCode == controls::kKeyLeft ? 1 : -1);
        showCursor();
    }
}

void FrmTrend_txt::showCursor() {
    const auto row = cursor_.row();
    Cursor.Row = row.value_or(0);
    Cursor.Left = core::toInt32(cursor_.x());
    Cursor.Visible = row.has_value();
    lblCursor.Caption = row ? textOfRow(*row) : std::string();
}

std::string FrmTrend_txt::textOfRow(std::int32_t row) const {
    constexpr const char* kGap = "   ";
    std::string text = "Row " + std::to_string(row) + kGap + shortened(reader_.TData(logs::kTimeColumn, row));
    for (const auto column : columns_) {
        if (column != 0) {
            text += kGap + reader_.TData(column, 0) + ' ' + shortened(reader_.TData(column, row));
        }
    }
    return text;
}

}  // namespace korvane::trend
