#include "maps/panes/FilePane.h"

#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

using platform::FileDialog;

constexpr const char* kFilter = "All Files (*.txt)|*.txt";

}  // namespace

FilePane::FilePane(PaneWindow& window) : MapPane(window), btnSave(window, "btnSave"), btnLoad(window, "btnLoad") {
    btnSave.Caption = "Talleta arvot tiedostoon";
    btnSave.Click = [this] { trapped("Error savefile: ", [this] { saveTune(); }); };
    btnLoad.Caption = "Hae arvot tiedostosta";
    btnLoad.Click = [this] { trapped("Error loadfile: ", [this] { loadTune(); }); };
}

void FilePane::trapped(const std::string& failureText, const std::function<void()>& operation) {
    try {
        operation();
    } catch (const platform::RuntimeError& failure) {
        paneWindow().tell(failureText + failure.what());
    }
}

void FilePane::saveTune() {
    auto& dialogs = paneWindow().machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Save, "Save Settings", kFilter});
    if (path.empty()) {
        return;
    }
    auto& tables = paneWindow().context().tables;
    tables.SaveFileName = path;
    core::SaveSettingsFile(path, tables, core::toInt16(paneWindow().geometry.cells()), dialogs);
}

void FilePane::loadTune() {
    auto& dialogs = paneWindow().machine().dialogs;
    const std::string path = dialogs.choose({FileDialog::Kind::Open, "Open Settings file", kFilter});
    if (path.empty()) {
        return;
    }
    auto& tables = paneWindow().context().tables;
    tables.LoadFileName = path;
    const int status = core::LoadSettingsFile(path, tables, {}, dialogs);
    if (status != core::kSettingsRead) {
        paneWindow().tell("Error loading data:\r\n" + core::settingsStatusText(status));
    }
    if (status == core::kSettingsRead || status == core::kSettingsOldType || status == core::kSettingsNoPwm) {
        handOver(status == core::kSettingsRead);
    }
}

void FilePane::handOver(bool withPwm) {
    const auto& panes = paneWindow().panes();
    for (auto* pane : panes) {
        pane->showLoadedTune();
    }
    for (auto* pane : panes) {
        pane->acceptLoadedTune(withPwm);
    }
    for (auto* pane : panes) {
        pane->showAcceptedTune();
    }
}

}  // namespace korvane::maps
