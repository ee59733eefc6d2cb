#include "keep/restore/FrmRestore.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "core/files/SettingsFile.h"
#include "core/files/TableFile.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::keep {

namespace {

constexpr int kWidth = 1000 * 15;  // twips
constexpr int kHeight = 620 * 15;
constexpr const char* kFilter = "All Files (*.txt)|*.txt";

// The maps of which a point knows nothing: they may differ, whatever else does not. Empty for none.
std::string unknownMaps(const Snapshot& point) {
    constexpr std::array kNames{"fuel", "ignition", "PWM"};
    std::string names;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        const auto map = kMapsOfPoint.at(i);
        const auto& bytes = (point.*map).working;
        if (hasMap(point.ecu, map) &&
            std::none_of(bytes.begin(), bytes.end(), [](const auto& byte) { return !!byte; })) {
            names += (names.empty() ? "" : ", ") + std::string(kNames.at(i));
        }
    }
    return names;
}

std::string wordsOf(const PointEntry& entry, const std::string& differs, int unread, const std::string& unknown) {
    if (!entry.damage.empty()) {
        return timeTextOf(entry) + ": " + entry.damage;
    }
    const bool isCount = differs.find_first_not_of("0123456789") == std::string::npos;
    return timeTextOf(entry) + ", " + entry.reason + ", " + ecuTextOf(entry) +
           (differs == "0"
                ? ", nothing differs now" + (unknown.empty() ? unknown : "; these maps it does not know: " + unknown)
            : isCount ? ", cells that differ now: " + differs +
                            (unread == 0 ? "" : ", not read back: " + std::to_string(unread))
            : differs == "unknown" ? ", what differs now is unknown"
                                   : ", " + differs);
}

// What a map is asked of: the tick counts where the point has the map.
bool isWanted(const controls::CheckBox& box) {
    return box.Enabled && box.Value == 1;
}

}  // namespace

FrmRestore::FrmRestore(platform::Machine& machine, const RestoreContext& context)
    : Window(machine, "frmRestore"), lstPoints(*this, "lstPoints", context.keeper), context_(context) {
    Caption = "Palautuspisteet";
    lstPoints.setLabel("Restore points");
    for (auto* box : {&chkFuel, &chkIgnition, &chkPwm}) {
        box->Value = 1;
    }
    prgRestore.Visible = false;
    connectControls();
    connectRun();
    context_.keeper.addObserver(*this);
}

FrmRestore::~FrmRestore() {
    context_.keeper.removeObserver(*this);
    context_.run.removeObserver(*this);
}

void FrmRestore::connectControls() {
    txtFilter.Change = [this] {
        lstPoints.filter(txtFilter.Text.get());
        showCount();
    };
    lstPoints.Click = [this] { showChosen(); };
    btnMake.Click = [this] {
        const auto failure = context_.keeper.addByHand("");
        lblState.Caption = failure.empty() ? "A restore point was made." : failure;
    };
    btnNote.Click = [this] {
        act([this](const auto& name) {
            auto failure = context_.keeper.setNote(name, txtNote.Text.get());
            return failure.empty() ? "The note was kept." : failure;
        });
    };
    btnDelete.Click = [this] {
        act([this](const auto& name) {
            auto failure = context_.keeper.remove(name);
            return failure.empty() ? "The restore point was deleted." : failure;
        });
    };
    btnCompare.Click = [this] {
        act([this](const auto& name) {
            context_.compare(name);
            return std::string();
        });
    };
    btnExportTune.Click = [this] { act([this](const auto& name) { return exportTune(name); }); };
    btnExportImage.Click = [this] { act([this](const auto& name) { return exportImage(name); }); };
    btnRestore.Click = [this] { act([this](const auto& name) { return restore(context_, name, choice()); }); };
    chkDesk.Click = [this] { showChosen(); };
    Timer1.Tick = [this] { follow(); };
}

