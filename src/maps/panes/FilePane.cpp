#include "maps/panes/FilePane.h"

#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "maps/grid/MapImages.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

using platform::FileDialog;

constexpr const char* kFilter = "All Files (*.txt)|*.txt";

}  // namespace

// What the two buttons start.
struct FilePane::Operation {
    FileDialog::Kind kind;
    const char* title;
    std::string core::SharedTables::*lastPath;
    void (FilePane::*work)(const std::string& path);
    const char* failure;  // in front of the description
};

const FilePane::Operation FilePane::kSaving{FileDialog::Kind::Save, "Save Settings", &core::SharedTables::SaveFileName,
                                            &FilePane::saveTune, "Error savefile: "};
const FilePane::Operation FilePane::kLoading{FileDialog::Kind::Open, "Open Settings file",
                                             &core::SharedTables::LoadFileName, &FilePane::loadTune,
                                             "Error loadfile: "};

FilePane::FilePane(PaneWindow& window) : MapPane(window), btnSave(window, "btnSave"), btnLoad(window, "btnLoad") {
    btnSave.Caption = "Talleta arvot tiedostoon";
    btnSave.Click = [this] { run(kSaving); };
    btnLoad.Caption = "Hae arvot tiedostosta";
    btnLoad.Click = [this] { run(kLoading); };
}

void FilePane::run(const Operation& operation) {
    try {
        const std::string path = paneWindow().machine().dialogs.choose({operation.kind, operation.title, kFilter});
        if (!path.empty()) {
            act(operation, path);
        }
    } catch (const platform::RuntimeError& failure) {
        tellFailure(operation, failure);
    }
}

void FilePane::openTune(const std::string& path) {
    try {
        act(kLoading, path);
    } catch (const platform::RuntimeError& failure) {
        tellFailure(kLoading, failure);
    }
}

void FilePane::act(const Operation& operation, const std::string& path) {
    paneWindow().context().tables.*operation.lastPath = path;
    (this->*operation.work)(path);
}

void FilePane::tellFailure(const Operation& operation, const platform::RuntimeError& failure) {
    paneWindow().tell(operation.failure + std::string(failure.what()));
}

void FilePane::saveTune(const std::string& path) {
    auto& machine = paneWindow().machine();
    core::SaveSettingsFile(path, paneWindow().context().tables, core::toInt16(paneWindow().geometry.cells()),
                           machine.dialogs, machine.toDisk);
}

void FilePane::loadTune(const std::string& path) {
    const int status = core::LoadSettingsFile(path, paneWindow().context().tables, {}, paneWindow().machine().dialogs);
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
    acceptMaps(withPwm);
    for (auto* pane : panes) {
        pane->acceptLoadedTune(withPwm);
    }
    for (auto* pane : panes) {
        pane->showAcceptedTune();
    }
}

void FilePane::acceptMaps(bool withPwm) {
    paneWindow().context().announceReplacing("file loaded");
    auto& tables = paneWindow().context().tables;
    const core::MapHistory::Change change(paneWindow().context().history, core::Cause::file(withPwm));
    for (const MapImages* map : {&kFuelImages, &kIgnitionImages, &kPwmImages}) {
        if (withPwm || map != &kPwmImages) {
            tables.*map->edited = tables.*map->received;
        }
    }
}

}  // namespace korvane::maps
