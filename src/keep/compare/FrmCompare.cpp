#include "keep/compare/FrmCompare.h"

#include <algorithm>

#include "core/Checked.h"
#include "core/TimeText.h"
#include "core/files/TextFile.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "settings/ColumnSort.h"

namespace korvane::keep {

namespace {

constexpr int kWidth = 1340 * 15;  // twips
constexpr int kHeight = 690 * 15;
constexpr int kUpdate = 500;  // ms

constexpr int kAddressColumn = 6;

constexpr const char* kNothing = "Nothing is compared: a side can't be read.";

constexpr const char* kMiscStays =
    ". A value of the misc block is not copied: the boxes of the map window have it, with \"Send Misc\".";

const char* const kColumns[] = {"Setting", "Name", "Left", "Right", "Difference", "Address"};

}  // namespace

FrmCompare::FrmCompare(platform::Machine& machine, const CompareContext& context)
    : Window(machine, "frmCompare"),
      left(*this, {"ComboLeft", "btnLeftFile", "ComboLeftPoint", "lblLeft"}, context),
      right(*this, {"ComboRight", "btnRightFile", "ComboRightPoint", "lblRight"}, context),
      tabWhat(*this, "tabWhat"),
      chkAll(*this, "chkAll", "Show all"),
      chkCounts(*this, "chkCounts", "Counts"),
      grdCells(*this, "grdCells"),
      lstSettings(*this, "lstSettings"),
      lblSummary(*this, "lblSummary"),
      lblOne(*this, "lblOne"),
      btnCopyOne(*this, "btnCopyOne", "Copy cell to right"),
      btnCopyMap(*this, "btnCopyMap", "Copy map to right"),
      btnExport(*this, "btnExport", "Export..."),
      Timer1(*this, "Timer1", true, kUpdate),
      context_(context) {
    Caption = "Vertailu";
    for (std::size_t map = 0; map < kMapCount; ++map) {
        tabWhat.addTab(std::string(mapTitle(map).title));
    }
    tabWhat.addTab("Settings");
    tabWhat.SelectedItem = 1;
    for (const auto* heading : kColumns) {
        lstSettings.addColumn(heading, std::string_view(heading) == "Address" ? "NUMBER" : "");
    }
    connectControls();
}

void FrmCompare::connectControls() {
    left.changed = [this] { act([this] { update(); }); };
    right.changed = left.changed;
    tabWhat.Click = [this] { act([this] { showPage(); }); };
    chkAll.Click = [this] { act([this] { showPage(); }); };
    chkCounts.Click = [this] { act([this] { showPage(); }); };
    grdCells.ItemClick = [this] { act([this] { showPage(); }); };
    lstSettings.ItemClick = [this](int) { act([this] { showPage(); }); };
    lstSettings.ColumnClick = [this](int column) { settings::sortByColumn(lstSettings, column); };
    btnCopyOne.Click = [this] { act([this] { copyOne(); }); };
    btnCopyMap.Click = [this] { act([this] { copyMap(); }); };
    btnExport.Click = [this] { act([this] { exportText(); }); };
    Timer1.Tick = [this] { follow(); };
}

void FrmCompare::Form_Load() {
    Width = kWidth;
    Height = kHeight;
    if (!wasCompared_) {
        compare({Source::Kind::Ecu, {}}, {Source::Kind::Desk, {}});
    }
}

bool FrmCompare::takesKey(int keyCode, int shift) {
    const auto words = context_.walkBy ? context_.walkBy(keyCode, shift) : std::nullopt;
    if (words) {
        notice_ = *words;
        follow();
    }
    return words.has_value();
}

void FrmCompare::compare(const Source& leftSource, const Source& rightSource) {
    wasCompared_ = true;
    left.open(leftSource);
    right.open(rightSource);
    notice_.clear();
    update();
}

// Something that the user has done: what was said of the last thing goes.
void FrmCompare::act(const std::function<void()>& action) {
    notice_.clear();
    action();
}

void FrmCompare::follow() {
    if (!left.source().isLive() && !right.source().isLive()) {
        return;
    }
    const Snapshot now = context_.now();
    left.refresh(now);
    right.refresh(now);
    update();
}

void FrmCompare::update() {
    comparison_.reset();
    if (left.side() != nullptr && right.side() != nullptr) {
        comparison_.emplace(*left.side(), *right.side(), context_.tables, context_.frmMisc.settings(),
                            context_.injectionOffset());
    }
    showTabs();
    showPage();
}

void FrmCompare::showTabs() {
    for (std::size_t map = 0; map < kMapCount; ++map) {
        tabWhat.setTabCaption(static_cast<int>(map) + 1,
                              comparison_ ? comparison_->mapCaption(map) : std::string(mapTitle(map).title));
    }
    tabWhat.setTabCaption(kSettingsTab, comparison_
                                            ? "Settings (" + std::to_string(comparison_->all.differentSettings) + ')'
                                            : "Settings");
}

void FrmCompare::showPage() {
    const bool settings = showsSettings();
    grdCells.Visible = !settings;
    chkCounts.Visible = !settings;
    lstSettings.Visible = settings;
    btnCopyMap.Visible = !settings;
    btnCopyOne.Caption = settings ? "Copy setting to right" : "Copy cell to right";
    if (settings) {
        showSettings();
    } else {
        showMap();
    }
    if (!notice_.empty()) {
        lblSummary.Caption = notice_;
    }
    showChosen();
    showButtons();
}

void FrmCompare::showMap() {
    if (!comparison_) {
        grdCells.clear();
        lblSummary.Caption = kNothing;
        return;
    }
    const auto map = comparison_->map(shownMap());
    auto cells = gridOf(map, chkCounts.Value == 1 ? Unit::Counts : Unit::Tuner);
    lblSummary.Caption = summaryOf(map);
    grdCells.ShowEqual = chkAll.Value == 1;
    grdCells.show(map.difference.shape, std::move(cells));
}

FrmCompare::Row FrmCompare::rowOf(const SettingDifference& difference) const {
    const auto& setting = core::checked(comparison_->settings, difference.setting);
    return {setting.label,
            setting.name,
            settingText(setting, difference.left, context_.tables),
            settingText(setting, difference.right, context_.tables),
            settingDelta(setting, difference, context_.tables),
            addressText(setting)};
}

void FrmCompare::showSettings() {
    std::vector<Row> rows;
    if (comparison_) {
        for (const auto& difference : comparison_->all.settings) {
            if (chkAll.Value == 1 || difference.differs()) {
                rows.push_back(rowOf(difference));
            }
        }
    }
    lblSummary.Caption = comparison_ ? summaryOf(comparison_->all) : kNothing;
    if (rows != rows_) {
        rows_ = std::move(rows);
        fillSettings();
    }
}

// The chosen setting stays chosen.
void FrmCompare::fillSettings() {
    const std::string chosen =
        lstSettings.SelectedItem > 0 ? lstSettings.Cell(lstSettings.SelectedItem, kAddressColumn) : std::string();
    const bool sorted = lstSettings.Sorted;
    lstSettings.Sorted = false;
    lstSettings.clearRows();
    for (const Row& row : rows_) {
        lstSettings.addRow(row);
        if (row.back() == chosen) {
            lstSettings.SelectedItem = lstSettings.rowCount();
        }
    }
    lstSettings.Sorted = sorted;
}

const SettingDifference* FrmCompare::chosenSetting() const {
    if (!comparison_ || lstSettings.SelectedItem == 0) {
        return nullptr;
    }
    const auto& address = lstSettings.Cell(lstSettings.SelectedItem, kAddressColumn);
    const auto& all = comparison_->all.settings;
    const auto found = std::find_if(all.begin(), all.end(), [&](const SettingDifference& difference) {
        return addressText(core::checked(comparison_->settings, difference.setting)) == address;
    });
    return found != all.end() ? &*found : nullptr;
}

void FrmCompare::showChosen() {
    if (!showsSettings()) {
        const int cell = grdCells.SelectedItem;
        lblOne.Caption = cell >= 0 ? core::checked(grdCells.cells(), cell).words : std::string();
        return;
    }
    const auto* const chosen = chosenSetting();
    if (chosen == nullptr) {
        lblOne.Caption = "";
        return;
    }
    const auto row = rowOf(*chosen);
    lblOne.Caption = (row[0].empty() ? row[1] : row[0]) + ": left " + row[2] + ", right " + row[3] +
                     (row[4].empty() ? "" : ", difference " + row[4]) +
                     (canCopy() && isMisc(*chosen) ? kMiscStays : "");
}

bool FrmCompare::isMisc(const SettingDifference& difference) const {
    return core::checked(comparison_->settings, difference.setting).isMisc;
}

bool FrmCompare::canCopy() const {
    return comparison_ && right.source().kind == Source::Kind::Desk && left.source().kind != Source::Kind::Desk;
}

void FrmCompare::showButtons() {
    const bool map = !showsSettings() && comparison_ && comparison_->map(shownMap()).difference.isComparable;
    const auto* const setting = showsSettings() ? chosenSetting() : nullptr;
    const bool cell = map && grdCells.SelectedItem >= 0 &&
                      core::checked(comparison_->map(shownMap()).left.bytes, grdCells.SelectedItem.get()).has_value();
    btnCopyOne.Enabled = canCopy() && (cell || (setting != nullptr && setting->left && !isMisc(*setting)));
    btnCopyMap.Enabled = canCopy() && map && !comparison_->map(shownMap()).difference.cells.empty();
    btnExport.Enabled = comparison_.has_value();
}

void FrmCompare::copyOne() {
    follow();
    if (!canCopy()) {
        return;
    }
    if (showsSettings()) {
        copySetting();
    } else if (grdCells.SelectedItem >= 0) {
        copyCells(grdCells.SelectedItem, grdCells.SelectedItem);
    }
}

void FrmCompare::copyMap() {
    follow();
    if (canCopy() && !showsSettings()) {
        copyCells(0, comparison_->map(shownMap()).difference.shape.cells() - 1);
    }
}

// Cells that the left side does not know stay as they are.
void FrmCompare::copyCells(int first, int last) {
    const std::size_t map = shownMap();
    if (!comparison_->map(map).difference.isComparable) {
        return;
    }
    const MapSide from = comparison_->map(map).left;
    notice_ = context_.copy(map, first, last, [&](core::MapImage& desk) {
        for (int cell = first; cell <= last; ++cell) {
            core::checked(desk, cell) = core::checked(from.bytes, cell).value_or(core::checked(desk, cell));
        }
    });
    follow();
}

void FrmCompare::copySetting() {
    const auto* const chosen = chosenSetting();
    if (chosen == nullptr || !chosen->left) {
        return;
    }
    const auto setting = core::checked(comparison_->settings, chosen->setting);
    const bool placed = !setting.isMisc && context_.frmMisc.settings().put(*chosen->left, setting.address);
    notice_ = placed ? setting.name + " is in its box of the settings window now. Nothing was sent."
                     : "No box of the settings window has " + setting.name + ": nothing was copied.";
    follow();
}

void FrmCompare::exportText() {
    if (!comparison_) {
        return;
    }
    const std::string path =
        machine().dialogs.choose({platform::FileDialog::Kind::Save, "Export comparison", "All Files (*.txt)|*.txt"});
    if (path.empty()) {
        return;
    }
    try {
        const auto now = machine().pump.wallTime();
        core::replaceLines(path, [&](const core::LineSink& write) {
            write("Comparison, " + core::dateText(now) + ' ' + core::timeText(now));
            for (const auto& line : linesOf(*comparison_, context_.tables)) {
                write(line);
            }
        });
        notice_ = "Exported to " + path;
    } catch (const platform::RuntimeError& failure) {
        notice_ = std::string("The comparison can't be written: ") + failure.what();
    }
    showPage();
}

}  // namespace korvane::keep