void FrmRestore::connectRun() {
    auto& run = context_.run;
    run.addObserver(*this);
    btnStop.Click = [&run] { run.stop(); };
    btnGoOn.Click = [&run] { run.goOn(); };
    btnGoBack.Click = [&run] { run.goBack(); };
    btnForget.Click = [&run] { run.forget(); };
}

void FrmRestore::Form_Load() {
    Width = kWidth;
    Height = kHeight;
    context_.keeper.refresh();
    showRun();
}

bool FrmRestore::takesKey(int keyCode, int shift) {
    const auto words = context_.walkBy ? context_.walkBy(keyCode, shift) : std::nullopt;
    if (words) {
        lblState.Caption = *words;
    }
    return words.has_value();
}

void FrmRestore::propertyChanged(controls::Object& object, const void* property) {
    if (&object == static_cast<controls::Object*>(&context_.keeper)) {
        if (property == context_.keeper.pointsProperty()) {
            showPoints();
        }
    } else {
        showRun();
    }
}

// With the picked point, if there is one. A restore lets events run: the window may have gone meanwhile.
void FrmRestore::act(const std::function<std::string(const std::string& name)>& action) {
    if (const auto* const entry = lstPoints.chosen()) {
        const Stay stay(*this);
        const std::string name = entry->name;
        lblState.Caption = action(name);
        follow();
    }
}

void FrmRestore::follow() {
    context_.keeper.follow();
    auto now = context_.keeper.now();
    now.time = {};
    if (compared_ != now) {
        compared_ = std::move(now);
        lstPoints.compareAnew();
        showChosen();
    }
}

void FrmRestore::showPoints() {
    lstPoints.reload();
    showCount();
}

void FrmRestore::showCount() {
    const auto all = std::to_string(lstPoints.pointCount());
    const auto shown = std::to_string(lstPoints.rowCount());
    lblCount.Caption = shown == all ? all + " restore points" : shown + " of " + all + " restore points";
    showChosen();
}

void FrmRestore::showChosen() {
    const auto* const entry = lstPoints.chosen();
    const std::string name = entry != nullptr ? entry->name : std::string();
    const auto point = entry != nullptr ? context_.keeper.load(name) : Decoded<Snapshot>();
    const int unread = point.content ? notReadBack(*point.content, context_.keeper.now()) : 0;
    lblPoint.Caption = entry != nullptr ? wordsOf(*entry, lstPoints.differsText(lstPoints.ListIndex), unread,
                                                  point.content ? unknownMaps(*point.content) : std::string())
                                        : std::string();
    if (name != std::exchange(shown_, name)) {
        txtNote.Text = entry != nullptr ? entry->note : std::string();
    }
    showMaps(point);
    showOther(point);
    showButtons();
}

void FrmRestore::showMaps(const Decoded<Snapshot>& point) {
    const std::array boxes{&chkFuel, &chkIgnition, &chkPwm};
    const auto from = chkDesk.Value == 1 ? MapFrom::Desk : MapFrom::Ecu;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const auto map = kMapsOfPoint.at(i);
        boxes.at(i)->Enabled =
            point.content && hasMap(point.content->ecu, map) && mapOf(*point.content, map, from).isKnown;
    }
    chkSettings.Enabled = point.content.has_value();
}

void FrmRestore::showOther(const Decoded<Snapshot>& point) {
    lblOther.Caption = point.content ? otherTypeText(*point.content, context_.keeper.now().ecu) : std::string();
    lblOther.Visible = !lblOther.Caption.get().empty();
}

void FrmRestore::showButtons() {
    const auto* const entry = lstPoints.chosen();
    const bool isWhole = entry != nullptr && entry->damage.empty();
    const bool runs = context_.run.Running;
    for (auto* button : {&btnCompare, &btnExportTune, &btnExportImage}) {
        button->Enabled = isWhole;
    }
    btnNote.Enabled = entry != nullptr;
    txtNote.Enabled = entry != nullptr;
    btnDelete.Enabled = entry != nullptr;
    btnRestore.Enabled = isWhole && !runs;
}

