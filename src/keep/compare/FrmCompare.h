// What differs between two tunes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "controls/ListView.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "keep/compare/CompareContext.h"
#include "keep/compare/Comparison.h"
#include "keep/compare/DiffGrid.h"
#include "keep/compare/SourcePanel.h"

namespace korvane::keep {

// Follows the ECU and the working maps while it is open. It sends nothing: cells are copied into the working maps, and
// settings into the boxes of frmMisc.
class FrmCompare : public controls::Window {
public:
    // `context` outlives the window.
    FrmCompare(platform::Machine& machine, const CompareContext& context);

    SourcePanel left, right;
    controls::TabStrip tabWhat;  // fuel, ignition, PWM, settings
    controls::CheckBox chkAll;
    controls::CheckBox chkCounts;
    DiffGrid grdCells;
    controls::ListView lstSettings;
    controls::Label lblSummary;  // of the page that is shown
    controls::Label lblOne;      // the chosen cell or setting in words
    controls::CommandButton btnCopyOne;
    controls::CommandButton btnCopyMap;
    controls::CommandButton btnExport;
    controls::Timer Timer1;

    // Chooses both sides, loaded or not.
    void compare(const Source& leftSource, const Source& rightSource);

protected:
    void Form_Load() override;
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;

private:
    using Row = std::vector<std::string>;

    [[nodiscard]] bool showsSettings() const { return tabWhat.SelectedItem == kSettingsTab; }
    [[nodiscard]] std::size_t shownMap() const { return static_cast<std::size_t>(tabWhat.SelectedItem - 1); }
    [[nodiscard]] bool canCopy() const;
    // Null for none.
    [[nodiscard]] const SettingDifference* chosenSetting() const;
    [[nodiscard]] bool isMisc(const SettingDifference& difference) const;

    void connectControls();
    void act(const std::function<void()>& action);
    void follow();
    void update();
    void showTabs();
    void showPage();
    void showMap();
    void showSettings();
    [[nodiscard]] Row rowOf(const SettingDifference& difference) const;
    void fillSettings();
    void showChosen();
    void showButtons();
    void copyOne();
    void copyMap();
    void copyCells(int first, int last);
    void copySetting();
    void exportText();

    static constexpr int kSettingsTab = 4;

    const CompareContext& context_;
    std::optional<Comparison> comparison_;
    std::vector<Row> rows_;  // of lstSettings, as they were filled in
    std::string notice_;     // what came of the last press, until the next
    bool wasCompared_ = false;
};

}  // namespace korvane::keep