void FrmRestore::showRun() {
    const auto& run = context_.run;
    const bool runs = run.Running;
    const bool offers = !runs && !run.Offer.get().empty();
    lblOffer.Caption = offers ? run.Offer.get() : std::string();
    if (!run.Text.get().empty()) {
        lblState.Caption = run.Text.get();
    }
    btnGoOn.Caption = run.overwritesNext() ? "Go on, overwrite" : "Go on";
    btnGoBack.Caption = run.overwritesNext() ? "Go back, overwrite" : "Go back";
    prgRestore.Max = run.Total;
    prgRestore.Value = run.Done;
    prgRestore.Visible = runs;
    btnStop.Visible = runs;
    for (auto* button : {&btnGoOn, &btnGoBack, &btnForget}) {
        button->Visible = offers;
    }
    showButtons();
}

RestoreChoice FrmRestore::choice() const {
    RestoreChoice choice;
    const std::array boxes{&chkFuel, &chkIgnition, &chkPwm};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (isWanted(*boxes.at(i))) {
            choice.maps.push_back(kMapsOfPoint.at(i));
        }
    }
    choice.from = chkDesk.Value == 1 ? MapFrom::Desk : MapFrom::Ecu;
    choice.settings = isWanted(chkSettings);
    return choice;
}

void FrmRestore::pick(const std::string& name) {
    const auto rowOf = [&] {
        int row = 0;
        while (row < lstPoints.rowCount() && lstPoints.entry(row).name != name) {
            ++row;
        }
        return row;
    };
    if (rowOf() == lstPoints.rowCount()) {
        txtFilter.Text = "";
    }
    if (const int row = rowOf(); row < lstPoints.rowCount()) {
        lstPoints.choose(row);
    }
}

std::string FrmRestore::forgetQuestion() const {
    return lblOffer.Caption.get().empty()
               ? std::string()
               : lblOffer.Caption.get() +
                     " Leave the settings in the ECU as they are now? The way on and the way back are gone then.";
}

std::string FrmRestore::deleteQuestion() const {
    const auto* const entry = lstPoints.chosen();
    return entry != nullptr
               ? "Delete the restore point of " + timeTextOf(*entry) +
                     (entry->damage.empty() ? " (" + entry->reason + ')' : std::string()) + "? This can't be undone."
               : std::string();
}

std::string FrmRestore::askForFile(const char* title) {
    return machine().dialogs.choose({platform::FileDialog::Kind::Save, title, kFilter});
}

std::string FrmRestore::exportTune(const std::string& name) {
    const auto point = context_.keeper.load(name);
    if (!point.content) {
        return "No tune: " + point.damage + '.';
    }
    if (auto refusal = whyNoTune(*point.content); !refusal.empty()) {
        return refusal;
    }
    const auto path = askForFile("Save tune");
    if (path.empty()) {
        return {};
    }
    const auto tables = std::make_unique<core::SharedTables>();
    fillTune(*point.content, *tables);
    const bool saved =
        core::ReplaceSettingsFile(path, *tables, mapSizeOf(point.content->ecu), machine().dialogs, machine().toDisk);
    return saved ? "Tune: " + path : std::string();
}

std::string FrmRestore::exportImage(const std::string& name) {
    const auto point = context_.keeper.load(name);
    const auto image = point.content ? imageOf(*point.content) : PointImage{{}, "No image: " + point.damage + '.'};
    if (!image.refusal.empty()) {
        return image.refusal;
    }
    const auto path = askForFile("Save EEPROM image");
    if (path.empty()) {
        return {};
    }
    // The writer leaves the last element out.
    std::vector<std::uint8_t> table(image.bytes.begin(), image.bytes.end());
    table.push_back(0);
    return core::SaveByteTable(path, table, machine().dialogs, machine().toDisk) ? "Image: " + path : std::string();
}

}  // namespace korvane::keep
